// The pencil and the command that reads frames anew, which ask the recording, in the windows.
#include <algorithm>
#include <cmath>

#include "base/note.h"
#include "frqctrl/frqctrlmessages.h"
#include "gui/program.h"
#include "native/tone.h"
#include "voicebank/sound.h"

namespace {

constexpr int kFrames = 44100 / 256 + 1;
constexpr double kVoiceHz = 220.0;
constexpr WPARAM kZoom = 3;
constexpr int kCell = 10;  // pixels of a column and of a row at this zoom

struct Pencil : ProgramTest {
  Pencil() {
    AddSyllable(L"a", std::vector<double>(kFrames, 330.0));
    WriteVoice(kVoiceHz);
    AddSyllable(L"b", std::vector<double>(kFrames / 3, 330.0));  // a third of its wave
    Start(folder_.Path());
    Select(0);
    SendItem(IDC_EDITOR_TABLE, FCM_SETZOOM, kZoom);
  }
  ~Pencil() override { Shift(false); }

  void WriteVoice(double hz) const {
    const std::vector<float> samples = SecondOfTone([hz](double) { return hz; }, 0.0, 1.0);
    folder_.Write(L"a.wav", EncodeWaveFile(To16Bits(samples), 44100));
  }
  void BringToFront() const {
    EXPECT_TRUE(Eventually([this] { return SetForegroundWindow(editor_) && GetForegroundWindow() == editor_; }));
  }
  void Shift(bool down) const {
    BringToFront();
    PressKey(VK_SHIFT, down ? 0 : KEYEVENTF_KEYUP);
  }
  // From column 10 to 20, two semitones below the voice.
  void Draw() const {
    SendItem(IDC_EDITOR_TABLE, WM_VSCROLL, SB_BOTTOM);
    RECT client{};
    GetClientRect(Item(IDC_EDITOR_TABLE), &client);
    const int y = client.bottom - (55 - 24) * kCell - kCell / 2;
    Mouse(WM_LBUTTONDOWN, 30 + 10 * kCell, y);
    Mouse(WM_MOUSEMOVE, 30 + 20 * kCell, y);
    Mouse(WM_LBUTTONUP, 30 + 20 * kCell, y);
  }
  std::vector<double> Pitches(int row) const {
    std::vector<double> pitches;
    for (const FrqFrame& frame : List().Map(row)->Frames) pitches.push_back(frame.Frequency);
    return pitches;
  }
  static std::ptrdiff_t CountNear(const std::vector<double>& pitches, double hz) {
    return std::ranges::count_if(pitches, [&](double one) { return std::fabs(1200.0 * std::log2(one / hz)) <= 10.0; });
  }
  // Pixels of the colour of a candidate that is as strong as can be.
  int Dots(COLORREF color) const {
    const HWND table = Item(IDC_EDITOR_TABLE);
    RECT client{};
    GetClientRect(table, &client);
    const HDC dc = GetDC(table);
    int dots = 0;
    for (int y = client.bottom / 4; y < client.bottom; ++y) {
      for (int x = 40; x < 300; ++x) dots += GetPixel(dc, x, y) == color;
    }
    ReleaseDC(table, dc);
    return dots;
  }
};

TEST_F(Pencil, WithShiftSnapsToTheVoiceAndWithoutItOrAWaveOfTheMapItDoesNot) {
  // Drawn once more where nothing comes of it, as another thread sees the key a little later.
  const auto draws = [this](int row, double hz) {
    return Eventually([&] { return Draw(), CountNear(Pitches(row), hz) == 11; });
  };
  Shift(true);
  EXPECT_TRUE(draws(0, kVoiceHz));
  EXPECT_EQ(CountNear(Pitches(0), 330.0), kFrames - 11);
  EXPECT_EQ(MenuText(ID_EDIT_UNDO), L"&Undo Stroke\tCtrl+Z");
  WriteVoice(185.0);
  EXPECT_TRUE(draws(0, 185.0)) << "the wave is another one now";
  folder_.WriteText(L"a.wav", L"no wave");
  EXPECT_TRUE(draws(0, NoteToHz(55)));
  Select(1);
  Draw();
  EXPECT_EQ(CountNear(Pitches(1), NoteToHz(55)), 11) << "the wave is longer than the map";
  Select(0);
  WriteVoice(kVoiceHz);
  Shift(false);
  EXPECT_TRUE(draws(0, NoteToHz(55)));
}

TEST_F(Pencil, DotsAreSeenWhileShiftIsDownAndTheMouseOverTheTable) {
  const RECT table = Place(Item(IDC_EDITOR_TABLE));
  SetCursorPos(table.left + 200, table.top + 100);
  FrqCtrlSender(Item(IDC_EDITOR_TABLE)).Centre();
  for (const int view : {0, 1}) {
    SendItem(IDC_EDITOR_TABLE, FCM_SETVIEWMODE, static_cast<WPARAM>(view));
    FrqCtrlSender(Item(IDC_EDITOR_TABLE)).DropLayer();
    FrqCtrlSender(Item(IDC_EDITOR_TABLE)).RepaintNow();
    const COLORREF color = view == 0 ? RGB(136, 0, 136) : RGB(0, 0, 0);
    const int before = Dots(color);
    Shift(true);
    EXPECT_TRUE(Eventually([&] { return Dots(color) > before + 400; })) << view << " " << Dots(color);
    Shift(false);
    EXPECT_TRUE(Eventually([&] { return Dots(color) == before; })) << view;
  }
}

TEST_F(Pencil, TheReadingCommandOffersOneReadingAfterTheOtherEachAStep) {
  Click(IDC_EDITOR_FRAMES);
  SelectFrames({30, 31, 32, 90});
  BringToFront();
  PressKeys(editor_, {VK_CONTROL, 'R'});
  EXPECT_TRUE(HasSaid(L"likeliest"));
  EXPECT_EQ(CountNear(Pitches(0), kVoiceHz), 4);
  Press(ID_FRAMES_REREAD);
  EXPECT_TRUE(HasSaid(L"octave below"));
  EXPECT_EQ(CountNear(Pitches(0), kVoiceHz / 2), 4);
  EXPECT_EQ(MenuText(ID_EDIT_UNDO), L"&Undo Reading from the Recording\tCtrl+Z");
  Press(ID_EDIT_UNDO);
  EXPECT_EQ(CountNear(Pitches(0), kVoiceHz), 4);
  Press(ID_EDIT_UNDO);
  EXPECT_EQ(CountNear(Pitches(0), 330.0), kFrames);

  Press(ID_FRAMES_REREAD);
  EXPECT_TRUE(HasSaid(L"likeliest")) << "what was undone is not gone on with";
  SelectFrames({});
  Press(ID_FRAMES_REREAD);
  EXPECT_GE(CountNear(Pitches(0), kVoiceHz), kFrames - 6) << "all frames, but for the ends of the sound";

  Select(1);
  const std::wstring before = Frames() + Column(2);
  Press(ID_FRAMES_REREAD);
  EXPECT_TRUE(HasSaid(L"There is no recording to read from"));
  EXPECT_EQ(Frames() + Column(2), before);
}

}  // namespace

// The frequency table control in a real window: its messages, its scroll bars, and its picture pixel by pixel.
#include <array>
#include <climits>
#include <limits>
#include <set>

#include "frqctrl/spectrumcolor.h"
#include "voicebank/waveheader.h"
#include "win/tablewindow.h"

#define WIDEN_TEXT(text) L##text
#define WIDEN(text) WIDEN_TEXT(text)

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr wchar_t kSpectrumWave[] = WIDEN(MARLIT_TEST_DATA) L"/voice/no.wav";

TEST_F(FrqCtrlTest, TheCurveGoesThroughItsFramesInTheInkOfEach) {
  constexpr int kCell = 10, kNode = 8;  // [pixels]
  control.SetZoom(3);
  Show(nullptr, &map_);
  for (int line = 0; line < 20; ++line) Send(WM_VSCROLL, SB_LINEUP);
  control.SetSelection(std::vector<int>{3, 12, 13, 14, 31, 36, 47, -1, kFrameCount, INT_MAX});
  EXPECT_EQ(std::ranges::count(map_.Frames, true, &FrqFrame::Selected), 7);
  const Picture shown = Shown();
  for (int i = 1; i < (shown.Width - StripWidth()) / kCell; ++i) {
    const FrqFrame& frame = map_.Frames[static_cast<std::size_t>(i)];
    if (frame.Frequency <= FrqNoPitch) continue;
    const int y = static_cast<int>(shown.Height - (HzToNote(frame.Frequency) - 44) * kCell - kCell / 2);
    EXPECT_EQ(shown.At(StripWidth() + i * kCell, y - kNode / 2), !frame.Voiced    ? 0x808080u
                                                                 : frame.Selected ? 0x0000FFu
                                                                                  : 0xFF0000u)
        << i;
  }
}

TEST_F(FrqCtrlTest, TheSpectrumHasItsCellsInTheirPlaces) {
  SpectrumTable entries;
  WaveHeader wave;
  wave.Load(kSpectrumWave, false);
  AnalyzeWave(entries, {wave.format.channels, wave.format.bitsPerSample, wave.samples});
  std::vector<NoteBand> bands;
  BuildNoteBands(24, 60, wave.format.samplesPerSec, bands);
  control.SetWavePath(kSpectrumWave);
  control.SetViewMode(1);
  ShowWindow(GetDlgItem(control_, IDC_TABLE_BRIGHTNESS), SW_HIDE);  // it stands over the picture too
  Show(nullptr, nullptr);
  for (const auto& [kind, zoom, hop] : {std::tuple(FrqTypeFrq, 0, 256.0), {FrqTypeVs4ufrq, 3, 220.5}}) {
    control.SetKind(kind);
    control.SetZoom(zoom);
    control.DropLayer();
    control.RepaintNow();
    const Picture shown = Shown();
    const IntensityTable intensity(0);
    std::set<COLORREF> inks;
    for (int column = 1; column < 17; ++column) {
      const auto entry = static_cast<std::size_t>(column * hop / 512.0 + 0.5);
      for (int note = 1; note < 30; ++note) {
        const COLORREF ink =
            shown.At(StripWidth() + column * (zoom == 0 ? 2 : 10) + 1, shown.Height + 1 - note * (zoom == 0 ? 3 : 10));
        const double level = BandLevel(bands[static_cast<std::size_t>(note)], entries[entry]);
        ASSERT_EQ(ink, SpectrumColor(0, intensity.OfStep(LevelToStep(level)), false)) << column << " " << note;
        inks.insert(ink);
      }
    }
    EXPECT_GT(inks.size(), 5u) << "there is something to see";
  }
}

TEST_F(FrqCtrlTest, TheBarsAndTheWheelScrollOverTheWholeMapAndNoFarther) {
  Show(&reference_, &map_);
  // The message, the code of a bar or the keys at the wheel and its way; both positions and the zoom then.
  const std::tuple<UINT, WORD, int, std::array<int, 3>> rows[] = {
      {WM_HSCROLL, SB_LINEUP, 0, {0, 95, 0}},         {WM_HSCROLL, SB_LINEDOWN, 0, {1, 95, 0}},
      {WM_HSCROLL, SB_PAGEDOWN, 0, {18, 95, 0}},      {WM_HSCROLL, SB_PAGEUP, 0, {1, 95, 0}},
      {WM_HSCROLL, SB_BOTTOM, 0, {60, 95, 0}},        {WM_HSCROLL, SB_LINEDOWN, 0, {60, 95, 0}},
      {WM_VSCROLL, SB_PAGEUP, 0, {60, 89, 0}},        {WM_VSCROLL, SB_TOP, 0, {60, 0, 0}},
      {WM_VSCROLL, SB_BOTTOM, 0, {60, 95, 0}},        {WM_HSCROLL, SB_TOP, 0, {0, 95, 0}},
      {WM_MOUSEWHEEL, MK_SHIFT, -120, {4, 95, 0}},    {WM_MOUSEWHEEL, MK_SHIFT, 240, {0, 95, 0}},
      {WM_MOUSEWHEEL, MK_SHIFT, -32000, {59, 95, 0}}, {WM_MOUSEWHEEL, 0, 120, {59, 94, 0}},
      {WM_MOUSEWHEEL, 0, -240, {59, 95, 0}},          {WM_MOUSEWHEEL, 0, 119, {59, 95, 0}},
      {WM_MOUSEWHEEL, MK_CONTROL, 120, {59, 95, 1}},  {WM_MOUSEWHEEL, MK_SHIFT | MK_LBUTTON, 120, {59, 95, 1}}};
  for (const auto& [message, code, delta, expected] : rows) {
    Send(message, MAKEWPARAM(code, delta), message == WM_MOUSEWHEEL ? MAKELPARAM(100, 9) : 0);
    const std::array seen = {GetScrollPos(control_, SB_HORZ), GetScrollPos(control_, SB_VERT), control.Zoom()};
    EXPECT_EQ(seen, expected) << message << " " << code << " " << delta;
  }
  EXPECT_EQ(told.back(), std::pair(WPARAM{MAKEWPARAM(1001, FCN_ZOOMCHANGED)}, LPARAM{1}));
  Send(WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, 120), MAKELPARAM(560, 9));
  EXPECT_EQ(GetScrollPos(control_, SB_HORZ), 59) << "that was beside it";
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, sibling_, WM_MOUSEWHEEL, WM_MOUSEWHEEL, PM_REMOVE));
  EXPECT_EQ(message.wParam, WPARAM(MAKEWPARAM(MK_SHIFT, 120)));
}

TEST_F(FrqCtrlTest, NonsenseInAMapIsDrawnWithoutHarm) {
  const double values[] = {kInfinity, kNoNumber, 1e300, 1e9, -kInfinity, -1.0, 0.0};
  for (int i = 0; i < kFrameCount; ++i) {
    const double value = values[i % 7];
    map_.Frames.Own()[static_cast<std::size_t>(i)] = {
        .Frequency = value, .Amplitude = -value, .SuggestedFrequency = value, .Mark = 1, .Voiced = true};
  }
  map_.Hop = 0;
  for (const double average : values) {
    map_.Average = average;
    reference_.Average = -average;
    Show(&reference_, &map_);
    for (const int column : {0, -5, kFrameCount, INT_MAX}) Send(FCM_SETSCROLLCOLUMN, column);
    EXPECT_EQ(Shown().At(StripWidth() + 1, Shown().Height - 1), COLORREF{0xE0E0E0}) << "the lowest line " << average;
  }
}

TEST_F(FrqCtrlTest, KeysSelectFramesAndTheCaretIsSeenWithTheFocusAlone) {
  control.SetZoom(3);
  Show(&reference_, &map_);
  const auto selected = [this] {
    std::string frames;
    for (const FrqFrame& frame : map_.Frames) frames += frame.Selected ? 'x' : '.';
    return std::pair(frames.find('x'), std::ranges::count(frames, 'x'));
  };
  const auto press = [this](WPARAM key, bool shift = false, bool ctrl = false) {
    BYTE keys[256] = {};
    keys[VK_SHIFT] = shift ? 0x80 : 0;
    keys[VK_CONTROL] = ctrl ? 0x80 : 0;
    SetKeyboardState(keys);
    Send(WM_KEYDOWN, static_cast<int>(key));
    const BYTE none[256] = {};
    SetKeyboardState(const_cast<BYTE*>(none));
  };
  const auto picture = [this] {
    std::vector<COLORREF> pixels;
    const Picture shown = Shown();
    for (int x = 0; x < shown.Width; ++x) pixels.push_back(shown.At(x, 200));
    return pixels;
  };
  const auto before = picture();
  SendMessageW(control_, WM_SETFOCUS, 0, 0);
  EXPECT_EQ(picture(), before) << "a focus that came with the window says nothing";
  EXPECT_EQ(Send(WM_GETDLGCODE, 0) & DLGC_WANTARROWS, DLGC_WANTARROWS);
  using Run = std::pair<std::size_t, std::ptrdiff_t>;
  press(VK_RIGHT);
  EXPECT_EQ(selected(), Run(1, 1));
  const auto withCaret = picture();
  SendMessageW(control_, WM_KILLFOCUS, 0, 0);
  EXPECT_NE(picture(), withCaret) << "the caret goes with the focus";
  EXPECT_EQ(HIWORD(told.back().first), FCN_SELECTIONCHANGED);
  // The key, with Shift, with Ctrl, which leads to the next line; what is selected then.
  const std::tuple<WPARAM, bool, bool, Run> keys[] = {
      {VK_RIGHT, true, false, {1, 2}}, {VK_RIGHT, true, false, {1, 3}}, {VK_LEFT, true, false, {1, 2}},
      {VK_RIGHT, false, true, {17, 1}}, {VK_HOME, true, false, {0, 18}}, {VK_END, false, false, {kFrameCount - 1, 1}},
      {VK_RIGHT, false, false, {kFrameCount - 1, 1}}, {VK_NEXT, false, false, {kFrameCount - 1, 1}}};
  for (const auto& [code, shift, ctrl, run] : keys) {
    press(code, shift, ctrl);
    EXPECT_EQ(selected(), run) << code;
  }
  press(VK_PRIOR, true);
  EXPECT_EQ(selected().first + static_cast<std::size_t>(selected().second), std::size_t{kFrameCount});
  EXPECT_GT(selected().second, 20) << "a page";

  press(VK_END);
  SendMessageW(control_, WM_KILLFOCUS, 0, 0);
  control.SetScrollColumn(0);
  SendMessageW(control_, WM_SETFOCUS, 0, 0);
  press(VK_RIGHT);
  EXPECT_EQ(selected(), Run(1, 1)) << "a caret that comes begins in view, wherever the selection is";
  SendMessageW(control_, WM_KILLFOCUS, 0, 0);
  FrqMap empty;
  Show(nullptr, &empty);
  SendMessageW(control_, WM_SETFOCUS, 0, 0);
  for (const WPARAM key : {VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_PRIOR, VK_NEXT, VK_UP, VK_DOWN}) press(key, true);
  Show(nullptr, nullptr);
  for (const WPARAM key : {VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_PRIOR, VK_NEXT}) press(key);
}

TEST_F(FrqCtrlTest, PrintsWhatIsBehindItsButtons) {
  Show(&reference_, &map_);
  const Picture shown = Shown();
  Picture printed(shown.Width, shown.Height);
  SendMessageW(control_, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(printed.Dc.get()), PRF_CLIENT);
  for (const int x : {3, 40, 200, 470}) EXPECT_EQ(printed.At(x, 160), shown.At(x, 160)) << x;
}

}  // namespace

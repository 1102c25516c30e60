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
    std::set<COLORREF> inks;
    for (int column = 1; column < 17; ++column) {
      const auto entry = static_cast<std::size_t>(column * hop / 512.0 + 0.5);
      for (int note = 1; note < 30; ++note) {
        const COLORREF ink =
            shown.At(StripWidth() + column * (zoom == 0 ? 2 : 10) + 1, shown.Height + 1 - note * (zoom == 0 ? 3 : 10));
        const double level = BandLevel(bands[static_cast<std::size_t>(note)], entries[entry]);
        ASSERT_EQ(ink, SpectrumColor(0, LevelToIntensity(level, 0), false)) << column << " " << note;
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
    map_.Frames[static_cast<std::size_t>(i)] = {
        .Frequency = value, .Amplitude = -value, .Voiced = true, .Mark = 1, .SuggestedFrequency = value};
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

}  // namespace

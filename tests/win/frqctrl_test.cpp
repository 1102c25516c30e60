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
constexpr COLORREF kAverageInk = 0x0000FF;
constexpr wchar_t kSpectrumWave[] = WIDEN(MARLIT_TEST_DATA) L"/voice/no.wav";
constexpr wchar_t kShortWave[] = WIDEN(MARLIT_TEST_DATA) L"/voice/そ.wav";
// Where things lie in the picture, on a screen of 96 dpi, where all sizes are whole.
struct PlainTable {
  int left, height, columnWidth, rowHeight, bottomNote;

  int ToY(double hz) const {
    return static_cast<int>(height - ((HzToNote(hz) - bottomNote) * rowHeight + rowHeight * 0.5));
  }
};

constexpr int kColumnWidths[] = {2, 4, 7, 10, 15, 20, 40};
constexpr int kRowHeights[] = {3, 5, 7, 10, 15, 20, 40};

TEST_F(FrqCtrlTest, WhatLiesBehindTheCurvesIsRightAtEveryZoomAndPlace) {
  for (FrqMap* const map : {&map_, &reference_}) {
    for (FrqFrame& frame : map->Frames) frame.Frequency = frame.SuggestedFrequency = FrqNoPitch;
  }
  Show(&reference_, &map_);
  for (int line = 0; line < 23; ++line) Send(WM_VSCROLL, SB_LINEUP);
  Send(FCM_SETSCROLLCOLUMN, 15);
  for (const int zoom : {1, 3, 6}) {
    SCOPED_TRACE(zoom);
    control.SetZoom(zoom);
    const Picture shown = Shown();
    const PlainTable table{StripWidth(), shown.Height, kColumnWidths[zoom], kRowHeights[zoom], 47};
    const auto xOf = [&](int column) { return table.left + (column - 15) * table.columnWidth; };
    const int beside = xOf(17) - 1;  // a column ends with a gap between the bars of the levels
    for (const auto& [note, ink] : {std::pair(3, 0xFFFFFF), {4, 0xC0C0C0}}) {  // D and E flat
      const int y = shown.Height - 2 - note * table.rowHeight;
      EXPECT_EQ(shown.At(beside, y), static_cast<COLORREF>(ink)) << note;
      EXPECT_EQ(shown.At(beside, y + 1), COLORREF{0xE0E0E0}) << "below it";
      EXPECT_EQ(shown.At(xOf(18), y), COLORREF{0xC0C0FF}) << "a mark";
      EXPECT_EQ(shown.At(xOf(17), y), COLORREF{0xFFFF00}) << "every 17th column";
    }
    const int top = static_cast<int>(shown.Height - map_.Frames[21].Amplitude * table.rowHeight / 1500.0);
    EXPECT_EQ(shown.At(xOf(21), top), COLORREF{0x00FF00}) << "its level";
    EXPECT_NE(shown.At(xOf(21), top - 1), COLORREF{0x00FF00});
    EXPECT_EQ(shown.At(beside, table.ToY(map_.Average)), kAverageInk);
    EXPECT_EQ(shown.At(beside, table.ToY(reference_.Average)), COLORREF{0x577AB9});
  }
}

TEST_F(FrqCtrlTest, TheCurvesHaveTheInkOfTheirFrames) {
  constexpr int kCell = 10, kNode = 8;  // [pixels]
  control.SetZoom(3);
  Show(&reference_, &map_);
  for (int line = 0; line < 20; ++line) Send(WM_VSCROLL, SB_LINEUP);
  control.SetSelection(std::vector<int>{3, 12, 13, 14, 19, 20, 21, 31, 36, 47, -1, kFrameCount, INT_MAX});
  EXPECT_EQ(std::ranges::count(map_.Frames, true, &FrqFrame::Selected), 10);
  const Picture shown = Shown();
  const int left = StripWidth();
  const PlainTable table{left, shown.Height, kCell, kCell, 44};
  int references = 0;
  for (int i = 1; i < (shown.Width - left) / kCell; ++i) {
    SCOPED_TRACE(i);
    const FrqFrame &frame = map_.Frames[static_cast<std::size_t>(i)],
                   &last = map_.Frames[static_cast<std::size_t>(i - 1)];
    const int x = left + i * kCell, y = table.ToY(frame.Frequency), suggested = table.ToY(frame.SuggestedFrequency);
    const auto ink = [&](bool selected) { return !frame.Voiced ? 0x808080u : selected ? 0x0000FFu : 0xFF0000u; };
    if (frame.Frequency > FrqNoPitch) {
      EXPECT_EQ(shown.At(x, y - kNode / 2), ink(frame.Selected));
    }
    if (frame.Mark && frame.SuggestedFrequency > 0.0 && std::abs(y - suggested) > 3 * kNode) {
      EXPECT_EQ(shown.At(x, suggested - kNode / 2), frame.Selected ? 0x8080FFu : 0xFF8080u);
    }
    // Half way to the frame before; the segment is selected if either end is.
    int inkAt = 0;
    const int middle = (y + table.ToY(last.Frequency)) / 2;
    for (int up = -2; up <= 2; ++up) inkAt += shown.At(x - 1, middle + up) == ink(frame.Selected || last.Selected);
    EXPECT_EQ(inkAt > 0, frame.Frequency > FrqNoPitch && last.Frequency > FrqNoPitch);
    references +=
        shown.At(x, table.ToY(reference_.Frames[static_cast<std::size_t>(i)].Frequency) - kNode / 2) == 0x577AB9;
  }
  EXPECT_GT(references, 15);
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
  const std::tuple<FrqType, int, int, int, double> rows[] = {{FrqTypeFrq, 0, 0, 0, 256.0},
                                                             {FrqTypeVs4ufrq, 3, -3, 3, 220.5}};
  for (const auto& [kind, zoom, brightness, colors, hop] : rows) {
    SCOPED_TRACE(zoom);
    control.SetKind(kind);
    control.SetZoom(zoom);
    control.SetBrightness(brightness);
    control.SetColorTable(colors);
    control.DropLayer();
    control.RepaintNow();
    const Picture shown = Shown();
    std::set<COLORREF> inks;
    for (int column = 1; column < 17; ++column) {
      const auto entry = static_cast<std::size_t>(column * hop / 512.0 + 0.5);
      for (std::size_t note = 1; note < 30; ++note) {
        const COLORREF ink = shown.At(StripWidth() + column * kColumnWidths[zoom] + 1,
                                      shown.Height + 1 - static_cast<int>(note) * kRowHeights[zoom]);
        const double level = BandLevel(bands[note], entries[entry]);
        ASSERT_EQ(ink, SpectrumColor(colors, LevelToIntensity(level, brightness), false)) << column << " " << note;
        inks.insert(ink);
      }
    }
    EXPECT_GT(inks.size(), 5u) << "there is something to see";
  }
  for (const wchar_t* const none : {L"Z:\\nowhere.wav", kShortWave}) {
    control.SetWavePath(none);
    control.DropLayer();
    control.RepaintNow();
    EXPECT_EQ(Shown().At(StripWidth() + 40, 40), SpectrumColor(3, 0, false)) << none;
  }
}

TEST_F(FrqCtrlTest, TheAverageStaysWithItsMapUntilThePictureIsDropped) {
  const int y = PlainTable{0, Shown().Height, 2, 3, 24}.ToY(map_.Average);
  Show(&reference_, &map_);
  EXPECT_EQ(Shown().At(0, y), kAverageInk);
  Show(nullptr, nullptr);
  EXPECT_EQ(Shown().At(0, y), kAverageInk);
  control.DropLayer();
  control.RepaintNow();
  EXPECT_NE(Shown().At(0, y), kAverageInk);

  map_.Average = FrqNoPitch;
  Show(nullptr, &map_);
  const Picture shown = Shown();
  for (int row = 0; row < shown.Height; ++row) EXPECT_NE(shown.At(0, row), kAverageInk) << row;
}

TEST_F(FrqCtrlTest, ScrollBarsGoOverTheWholeMapAndNoFarther) {
  Show(&reference_, &map_);
  const std::tuple<UINT, int, int> rows[] = {
      {WM_HSCROLL, SB_LINEUP, 0},  {WM_HSCROLL, SB_LINEDOWN, 1}, {WM_HSCROLL, SB_PAGEDOWN, 18},
      {WM_HSCROLL, SB_PAGEUP, 1},  {WM_HSCROLL, SB_BOTTOM, 60},  {WM_HSCROLL, SB_LINEDOWN, 60},
      {WM_VSCROLL, SB_PAGEUP, 89}, {WM_VSCROLL, SB_TOP, 0},      {WM_VSCROLL, SB_BOTTOM, 95},
  };
  for (const auto& [message, code, expected] : rows) {
    Send(message, code);
    EXPECT_EQ(GetScrollPos(control_, message == WM_HSCROLL ? SB_HORZ : SB_VERT), expected) << message << " " << code;
  }
}

TEST_F(FrqCtrlTest, TheWheelScrollsAndZoomsWhatIsUnderThePointer) {
  Show(&reference_, &map_);
  const std::tuple<WORD, int, std::array<int, 3>> rows[] = {
      {MK_SHIFT, -120, {4, 95, 0}},    {MK_SHIFT, 240, {0, 95, 0}},
      {MK_SHIFT, -32000, {59, 95, 0}}, {0, 120, {59, 94, 0}},
      {0, -240, {59, 95, 0}},          {0, 119, {59, 95, 0}},
      {MK_CONTROL, 120, {59, 95, 1}},  {MK_SHIFT | MK_LBUTTON, 120, {59, 95, 1}},
  };
  for (const auto& [keys, delta, expected] : rows) {
    Send(WM_MOUSEWHEEL, MAKEWPARAM(keys, delta), MAKELPARAM(100, 9));
    const std::array seen = {GetScrollPos(control_, SB_HORZ), GetScrollPos(control_, SB_VERT), control.Zoom()};
    EXPECT_EQ(seen, expected) << keys << " " << delta;
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

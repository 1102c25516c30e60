// The frequency table control in a real window: its messages, its scroll bars, and its picture pixel by pixel.
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
// The picture as its rules tell it for a point, where the control itself goes step by step over frames and rows.
// For a screen of 96 dpi, where all sizes are whole.
struct PlainTable {
  int left, width, height;  // of the plot, which ends with the client area
  int columnWidth, rowHeight, bottomNote, scrollColumn;

  int ToY(double hz) const {
    return static_cast<int>(height - ((HzToNote(hz) - bottomNote) * rowHeight + rowHeight * 0.5));
  }
  const FrqFrame* FrameAtX(const FrqMap& map, int x) const {
    const int column = scrollColumn + (x - left) / columnWidth;
    return column < map.FrameCount ? &map.Frames[static_cast<std::size_t>(column)] : nullptr;
  }
  COLORREF Ground(const FrqMap& map, const FrqMap& reference, int x, int y) const {
    const int inColumn = (x - left) % columnWidth;
    const FrqFrame* const frame = x < left ? nullptr : FrameAtX(map, x);
    const bool inBar = frame && inColumn < columnWidth * 8 / 10;
    if (inBar && y >= static_cast<int>(height - frame->Amplitude * rowHeight / 1500.0)) return 0x00FF00;
    if (!map.DerivedAverage && y == ToY(map.Average)) return 0x0000FF;
    if (y == ToY(reference.Average)) return 0x577AB9;
    if (inColumn == 0 && (scrollColumn + (x - left) / columnWidth) % 17 == 0) return 0xFFFF00;
    if (frame && frame->Mark) return 0xC0C0FF;
    const int fromBottom = height - 1 - y;
    if (fromBottom % rowHeight == 0) return 0xE0E0E0;
    const bool black = "wbwbwwbwbwbw"[(bottomNote + fromBottom / rowHeight) % 12] == 'b';
    return black ? 0xC0C0C0 : 0xFFFFFF;
  }

  // A segment has the ink of its right end, and is selected if either end is.
  void DrawCurve(HDC dc, const FrqMap& map, COLORREF plain, COLORREF selected) const {
    const int size = std::max(columnWidth * 8 / 10, 2);
    const auto ink = [&](const FrqFrame& frame, bool isSelected) -> COLORREF {
      return !frame.Voiced ? 0x808080 : isSelected ? selected : plain;
    };
    const auto shownAt = [&](int x) {
      const FrqFrame* const frame = FrameAtX(map, x);
      return frame && frame->Frequency > 55.0 ? frame : nullptr;
    };
    for (int x = left; x < left + width; ++x) {
      const FrqFrame* const frame = shownAt(x);
      if (!frame || (x - left) % columnWidth >= size) continue;
      const int top = ToY(frame->Frequency) - size / 2;
      for (int y = top; y < top + size; ++y) SetPixel(dc, x, y, ink(*frame, frame->Selected));
    }
    for (int x = left + columnWidth; x < left + width; x += columnWidth) {
      const FrqFrame* const from = shownAt(x - columnWidth);
      const FrqFrame* const to = shownAt(x);
      if (!from || !to) continue;
      const Pen pen(CreatePen(PS_SOLID, 1, ink(*to, from->Selected || to->Selected)));
      const SelectGuard select(dc, pen.get());
      MoveToEx(dc, x - columnWidth + size / 2, ToY(from->Frequency), nullptr);
      LineTo(dc, x + size / 2, ToY(to->Frequency));
    }
  }
  void Draw(HDC dc, const FrqMap& map, const FrqMap& reference) const {
    for (int y = 0; y < height; ++y) {
      for (int x = left; x < left + width; ++x) SetPixel(dc, x, y, Ground(map, reference, x, y));
    }
    FrqMap suggestions = map;
    for (FrqFrame& frame : suggestions.Frames) {
      frame.Frequency = frame.Mark ? frame.SuggestedFrequency : 55.0;
      frame.Voiced = true;
    }
    DrawCurve(dc, reference, 0x577AB9, 0x577AB9);
    for (int x = left; x < left + width && map.DerivedAverage; ++x) SetPixel(dc, x, ToY(map.ShownAverage()), 0x0000FF);
    DrawCurve(dc, suggestions, 0xFF8080, 0x8080FF);
    DrawCurve(dc, map, 0xFF0000, 0x0000FF);
  }
};

TEST_F(FrqCtrlTest, ThePictureIsRightAtEveryZoomAndPlace) {
  constexpr int kColumnWidths[] = {2, 4, 7, 10, 15, 20, 40};
  constexpr int kRowHeights[] = {3, 5, 7, 10, 15, 20, 40};
  struct {
    int zoom, scrollColumn, linesUp, width;
    bool derivedAverage;
  } const rows[] = {{0, 0, 0, 500, false},  {1, 0, 6, 500, true},    {2, 9, 14, 500, false}, {3, 17, 16, 431, false},
                    {4, 18, 20, 500, true}, {5, 46, 22, 500, false}, {6, 59, 24, 300, false}};
  Show(&reference_, &map_);
  int bottomNote = 24;
  for (const auto& row : rows) {
    SCOPED_TRACE("zoom " + std::to_string(row.zoom));
    map_.DerivedAverage = row.derivedAverage;
    control.SetZoom(row.zoom);
    Send(FCM_SETSCROLLCOLUMN, row.scrollColumn);
    for (; bottomNote < 24 + row.linesUp; ++bottomNote) Send(WM_VSCROLL, SB_LINEUP);
    MoveWindow(control_, 0, 0, row.width, 330, TRUE);
    control.SetSelection(std::vector<int>{3, 12, 13, 14, 19, 20, 21, 31, 36, 47, 48, -1, kFrameCount, INT_MAX});
    EXPECT_EQ(std::ranges::count(map_.Frames, true, &FrqFrame::Selected), 11);

    const Picture shown = Shown();
    const int left = StripWidth();
    const PlainTable table{left,       shown.Width - left, shown.Height, kColumnWidths[row.zoom], kRowHeights[row.zoom],
                           bottomNote, row.scrollColumn};
    Picture expected(shown.Width, shown.Height);
    table.Draw(expected.Dc.get(), map_, reference_);
    EXPECT_EQ(Difference(shown, expected, left), "same");
  }
}

// The cells one by one, as the picture is told.
void DrawPlainSpectrum(HDC dc, const PlainTable& table, double hop, int brightness, int colors) {
  SpectrumTable entries;
  WaveHeader wave;
  wave.Load(kSpectrumWave, false);
  AnalyzeWave(entries, {wave.format.channels, wave.format.bitsPerSample, wave.samples});
  const auto fill = [&](int left, int top, int right, int bottom, COLORREF color) {
    const Brush brush(CreateSolidBrush(color));
    const RECT rect{left, top, right, bottom};
    FillRect(dc, &rect, brush.get());
  };
  fill(table.left, 0, table.left + table.width, table.height, SpectrumColor(colors, 0, false));
  const int low = static_cast<int>(table.bottomNote - 0.5);
  const int high = static_cast<int>((table.height - table.rowHeight * 0.5) / table.rowHeight + table.bottomNote + 2.0);
  std::vector<NoteBand> bands;
  BuildNoteBands(low, high, wave.format.samplesPerSec, bands);
  for (int column = table.scrollColumn, x = table.left; x < table.left + table.width; ++column) {
    const auto entry = static_cast<std::size_t>(column * hop / 512.0 + 0.5);
    for (int note = low; note <= high && entry < entries.size(); ++note) {
      const double level = BandLevel(bands[static_cast<std::size_t>(note - low)], entries[entry]);
      const double up = table.rowHeight * (note - 0.5 - table.bottomNote) + table.rowHeight * 0.5;
      const int top = table.height - static_cast<int>(up);
      fill(x, top, x + table.columnWidth, top + table.rowHeight,
           SpectrumColor(colors, LevelToIntensity(level, brightness), false));
    }
    if (column % 17 == 0) fill(x, 0, x + 1, table.height, 0xFFFF00);
    x += table.columnWidth;
  }
}

TEST_F(FrqCtrlTest, TheSpectrumHasEveryCellInItsPlace) {
  FrqMap silent;
  silent.Create(100, FrqTypeFrq);
  silent.Loaded = true;
  silent.Average = 55.0;
  silent.Hop = 441;
  struct {
    FrqType kind;
    FrqMap* map;
    int zoom, columnWidth, rowHeight, scrollColumn, bottomNote, brightness, colors;
    double hop;
  } const rows[] = {{FrqTypeFrq, nullptr, 0, 2, 3, 0, 24, 0, 0, 256.0},
                    {FrqTypeVs4ufrq, nullptr, 1, 4, 5, 30, 40, -3, 3, 220.5},
                    {FrqTypeFrq, &silent, 4, 15, 15, 5, 60, 3, 5, 441.0}};
  control.SetWavePath(kSpectrumWave);
  control.SetViewMode(1);
  ShowWindow(GetDlgItem(control_, IDC_TABLE_BRIGHTNESS), SW_HIDE);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.zoom);
    control.SetKind(row.kind);
    Show(&silent, row.map);
    control.SetZoom(row.zoom);
    control.SetBrightness(row.brightness);
    control.SetColorTable(row.colors);
    Send(FCM_SETSCROLLCOLUMN, row.scrollColumn);
    while (kTopNote - GetScrollPos(control_, SB_VERT) < row.bottomNote) Send(WM_VSCROLL, SB_LINEUP);
    const Picture shown = Shown();
    const int left = StripWidth();
    Picture expected(shown.Width, shown.Height);
    DrawPlainSpectrum(
        expected.Dc.get(),
        {left, shown.Width - left, shown.Height, row.columnWidth, row.rowHeight, row.bottomNote, row.scrollColumn},
        row.hop, row.brightness, row.colors);
    EXPECT_EQ(Difference(shown, expected, left), "same");
    std::set<COLORREF> inks;
    for (int i = left; i < shown.Width; i += 3) inks.insert(shown.At(i, shown.Height - i % 97 * 2 - 1));
    EXPECT_GT(inks.size(), 5u) << "there is something to see";
  }
  for (const wchar_t* const none : {L"", L"Z:\\nowhere.wav", kShortWave}) {
    control.SetWavePath(none);
    control.DropLayer();
    control.RepaintNow();
    EXPECT_EQ(Shown().At(StripWidth() + 40, 40), SpectrumColor(5, 0, false)) << none;
  }
}

TEST_F(FrqCtrlTest, TheAverageStaysWithItsMapUntilThePictureIsDropped) {
  const int y = PlainTable{0, 0, Shown().Height, 2, 3, 24, 0}.ToY(map_.Average);
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
  struct {
    UINT message;
    int code, expected;
  } const rows[] = {
      {WM_HSCROLL, SB_LINEUP, 0},     {WM_HSCROLL, SB_LINEDOWN, 1}, {WM_HSCROLL, SB_PAGEDOWN, 18},
      {WM_HSCROLL, SB_PAGEUP, 1},     {WM_HSCROLL, SB_BOTTOM, 60},  {WM_HSCROLL, SB_LINEDOWN, 60},
      {WM_HSCROLL, SB_ENDSCROLL, 60}, {WM_HSCROLL, SB_TOP, 0},      {WM_VSCROLL, SB_LINEDOWN, 95},
      {WM_VSCROLL, SB_PAGEUP, 89},    {WM_VSCROLL, SB_TOP, 0},      {WM_VSCROLL, SB_BOTTOM, 95},
  };
  for (const auto& row : rows) {
    Send(row.message, row.code);
    const int bar = row.message == WM_HSCROLL ? SB_HORZ : SB_VERT;
    EXPECT_EQ(GetScrollPos(control_, bar), row.expected) << row.message << " " << row.code;
  }
}

TEST_F(FrqCtrlTest, TheWheelScrollsAndZoomsWhatIsUnderThePointer) {
  Show(&reference_, &map_);
  struct {
    WORD keys;
    int delta, column, upright, zoom;
  } const rows[] = {
      {MK_SHIFT, -120, 4, 95, 0},    {MK_SHIFT, 240, 0, 95, 0},    {MK_SHIFT, -32000, 59, 95, 0},
      {0, 120, 59, 94, 0},           {0, -240, 59, 95, 0},         {0, 119, 59, 95, 0},
      {MK_CONTROL, -120, 59, 95, 0}, {MK_CONTROL, 120, 59, 95, 1}, {MK_SHIFT | MK_LBUTTON, 120, 59, 95, 1},
  };
  for (const auto& row : rows) {
    Send(WM_MOUSEWHEEL, MAKEWPARAM(row.keys, row.delta), MAKELPARAM(100, 9));
    const int seen[] = {GetScrollPos(control_, SB_HORZ), GetScrollPos(control_, SB_VERT), control.Zoom(),
                        told.empty() ? 0 : told.back().second};
    EXPECT_THAT(seen, testing::ElementsAre(row.column, row.upright, row.zoom, row.zoom))
        << row.keys << " " << row.delta;
  }
  EXPECT_EQ(told.back().first, WPARAM(MAKEWPARAM(1001, FCN_ZOOMCHANGED))) << "so the parent hears of each step";
  Send(WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, 120), MAKELPARAM(560, 9));
  EXPECT_EQ(GetScrollPos(control_, SB_HORZ), 59);
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, sibling_, WM_MOUSEWHEEL, WM_MOUSEWHEEL, PM_REMOVE));
  EXPECT_EQ(message.wParam, WPARAM(MAKEWPARAM(MK_SHIFT, 120)));
  EXPECT_EQ(message.lParam, MAKELPARAM(560, 9));
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

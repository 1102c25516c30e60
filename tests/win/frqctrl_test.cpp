// The frequency table control in a real window: its messages, its scroll bars, and its picture pixel by pixel.
#include "frqctrl/frqctrl.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "base/note.h"

namespace {

constexpr int kFrameCount = 60;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// A picture in memory that can be drawn into and read; its bits hold 0x00RRGGBB.
class Picture {
 public:
  Picture(int width, int height) : width_(width), dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(info.bmiHeader), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    bitmap_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    bits_ = {static_cast<DWORD*>(bits), static_cast<std::size_t>(width * height)};
    SelectObject(dc_.get(), bitmap_.get());
  }
  HDC dc() const { return dc_.get(); }
  int Width() const { return width_; }
  int Height() const { return static_cast<int>(bits_.size()) / width_; }
  COLORREF At(int x, int y) const {
    const DWORD bits = bits_[static_cast<std::size_t>(y * width_ + x)];
    return RGB(bits >> 16 & 0xFF, bits >> 8 & 0xFF, bits & 0xFF);
  }
  void Set(int x, int y, COLORREF color) {
    if (x < 0 || x >= Width() || y < 0 || y >= Height()) return;
    bits_[static_cast<std::size_t>(y * width_ + x)] = RGB(GetBValue(color), GetGValue(color), GetRValue(color));
  }

 private:
  int width_;
  Bitmap bitmap_;
  MemoryDc dc_;  // goes first, as the bitmap is selected into it
  std::span<DWORD> bits_;
};

// "same", or the first point from column `left` on where two pictures differ.
std::string Difference(const Picture& a, const Picture& b, int left) {
  for (int y = 0; y < a.Height(); ++y) {
    for (int x = left; x < a.Width(); ++x) {
      if (a.At(x, y) == b.At(x, y)) continue;
      char text[80];
      snprintf(text, sizeof(text), "(%d, %d): %06lX and %06lX", x, y, a.At(x, y), b.At(x, y));
      return text;
    }
  }
  return "same";
}

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
    const FrqFrame* const frame = FrameAtX(map, x);
    const bool inBar = frame && inColumn < columnWidth * 8 / 10;
    if (inBar && y >= static_cast<int>(height - frame->Amplitude * rowHeight / 1500.0)) return 0x00FF00;
    if (!map.DerivedAverage && y == ToY(map.Average)) return 0x0000FF;
    if (y == ToY(reference.ShownAverage())) return 0x577AB9;
    if (inColumn == 0 && (scrollColumn + (x - left) / columnWidth) % 17 == 0) return 0xFFFF00;
    if (frame && frame->Mark) return 0xC0C0FF;
    const int fromBottom = height - 1 - y;
    if (fromBottom % rowHeight == 0) return 0xE0E0E0;
    const bool black = "wbwbwwbwbwbw"[(bottomNote + fromBottom / rowHeight) % 12] == 'b';
    return black ? 0xC0C0C0 : 0xFFFFFF;
  }

  // `value` gives what the curve shows of a frame, 0 for nothing; `color` the colour of a frame or of the segment that
  // ends there, given whether it counts as selected.
  void DrawCurve(Picture& picture, const FrqMap& map, const std::function<double(const FrqFrame&)>& value,
                 const std::function<COLORREF(const FrqFrame&, bool)>& color) const {
    const int size = std::max(columnWidth * 8 / 10, 2);
    const auto shown = [&](const FrqFrame& frame) { return value(frame) > 55.0; };
    for (int x = left; x < left + width; ++x) {
      const FrqFrame* const frame = FrameAtX(map, x);
      if (!frame || !shown(*frame) || (x - left) % columnWidth >= size) continue;
      const int top = ToY(value(*frame)) - size / 2;
      for (int y = top; y < top + size; ++y) picture.Set(x, y, color(*frame, frame->Selected));
    }
    for (int x = left + columnWidth; x < left + width; x += columnWidth) {
      const FrqFrame* const from = FrameAtX(map, x - columnWidth);
      const FrqFrame* const to = FrameAtX(map, x);
      if (!from || !to || !shown(*from) || !shown(*to)) continue;
      const Pen pen(CreatePen(PS_SOLID, 1, color(*to, from->Selected || to->Selected)));
      const SelectGuard select(picture.dc(), pen.get());
      MoveToEx(picture.dc(), x - columnWidth + size / 2, ToY(value(*from)), nullptr);
      LineTo(picture.dc(), x + size / 2, ToY(value(*to)));
      GdiFlush();
    }
  }
  void Draw(Picture& picture, const FrqMap& map, const FrqMap& reference) const {
    for (int y = 0; y < height; ++y) {
      for (int x = left; x < left + width; ++x) picture.Set(x, y, Ground(map, reference, x, y));
    }
    const auto pitch = [](const FrqFrame& frame) { return frame.Frequency; };
    const auto inked = [](COLORREF plain, COLORREF selected) {
      return [=](const FrqFrame& frame, bool isSelected) {
        return !frame.Voiced ? RGB(128, 128, 128) : isSelected ? selected : plain;
      };
    };
    DrawCurve(picture, reference, pitch, inked(0x577AB9, 0x577AB9));
    for (int x = left; x < left + width && map.DerivedAverage; ++x) picture.Set(x, ToY(map.ShownAverage()), 0x0000FF);
    DrawCurve(
        picture, map, [](const FrqFrame& frame) { return frame.Mark ? frame.SuggestedFrequency : 0.0; },
        [](const FrqFrame&, bool selected) -> COLORREF { return selected ? 0x8080FF : 0xFF8080; });
    DrawCurve(picture, map, pitch, inked(0xFF0000, 0x0000FF));
  }
};

// Voiced but for two gaps with a lone frame between them, frames 30 to 35 without voice though with a pitch, and marks
// with and without a suggestion.
FrqMap ExampleMap() {
  FrqMap map;
  map.Loaded = true;
  map.Hop = 256;
  map.Average = NoteToHz(52.37);
  map.Frames.resize(kFrameCount);
  map.FrameCount = kFrameCount;
  for (int i = 0; i < kFrameCount; ++i) {
    FrqFrame& frame = map.Frames[static_cast<std::size_t>(i)];
    const bool gap = i == 20 || i == 22;
    frame.Frequency = gap ? 55.0 : NoteToHz(50.2 + 6.0 * std::sin(i * 0.4));
    frame.Voiced = !gap && (i < 30 || i > 35);
    frame.Amplitude = 137.0 * i;
    frame.Mark = i % 9 < 3 ? 1 : 0;
    frame.SuggestedFrequency = i % 9 == 2 ? 0.0 : NoteToHz(57.31);
  }
  map.HasMarks = true;
  return map;
}

FrqMap ExampleReference() {
  FrqMap map = ExampleMap();
  map.Average = NoteToHz(48.73);
  for (FrqFrame& frame : map.Frames) frame.Frequency *= frame.Voiced ? 1.1 : 1.0;
  return map;
}

// What the parent was told last.
struct {
  WPARAM wParam;
  LPARAM lParam;
} told;

LRESULT CALLBACK ParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_COMMAND) told = {wParam, lParam};
  return DefWindowProcW(window, message, wParam, lParam);
}

class FrqCtrlTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    RegisterControl<CFrqCtrl>();
    WNDCLASSW parentClass{};
    parentClass.lpfnWndProc = ParentProc;
    parentClass.lpszClassName = L"FrqCtrlTestParent";
    RegisterClassW(&parentClass);
  }
  void SetUp() override {
    parent_ = CreateWindowW(L"FrqCtrlTestParent", L"", WS_POPUP | WS_VISIBLE, 0, 0, 640, 480, nullptr, nullptr, nullptr,
                            nullptr);
    control_ = Child(L"FrequencyTableControl", WS_HSCROLL | WS_VSCROLL, 0, 1001);
    sibling_ = Child(L"STATIC", 0, 520, 1004);
    control = FrqCtrlSender(control_);
    told = {};
  }
  void TearDown() override { DestroyWindow(parent_); }

  HWND Child(const wchar_t* windowClass, DWORD style, int x, INT_PTR id) {
    return CreateWindowW(windowClass, L"", WS_CHILD | WS_VISIBLE | style, x, 0, x ? 100 : 500, 330, parent_,
                         reinterpret_cast<HMENU>(id), nullptr, nullptr);
  }
  LRESULT Send(UINT message, int wParam, LPARAM lParam = 0) {
    return SendMessageW(control_, message, static_cast<WPARAM>(wParam), lParam);
  }
  void Wheel(WORD keys, int delta, int screenX) {
    Send(WM_MOUSEWHEEL, MAKEWPARAM(keys, delta), MAKELPARAM(screenX, 9));
  }
  SCROLLINFO Bar(int bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_ALL;
    GetScrollInfo(control_, bar, &info);
    return info;
  }
  void Show(const FrqMap* reference, FrqMap* map) {
    control.SetMaps(reference, map);
    control.RepaintNow();
  }
  // The client area as it stands on the screen.
  Picture Shown() {
    RECT client{};
    GetClientRect(control_, &client);
    Picture picture(client.right, client.bottom);
    const HDC dc = GetDC(control_);
    BitBlt(picture.dc(), 0, 0, client.right, client.bottom, dc, 0, 0, SRCCOPY);
    ReleaseDC(control_, dc);
    GdiFlush();
    return picture;
  }
  int StripWidth() {
    SIZE size{};
    GetTextExtentPoint32W(Picture(1, 1).dc(), L"C0", 2, &size);
    return size.cx;
  }

  FrqMap map_ = ExampleMap();
  FrqMap reference_ = ExampleReference();
  HWND parent_ = nullptr;
  HWND control_ = nullptr;
  HWND sibling_ = nullptr;
  FrqCtrlSender control{nullptr};
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

    const Picture shown = Shown();
    const int left = StripWidth();
    const PlainTable table{
        left,       shown.Width() - left, shown.Height(), kColumnWidths[row.zoom], kRowHeights[row.zoom],
        bottomNote, row.scrollColumn};
    Picture expected(shown.Width(), shown.Height());
    table.Draw(expected, map_, reference_);
    EXPECT_EQ(Difference(shown, expected, left), "same");
    EXPECT_EQ(shown.At(0, table.ToY(map_.ShownAverage())), COLORREF{0x0000FF}) << "the line can be taken in the strip";
  }
}

TEST_F(FrqCtrlTest, LabelsStandAtTheCOfEachOctave) {
  control.SetZoom(4);
  Show(nullptr, nullptr);
  control.DropLayer();
  control.RepaintNow();
  const Picture shown = Shown();
  const auto inkInRow = [&](int row) {
    int ink = 0;
    for (int y = shown.Height() - 15 * (row + 1); y < shown.Height() - 15 * row; ++y) {
      for (int x = 0; x < StripWidth(); ++x) ink += shown.At(x, y) == 0x808080;
    }
    return ink;
  };
  for (int row = 0; row < 20; ++row) EXPECT_EQ(inkInRow(row) > 10, row % 12 == 0) << "row " << row;
}

TEST_F(FrqCtrlTest, TheCaptionStandsAtTheTopLeft) {
  const auto inkAtTheTop = [&] {
    const Picture shown = Shown();
    int ink = 0;
    for (int y = 1; y < 14; ++y) {
      for (int x = 1; x < 60; ++x) ink += shown.At(x, y) == 0x808080;
    }
    return ink;
  };
  control.RepaintNow();
  EXPECT_EQ(inkAtTheTop(), 0);
  SetWindowTextW(control_, L"a&b.wav");
  control.RepaintNow();
  EXPECT_GT(inkAtTheTop(), 20);
}

TEST_F(FrqCtrlTest, ShowingTheSameMapAgainKeepsItsSavedState) {
  Show(&reference_, &map_);
  Send(FCM_SETSCROLLCOLUMN, 5);
  const Picture before = Shown();
  FrqMap other = ExampleMap();
  control.SetMaps(&other, &map_);
  EXPECT_EQ(Difference(Shown(), before, 0), "same") << "neither the saved state nor the place changes";
  map_.Frames[9].Amplitude = 9000.0;
  control.SetMaps(nullptr, &map_);
  EXPECT_NE(Difference(Shown(), before, 0), "same") << "but what is in the map is shown";
}

TEST_F(FrqCtrlTest, TakingTheMapAwayKeepsThePictureUntilItIsDropped) {
  Show(&reference_, &map_);
  const int y = PlainTable{0, 0, Shown().Height(), 2, 3, 24, 0}.ToY(map_.Average);
  EXPECT_EQ(Shown().At(0, y), COLORREF{0x0000FF});
  Show(nullptr, nullptr);
  EXPECT_EQ(Shown().At(0, y), COLORREF{0x0000FF});
  control.DropLayer();
  control.RepaintNow();
  EXPECT_NE(Shown().At(0, y), COLORREF{0x0000FF});
}

TEST_F(FrqCtrlTest, AMapWithoutAverageOrSavedStateIsShown) {
  map_.Average = FrqNoPitch;
  Show(nullptr, &map_);
  const Picture shown = Shown();
  for (int y = 0; y < shown.Height(); ++y) EXPECT_NE(shown.At(0, y), COLORREF{0x0000FF}) << y;
}

TEST_F(FrqCtrlTest, SettingsOutsideTheirRangeAreRefused) {
  EXPECT_EQ(control.ZoomCount(), 7);
  struct {
    UINT set, get;
    int value, result, kept;
  } const rows[] = {
      {FCM_SETZOOM, FCM_GETZOOM, 3, 0, 3},
      {FCM_SETZOOM, FCM_GETZOOM, -1, 0, 0},
      {FCM_SETZOOM, FCM_GETZOOM, 99, 0, 6},
      {FCM_SETBRIGHTNESS, FCM_GETBRIGHTNESS, -3, 0, -3},
      {FCM_SETBRIGHTNESS, FCM_GETBRIGHTNESS, 4, 0, -3},
      {FCM_SETBRIGHTNESS, FCM_GETBRIGHTNESS, -4, 0, -3},
      {FCM_SETCOLORTABLE, FCM_GETCOLORTABLE, 5, 0, 5},
      {FCM_SETCOLORTABLE, FCM_GETCOLORTABLE, 6, 0, 5},
      {FCM_SETCOLORTABLE, FCM_GETCOLORTABLE, -1, 0, 5},
      {FCM_SETVIEWMODE, FCM_GETVIEWMODE, 1, 0, 1},
      {FCM_SETVIEWMODE, FCM_GETVIEWMODE, 2, -1, 1},
      {FCM_SETVIEWMODE, FCM_GETVIEWMODE, -1, -1, 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Send(row.set, row.value), row.result) << row.set << " " << row.value;
    EXPECT_EQ(Send(row.get, 0), row.kept) << row.set << " " << row.value;
  }
}

TEST_F(FrqCtrlTest, ScrollBarsGoOverTheWholeMapAndNoFarther) {
  Show(&reference_, &map_);
  const SCROLLINFO across = Bar(SB_HORZ);
  const SCROLLINFO upright = Bar(SB_VERT);
  EXPECT_EQ((std::vector<int>{across.nMin, across.nMax, int(across.nPage), across.nPos}),
            (std::vector<int>{0, 16 + kFrameCount, 17, 0}));
  EXPECT_EQ((std::vector<int>{upright.nMin, upright.nMax, int(upright.nPage), upright.nPos}),
            (std::vector<int>{0, 100, 6, 95}));
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
    EXPECT_EQ(Bar(row.message == WM_HSCROLL ? SB_HORZ : SB_VERT).nPos, row.expected) << row.message << " " << row.code;
  }
}

TEST_F(FrqCtrlTest, TheWheelScrollsAndZoomsWhatIsUnderThePointer) {
  Show(&reference_, &map_);
  struct {
    WORD keys;
    int delta, column, upright, zoom;
  } const rows[] = {
      {MK_SHIFT, -120, 4, 95, 0},   {MK_SHIFT, 240, 0, 95, 0},     {MK_SHIFT, -32000, 59, 95, 0},
      {0, 120, 59, 94, 0},          {0, -240, 59, 95, 0},          {0, 119, 59, 95, 0},
      {MK_CONTROL, 120, 59, 95, 1}, {MK_CONTROL, -120, 59, 95, 0}, {MK_SHIFT | MK_LBUTTON, 120, 59, 95, 0},
  };
  for (const auto& row : rows) {
    Wheel(row.keys, row.delta, 100);
    EXPECT_EQ((std::vector<int>{Bar(SB_HORZ).nPos, Bar(SB_VERT).nPos, control.Zoom()}),
              (std::vector<int>{row.column, row.upright, row.zoom}))
        << row.keys << " " << row.delta;
  }
  Wheel(MK_SHIFT, 120, 560);
  EXPECT_EQ(Bar(SB_HORZ).nPos, 59);
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, sibling_, WM_MOUSEWHEEL, WM_MOUSEWHEEL, PM_REMOVE));
  EXPECT_EQ(message.wParam, WPARAM(MAKEWPARAM(MK_SHIFT, 120)));
  EXPECT_EQ(message.lParam, MAKELPARAM(560, 9));
}

TEST_F(FrqCtrlTest, TheParentHearsOfEachStepOfTheZoom) {
  for (const int zoom : {1, 2, 3, 4, 5, 6, 6}) {
    told = {};
    control.StepZoom(false);
    EXPECT_EQ(told.wParam, WPARAM(MAKEWPARAM(1001, FCN_ZOOMCHANGED)));
    EXPECT_EQ(told.lParam, zoom);
  }
  control.StepZoom(true);
  EXPECT_EQ(told.lParam, 5);
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
    EXPECT_EQ(Shown().At(StripWidth() + 1, Shown().Height() - 1), COLORREF{0xE0E0E0}) << "the lowest line " << average;
  }
}

}  // namespace

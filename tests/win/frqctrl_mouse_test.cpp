// The frequency table control under the mouse: what a drag writes into the map, and what the parent hears of it.
#include <windows.h>
#include <commctrl.h>

#include <array>

#include "frqmap/mapediting.h"
#include "resources/ids.h"
#include "win/tablewindow.h"

namespace {

constexpr int kZoom = 3;
constexpr int kCell = 10;  // pixels of a column and of a row at this zoom

struct FrqCtrlMouse : FrqCtrlTest {
  FrqCtrlMouse() {
    map_.HasMarks = false;
    control.SetZoom(kZoom);
    Show(&reference_, &map_);
    told.clear();
  }

  int X(int column) { return StripWidth() + column * kCell + kCell / 2; }
  // The middle of a note's row.
  int Y(int note) { return Shown().Height - (note - 24) * kCell - kCell / 2; }
  void Mouse(UINT message, int x, int y) { Send(message, 0, MAKELPARAM(x, y)); }
  void DragTo(UINT press, UINT release, const std::vector<POINT>& points) {
    Mouse(WM_MOUSEMOVE, points.front().x, points.front().y);  // as a mouse comes
    Mouse(press, points.front().x, points.front().y);
    for (const POINT& point : points) Mouse(WM_MOUSEMOVE, point.x, point.y);
    Mouse(release, points.back().x, points.back().y);
  }
  void Drag(const std::vector<POINT>& points) { DragTo(WM_LBUTTONDOWN, WM_LBUTTONUP, points); }
  // The columns of the notifications of changed frames, in their order.
  static std::vector<int> ToldColumns() {
    std::vector<int> columns;
    for (const auto& [code, value] : told) {
      if (HIWORD(code) == FCN_FRAMECHANGED) columns.push_back(static_cast<int>(value));
    }
    return columns;
  }
  static std::vector<WORD> ToldCodes() {
    std::vector<WORD> codes;
    for (const auto& message : told) codes.push_back(HIWORD(message.first));
    return codes;
  }
  // The place where the average line of the example map can be taken hold of.
  int GripY() { return static_cast<int>(Shown().Height - (52.37 - 24) * kCell - kCell / 2); }
};

TEST_F(FrqCtrlMouse, AStrokeSetsEveryColumnThatItPassesAndNoOther) {
  const int last = kFrameCount - 1;
  Send(FCM_SETSCROLLCOLUMN, 30);
  const auto x = [&](int column) { return X(column - 30); };
  const std::tuple<std::vector<POINT>, std::vector<int>, std::vector<int>> tests[] = {
      {{{x(31), Y(40)}, {x(34), Y(43)}}, {31, 31, 31, 32, 33, 34}, {40, 40, 40, 41, 42, 43}},
      {{{x(34), Y(40)}, {x(31), Y(46)}}, {34, 34, 34, 33, 32, 31}, {40, 40, 40, 42, 44, 46}},
      {{{x(30), Y(40)}, {x(28), Y(40)}}, {30, 30, 30, 29, 28}, {40, 40, 40, 40, 40}},
      {{{x(last - 1), Y(40)}, {x(last) + 3 * kCell, Y(44)}}, {last - 1, last - 1, last - 1, last}, {40, 40, 40, 41}},
      {{{x(31), -9999}}, {31, 31}, {119, 119}}};
  for (const auto& [points, columns, notes] : tests) {
    for (const bool erase : {false, true}) {
      map_.Frames = ExampleMap().Frames;
      FrqMap expected = map_;
      told.clear();
      if (erase) DragTo(WM_RBUTTONDOWN, WM_RBUTTONUP, points);
      if (!erase) Drag(points);
      EXPECT_EQ(ToldColumns(), columns) << erase;
      for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto column = static_cast<std::size_t>(columns[i]);
        expected.Frames.Own()[column].Frequency = erase ? 55.0 : NoteToHz(notes[i]);
        EXPECT_EQ(map_.Frames[column].Voiced, !erase);
        EXPECT_EQ(map_.Frames[column].Selected, columns[i] == columns.back());
      }
      for (std::size_t i = 0; i < map_.Frames.size(); ++i) {
        EXPECT_NEAR(map_.Frames[i].Frequency, expected.Frames[i].Frequency, 1e-9) << i;
      }
    }
  }
}

TEST_F(FrqCtrlMouse, ARefusedPressWritesNothingButTheRightButtonErasesAllTheSame) {
  const FrqMap before = map_;
  const std::tuple<int, bool, bool> tests[] = {
      {1, false, false}, {9999, false, false}, {X(3), true, false}, {1, false, true}};
  for (const auto& [x, readOnly, derivedAverage] : tests) {
    control.SetReadOnly(readOnly);
    map_.DerivedAverage = derivedAverage;
    Drag({{x, derivedAverage ? Y(52) : Y(60)}, {X(5), Y(40)}});
    EXPECT_TRUE(told.empty() && map_.Equals(before)) << x;
  }
  control.SetReadOnly(true);
  DragTo(WM_RBUTTONDOWN, WM_LBUTTONUP, {{X(3), Y(40)}});
  EXPECT_EQ(map_.Frames[3].Frequency, 55.0);
  EXPECT_EQ(GetCapture(), nullptr) << "either button ends it";
}

TEST_F(FrqCtrlMouse, TheAverageIsDraggedByItsGripAndADoubleClickThereLevelsTheMap) {
  Drag({{1, GripY() + 2}, {1, Y(60)}});
  EXPECT_NEAR(map_.Average, NoteToHz(60), 1e-9);
  EXPECT_EQ(ToldCodes(), (std::vector<WORD>{FCN_AVERAGECHANGED, FCN_AVERAGECHANGED}));
  Drag({{1, Y(60) + 1}, {1, Shown().Height + 99}});
  EXPECT_EQ(map_.Average, 55.0) << "and the line is gone";

  told.clear();
  Mouse(WM_LBUTTONDBLCLK, 1, Y(70));
  EXPECT_EQ(ToldCodes(), (std::vector<WORD>{FCN_AVERAGECHANGED, FCN_FRAMECHANGED}));
  EXPECT_EQ(told.back().second, -1);
  EXPECT_NEAR(map_.Average, NoteToHz(70), 1e-9);
  for (const FrqFrame& frame : map_.Frames) EXPECT_EQ(frame.Frequency, map_.Average);
}

// Counts strokes, and ends one from outside after some writes, as a job or another syllable does.
struct CountingEditing : DirectEditing {
  void BeginStroke(const FrqMap& map, StrokeKind kind) override {
    ++Begun;
    DirectEditing::BeginStroke(map, kind);
  }
  void EndStroke() override {
    if (IsStrokeOpen()) ++Ended;
    DirectEditing::EndStroke();
  }
  bool SetFrequency(FrqMap& map, SampleCount frame, double hz) override {
    return Write(), DirectEditing::SetFrequency(map, frame, hz);
  }
  bool SetKey(FrqMap& map, double hz) override { return Write(), DirectEditing::SetKey(map, hz); }
  void Write() {
    if (--Left < 0) EndStroke();
  }
  // A paint reads the map under the lock, and tells nobody anything meanwhile.
  void lock() const override { Held = true; }
  void unlock() const override { Held = false; }

  int Begun = 0, Ended = 0, Left = 1000;
  mutable bool Held = false;
};

TEST_F(FrqCtrlMouse, AStrokeThatIsEndedFromOutsideWritesAndTellsNoMore) {
  CountingEditing editing;
  bool toldUnderLock = false;
  answer = [&] { toldUnderLock |= editing.Held; };
  control.SetEditing(&editing);
  // The writes that are let through: none, the press alone, some columns of a move; what is told of them.
  for (const auto& [writes, columns] : {std::pair(0, std::vector<int>{}), {1, {3}}, {4, {3, 3, 4, 5}}}) {
    editing.Left = writes;
    const FrqMap before = map_;
    told.clear();
    Mouse(WM_LBUTTONDOWN, X(3), Y(40));
    Mouse(WM_MOUSEMOVE, X(9), Y(40));
    EXPECT_EQ(GetCapture(), nullptr) << writes;
    Mouse(WM_MOUSEMOVE, X(12), Y(40));
    Mouse(WM_LBUTTONUP, X(12), Y(40));
    EXPECT_EQ(ToldColumns(), columns);
    for (std::size_t i = 6; i < 20; ++i) EXPECT_EQ(map_.Frames[i].Frequency, before.Frames[i].Frequency) << i;
  }
  editing.Left = 1;
  told.clear();
  Drag({{1, GripY()}, {1, Y(60)}, {1, Y(70)}});
  EXPECT_EQ(ToldCodes(), std::vector<WORD>{FCN_AVERAGECHANGED});
  EXPECT_EQ(std::pair(editing.Begun, editing.Ended), std::pair(4, 4)) << "one for each press, and all have ended";
  EXPECT_FALSE(toldUnderLock);
  control.SetEditing(nullptr);
  Drag({{X(3), Y(45)}});
  EXPECT_EQ(editing.Begun, 4) << "its own again";
}

TEST_F(FrqCtrlMouse, ADragEndsWithItsCaptureItsMapOrItsWindow) {
  CountingEditing editing;
  control.SetEditing(&editing);
  FrqMap other = ExampleMap();
  const FrqMap untouched = other;
  const std::function<void()> ends[] = {[&] { SetCapture(sibling_); }, [&] { Show(&reference_, &other); },
                                        // In answer to the second column of a move.
                                        [&] {
                                          answer = [&] {
                                            if (told.back().second == 4) control.SetMaps(&reference_, &other);
                                          };
                                          Mouse(WM_MOUSEMOVE, X(6), Y(40));
                                          EXPECT_EQ(ToldColumns().back(), 4);
                                          EXPECT_NE(map_.Frames[5].Frequency, NoteToHz(40));
                                          answer = nullptr;
                                        }};
  for (const auto& end : ends) {
    SCOPED_TRACE(&end - ends);
    map_ = ExampleMap();
    Mouse(WM_LBUTTONDOWN, X(3), Y(40));
    EXPECT_EQ(GetCapture(), control_);
    end();
    EXPECT_NE(GetCapture(), control_);
    EXPECT_EQ(GetCapture(), &end == ends ? sibling_ : nullptr) << "another window's is not taken from it";
    ReleaseCapture();
    const FrqMap before = map_;
    told.clear();
    Mouse(WM_MOUSEMOVE, X(9), Y(50));
    EXPECT_TRUE(told.empty() && map_.Equals(before) && other.Equals(untouched));
    Mouse(WM_LBUTTONUP, X(9), Y(50));
    Show(&reference_, &map_);
  }
  Mouse(WM_LBUTTONDOWN, X(3), Y(40));
  DestroyWindow(control_);
  EXPECT_EQ(editing.Begun, editing.Ended);
  EXPECT_FALSE(editing.IsStrokeOpen());
}

TEST_F(FrqCtrlMouse, TheChildrenTurnTheViewAndItsBrightness) {
  const HWND trackbar = GetDlgItem(control_, IDC_TABLE_TRACKBAR);
  SendDlgItemMessageW(control_, IDC_TABLE_VIEW, BM_CLICK, 0, 0);
  EXPECT_EQ(control.ViewMode(), 1);
  for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
    SendDlgItemMessageW(control_, IDC_TABLE_BRIGHTNESS, message, 0, MAKELPARAM(2, 2));
  }
  MSG message{};
  while (PeekMessageW(&message, control_, FCM_TOGGLEBRIGHTNESS, FCM_TOGGLEBRIGHTNESS, PM_REMOVE)) {
    DispatchMessageW(&message);
  }
  EXPECT_TRUE(IsWindowVisible(trackbar));
  SendMessageW(trackbar, TBM_SETPOS, TRUE, 3);
  Send(WM_VSCROLL, TB_THUMBTRACK, reinterpret_cast<LPARAM>(trackbar));
  EXPECT_EQ(control.Brightness(), 3);
  Send(WM_COMMAND, ID_VIEW_COLOR_RUBY);

  EXPECT_EQ(Send(FCM_SETVIEWMODE, 2), -1) << "out of range";
  EXPECT_EQ((std::array{control.ViewMode(), control.Brightness(), control.ColorTable()}), (std::array{1, 3, 5}));
}

}  // namespace

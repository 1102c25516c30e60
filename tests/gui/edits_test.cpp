// Edits by the buttons and by the mouse, and that the frame list and the table say the same.
#include "frqmap/edits.h"
#include "gui/program.h"

namespace {

struct Edits : ProgramTest {
  void DoubleClick(int button) const { SendItem(button, WM_LBUTTONDBLCLK, MK_LBUTTON); }
  std::wstring Box(int id) const { return WindowText(Item(id)); }
  int Caret() const { return static_cast<int>(SendItem(IDC_EDITOR_FRAMES, LB_GETCARETINDEX)); }

  FrqMap& Map() const { return *List().Map(0); }
  std::wstring FramesOfMap() const {
    std::wstring texts;
    for (const FrqFrame& frame : Map().Frames) texts += FrameRowText(frame.Frequency) + L'|';
    return texts;
  }
};

// Of many rows a few are replaced where they stand, while more of them make the list be filled anew.
TEST_F(Edits, ALongListHasItsRowsAndItsCaretBehindAnyEdit) {
  AddSyllable(L"a", std::vector<double>(400, 100.0));
  Start(folder_.Path());
  const std::wstring before = Frames();
  for (const int step : {40, 2}) {
    std::vector<int> rows;
    for (int row = 150; row < 240; row += step) rows.push_back(row);
    SelectFrames(rows);
    DoubleClick(IDC_EDITOR_DOUBLE);
    EXPECT_EQ(Frames(), FramesOfMap());
    EXPECT_EQ(SelectedFrames(), rows);
    EXPECT_EQ(Caret(), rows.back());
  }
  SelectFrames({10, 13});
  DoubleClick(IDC_EDITOR_INTERPOLATE);
  EXPECT_EQ(SelectedFrames(), (std::vector{10, 11, 12, 13})) << "also those between";
  EXPECT_EQ(Box(IDC_EDITOR_FREQUENCY) + Column(2), L"100.00000000*|");
  Press(ID_EDIT_SELECTALL);
  DoubleClick(IDC_EDITOR_RELOAD);
  EXPECT_EQ(Frames() + Column(2), before + L"|") << "as in the file";
}

TEST_F(Edits, FrameListBoxesAndMarkFollowTheMouseInTheTable) {
  AddSyllable(L"a", std::vector<double>(60, 110.0));
  Start(folder_.Path());
  PressKey(VK_CONTROL, 0);
  Sleep(100);  // Wine may say for 50 ms that a key is up, once it has told the thread so
  Mouse(WM_LBUTTONDOWN, 100, 100);
  Mouse(WM_MOUSEMOVE, 120, 60);
  Mouse(WM_LBUTTONUP, 120, 60);
  PressKey(VK_CONTROL, KEYEVENTF_KEYUP);
  EXPECT_EQ(SelectedFrames(), SelectionOfMap(0));
  EXPECT_GT(SelectedFrames().size(), 2u);
  EXPECT_EQ(Column(2), L"|");

  Map().DerivedAverage = true;
  Mouse(WM_LBUTTONDOWN, 100, 100);
  const int first = Caret();
  Mouse(WM_MOUSEMOVE, 110, 60);
  Mouse(WM_LBUTTONUP, 110, 60);
  EXPECT_EQ(Frames(), FramesOfMap());
  EXPECT_GT(Caret(), first);
  EXPECT_EQ(SelectedFrames(), std::vector{Caret()});
  const double drawn = Map().Frames[static_cast<std::size_t>(Caret())].Frequency;
  EXPECT_NE(drawn, 110.0);
  EXPECT_EQ(Box(IDC_EDITOR_FREQUENCY), FrequencyText(drawn));
  EXPECT_TRUE(Eventually([&] { return Box(IDC_EDITOR_KEY) == FrequencyText(Map().ComputeAverage(2)); }));
  EXPECT_TRUE(Column(2) == L"*|" && !IsGrey(ID_FILE_SAVE));

  Map().DerivedAverage = false;
  Mouse(WM_LBUTTONDBLCLK, 2, 80);
  EXPECT_EQ(Frames(), FramesOfMap());
  EXPECT_TRUE(Frames().starts_with(Box(IDC_EDITOR_KEY) + L"|" + Box(IDC_EDITOR_KEY) + L"|"));
}

}  // namespace

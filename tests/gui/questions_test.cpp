// The questions where edits would go, and that edits stay wherever nobody has given them up.
#include "gui/resamplerdouble.h"

namespace {

struct Questions : DoubleTest {
  void PressEscapeInList() const { PostMessageW(GetDlgItem(list_, IDC_LIST_FILES), WM_KEYDOWN, VK_ESCAPE, 0); }
};

TEST_F(Questions, EscapeInTheListAsksForTheEditsOnce) {
  AddSyllable(L"bank\\a", {220.0});
  for (const bool isEdited : {true, false}) {
    SCOPED_TRACE(isEdited);
    Start(Bank());
    for (const WPARAM key : {WPARAM{SC_CLOSE}, WPARAM{SC_CLOSE + 1}}) SendMessageW(list_, WM_SYSCOMMAND, key, 0);
    SendMessageW(list_, WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindowVisible(list_)) << "it has no close command";
    if (isEdited) {
      SetFirstFrame(L"100");
      const auto escape = [this] { PressEscapeInList(); };
      EXPECT_EQ(Answer(escape, {IDNO}), LoadResString(IDS_DISCARD));
      ASSERT_TRUE(Eventually([this] { return IsWindowEnabled(list_) && IsWindowEnabled(editor_); }));
      EXPECT_EQ(Column(2) + Frames(), L"*|100.00000000|");
      EXPECT_EQ(Answer([this] { SendMessageW(list_, WM_COMMAND, IDCANCEL, 0); }, {IDYES}), LoadResString(IDS_DISCARD));
    } else {
      PressEscapeInList();
    }
    EXPECT_TRUE(Eventually([this] { return !IsWindow(list_); }));
    PostMessageW(editor_, WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(ExitCode(), 0) << "it asked again";
    editor_ = list_ = nullptr;
  }
}

}  // namespace

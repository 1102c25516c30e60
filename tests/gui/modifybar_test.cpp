// The bar that goes through what a check has marked.
#include "gui/checkwindows.h"

namespace {

struct ModifyBar : CheckTest {
  // Five syllables of 60 frames. The second and the last have two runs of marks each; those of the last come with
  // suggestions.
  void Begin() {
    for (const wchar_t* name : {L"a", L"b", L"c", L"d", L"e"}) AddSyllable(name, std::vector<double>(60, 220.0));
    constexpr CheckScript::Answer answers[] = {{2, 3, 1, 0},  {2, 4, 1, 0},    {2, 30, 1, 0},   {2, 31, 1, 0},
                                               {2, 32, 1, 0}, {5, 10, 1, 440}, {5, 20, 1, 440}, {5, 21, 1, 880}};
    std::ranges::copy(answers, Script().Answers);
    Start(folder_.Path());
    CheckAgain();
  }
  void CheckAgain() {
    Script().Calls = 0;
    RunCheck();
    EXPECT_TRUE(Eventually([&] { return Bar() && IsWindowVisible(Bar()) && InView() == std::pair(1, kFirst); }));
  }
  static void PressButton(int id) { SendMessageW(Bar(), WM_COMMAND, static_cast<WPARAM>(id), 0); }
  bool BarGoes() const {
    return Eventually([] { return !Bar(); });
  }
  // The syllable that is shown and its selected frames, which the table has as the list of frames does.
  std::pair<int, std::vector<int>> InView() const {
    const int row = List().Selection();
    const std::vector<int> frames = SelectedFrames();
    return {row, SelectionOfMap(row) == frames ? frames : std::vector{-1}};
  }
  // The list's columns of edits and of marks.
  std::wstring Cells() const { return Column(2) + L' ' + Column(3); }
  int MarkCount(int syllable) const {
    const std::string marks = Marks(syllable);
    return static_cast<int>(marks.size() - static_cast<std::size_t>(std::ranges::count(marks, '.')));
  }

  const std::vector<int> kFirst = {3, 4};
  const std::vector<int> kSecond = {30, 31, 32};
  const std::vector<int> kThird = {10};
  const std::vector<int> kLast = {20, 21};
};

TEST_F(ModifyBar, GoesFromRunToRunInBothDirectionsAndRound) {
  Begin();
  const std::tuple<int, int, std::vector<int>> steps[] = {
      {IDC_MODIFY_NEXT, 1, kSecond}, {IDC_MODIFY_NEXT, 4, kThird},    {IDC_MODIFY_NEXT, 4, kLast},
      {IDC_MODIFY_NEXT, 1, kFirst},  {IDC_MODIFY_PREVIOUS, 4, kLast}, {IDC_MODIFY_PREVIOUS, 4, kThird}};
  for (const auto& [button, row, frames] : steps) {
    PressButton(button);
    EXPECT_EQ(InView(), std::pair(row, frames));
  }
  PostMessageW(Bar(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(BarGoes());
  EXPECT_EQ(MarkCount(1) + MarkCount(4), 8) << "to close it settles nothing";
}

TEST_F(ModifyBar, SettlesEachRunAndEndsWithTheLast) {
  Begin();
  PressButton(IDC_MODIFY_IGNORE);
  EXPECT_EQ(InView(), std::pair(1, kSecond));
  EXPECT_EQ(MarkCount(1), 3);
  PressButton(IDC_MODIFY_NEXT);
  EXPECT_EQ(Cells(), L"||||| |*|||*|");
  PressButton(IDC_MODIFY_MODIFY);
  EXPECT_EQ(InView(), std::pair(4, kLast));
  EXPECT_FALSE(IsGrey(ID_FILE_SAVE)) << "Ctrl+S would do nothing";
  EXPECT_EQ(List().Map(4)->Frames[10].Frequency, 440.0);
  EXPECT_NEAR(List().Map(4)->Average, List().Map(4)->ComputeAverage(-1), 0.0) << "though the file had one of its own";
  EXPECT_EQ(WindowText(Item(IDC_EDITOR_KEY)).substr(0, 3), L"222");
  PressButton(IDC_MODIFY_MODIFY);
  EXPECT_EQ(Cells(), L"||||*| |*||||");
  PressButton(IDC_MODIFY_NEXT);
  EXPECT_EQ(InView(), std::pair(1, kSecond));
  EXPECT_TRUE(HasSaid(LoadResString(IDS_NOMOREMARKS)));
  PressButton(IDC_MODIFY_IGNORE);
  EXPECT_TRUE(BarGoes());
  EXPECT_EQ(Cells(), L"||||*| |||||");
}

TEST_F(ModifyBar, ModifiesAllThatHasASuggestion) {
  Begin();
  PressButton(IDC_MODIFY_MODIFYALL);
  EXPECT_TRUE(BarGoes());
  EXPECT_EQ(Cells(), L"|*|||*| |*||||") << "what has none stays marked";
  EXPECT_EQ(MarkCount(1), 5);
  CheckAgain();
  PressButton(IDC_MODIFY_NEXT);
  PressButton(IDC_MODIFY_MODIFY);
  EXPECT_EQ(InView().first, 4) << "a run without a suggestion is passed by";
  EXPECT_EQ(MarkCount(1), 5);
}

TEST_F(ModifyBar, GoesWithTheMarksThatItIsFor) {
  Begin();
  SetFirstFrame(L"300");
  Press(ID_EDIT_RELOAD);
  EXPECT_TRUE(BarGoes()) << "though the last syllable has marks";
  EXPECT_EQ(Column(3), L"||||*|");
  CheckAgain();
  Press(ID_RECENT_FIRST);
  EXPECT_TRUE(BarGoes());
}

// The words below the bar.
std::wstring WordsOfBar() {
  for (HWND tip = nullptr; (tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr));) {
    if (GetWindow(tip, GW_OWNER) != CheckTest::Bar() || !IsWindowVisible(tip)) continue;
    if (const std::wstring text = CheckTest::TextOfBalloon(tip); !text.empty()) return text;
  }
  return {};
}

TEST_F(ModifyBar, SaysWhichRunOfHowManyItIsAtAndWhyAndKeepsClearOfTheWork) {
  Begin();
  const auto says = [](const std::wstring& begin) {
    return Eventually([&] { return WordsOfBar().starts_with(begin); });
  };
  EXPECT_TRUE(says(L"1 of 4, b.wav. " + LoadResString(IDS_READ_MARKED))) << WordsOfBar().c_str();
  PressButton(IDC_MODIFY_NEXT);
  PressButton(IDC_MODIFY_NEXT);
  EXPECT_TRUE(says(L"3 of 4, e.wav.")) << WordsOfBar().c_str();
  EXPECT_NE(WordsOfBar().find(L"A4"), std::wstring::npos) << "what is suggested";
  Press(ID_GO_PREVIOUSMARK);
  EXPECT_TRUE(says(L"2 of 4, b.wav.")) << "a run that the editor has gone to";
  PressButton(IDC_MODIFY_NEXT);
  EXPECT_TRUE(says(L"3 of 4, e.wav.")) << "and from there on";
  EXPECT_EQ(LOWORD(SendMessageW(Bar(), DM_GETDEFID, 0, 0)), IDC_MODIFY_MODIFY);
  RECT bar{}, window{}, shared{};
  GetWindowRect(Bar(), &bar);
  for (const HWND work : {list_, editor_}) {
    GetWindowRect(work, &window);
    EXPECT_FALSE(IntersectRect(&shared, &bar, &window));
  }
}

TEST_F(ModifyBar, WhatItWouldAllChangeIsListedAndEachLineLeadsThere) {
  Begin();
  const auto lines = [](HWND dialog) { return ListView_GetItemCount(GetDlgItem(dialog, IDC_SUGGESTIONS_LIST)); };
  InDialog(ID_TOOL_SUGGESTIONS, IDC_SUGGESTIONS_SUM, [&](HWND dialog) {
    const HWND list = GetDlgItem(dialog, IDC_SUGGESTIONS_LIST);
    EXPECT_EQ(lines(dialog), 2) << "marks without a suggestion stay";
    ListView_SetItemState(list, 1, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_TRUE(Eventually([this] { return InView() == std::pair(4, kLast); }));
    Close(dialog, IDCANCEL);
  });
  EXPECT_EQ(Cells(), L"||||| |*|||*|") << "nothing has changed";
  InDialog(ID_TOOL_SUGGESTIONS, IDC_SUGGESTIONS_SUM, [&](HWND dialog) { Close(dialog, IDOK); });
  EXPECT_EQ(Cells(), L"|*|||*| |*||||") << "as Modify All leaves it";
  EXPECT_EQ(List().Map(4)->Frames[21].Frequency, 880.0);
  Press(ID_TOOL_SUGGESTIONS);
  EXPECT_TRUE(HasSaid(LoadResString(IDS_NOSUGGESTIONS)));
}

}  // namespace

// The check: its settings, what the library is given, and what becomes of its answers.
#include "check/checkrecords.h"
#include "gui/checkwindows.h"

namespace {

using Check = CheckTest;

TEST_F(Check, TheSettingsAreOneNoteAndKeptAsARecord) {
  Script();
  AddSyllable(L"a", {220.0});
  Start(folder_.Path());
  for (const wchar_t* const note : {L"C", L"C#"}) {  // the second time as they were left
    InDialog(ID_TOOL_CHECK, IDC_CHECK_LOWNOTE, [&, note = note](HWND dialog) {
      EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_CHECK_LOWNOTE)), note);
      SendDlgItemMessageW(dialog, IDC_CHECK_LOWNOTE, CB_SETCURSEL, 1, 0);
      SendDlgItemMessageW(dialog, IDC_CHECK_LOWOCTAVE, CB_SETCURSEL, 2, 0);
      for (const int box : {IDC_CHECK_TRANSITION, IDC_CHECK_END}) CheckDlgButton(dialog, box, BST_CHECKED);
      Close(dialog, IDOK);
    });
    const std::array<std::int32_t, 6> expected = {24, 49, 49, 1, 0, 1};
    EXPECT_EQ(std::memcmp(Script().Settings, expected.data(), sizeof(expected)), 0);
  }
}

TEST_F(Check, MarksFollowTheLastRunUntilTheLibraryStopsIt) {
  for (const wchar_t* name : {L"a", L"b", L"c", L"d"}) AddSyllable(name, std::vector<double>(4, 220.0));
  folder_.Write(L"missing.wav");
  folder_.Write(L"none.wav");
  folder_.Write(L"none_wav.frq", Bytes(7));
  CheckScript& script = Script();
  AddSyllable(L"gone", {220.0});
  Start(folder_.Path());
  DeleteFileW(folder_.Path(L"gone_wav.frq").c_str());
  const std::tuple<std::vector<CheckScript::Answer>, int, std::wstring, std::string> runs[] = {
      {{{1, 1, 1, 0.0}, {1, 2, 9, 440.0}, {3, 0, 1, 0.0}, {4, 3, 1, 0.0}}, 0, L"*||*|*||||", ".xs. .... x... ...x "},
      {{{2, 0, 1, 0.0}, {3, 0, 1, 0.0}}, 3, L"|*|*|*||||", ".... x... x... ...x "},
      {{{1, 0, 1, 0.0}}, 1, L"|*|*|*||||", ".... x... x... ...x "},
      {{}, 0, L"|||||||", ".... .... .... .... "}};
  for (const auto& [answers, stopAt, cells, marks] : runs) {
    script = {};
    std::ranges::copy(answers, script.Answers);
    script.StopAt = stopAt;
    RunCheck();
    EXPECT_EQ(script.Calls, stopAt ? stopAt : 4);
    EXPECT_EQ(Column(3), cells);
    EXPECT_EQ(Marks(0) + ' ' + Marks(1) + ' ' + Marks(2) + ' ' + Marks(3) + ' ', marks);
    EXPECT_EQ(Column(2), L"|||||||") << "a mark is no edit";
  }
}

TEST_F(Check, ALibraryThatCrashesEndsTheRunWithAWordAndNothingElse) {
  for (const wchar_t* name : {L"a", L"b", L"c"}) AddSyllable(name, std::vector<double>(4, 220.0));
  CheckScript& script = Script();
  Start(folder_.Path());
  SetFirstFrame(L"440");
  for (const auto& [crash, marks] : {std::pair(1, ".... "), {2, ".x.. ...."}, {3, ".x.. ..x."}}) {
    script = {{{1, 1, 1, 0.0}, {2, 2, 1, 0.0}, {3, 2, 1, 0.0}}, 0, 0, {}, crash};
    EXPECT_EQ(Answer([&] { List().RunCheck({}); }, {IDOK}), LoadResString(IDS_CHECKBROKEOFF));
    EXPECT_EQ(script.Calls, crash);
    EXPECT_EQ(Marks(0) + ' ' + Marks(1), marks);
  }
  EXPECT_EQ(Column(2), L"*|||") << "the edit is still there";
  Press(ID_FILE_SAVE);
  EXPECT_EQ(Column(2), L"|||");
}

TEST_F(Check, ALongRunShowsHowFarItIsAndEndsByAbort) {
  constexpr int kAll = 40;
  for (int i = 0; i < kAll; ++i) AddSyllable(std::to_wstring(100 + i), std::vector<double>(4, 220.0));
  CheckScript& script = Script();
  Start(folder_.Path());
  RunCheck();
  EXPECT_EQ(script.Calls, kAll);
  for (const bool aborts : {false, true}) {
    script = {};
    script.Answers[0] = {1, 1, 1, 0.0};
    script.Answers[1] = {8, 2, 1, 0.0};
    script.PauseMs = aborts ? 300 : 80;
    const auto run = std::async(std::launch::async, [this] { List().RunCheck({}); });
    HWND progress = nullptr;
    ASSERT_TRUE(Eventually([&] { return (progress = FindDialogWith(PROGRESS_CLASSW, IDC_CHECKPROGRESS_BAR)); }));
    EXPECT_GE(script.Calls, 2) << "not before it has taken a while";
    EXPECT_TRUE(Eventually([&] {
      const int begun = script.Calls;
      const std::wstring next = FormatText(L"(%d/%d) %d.wav", begun, kAll, 99 + begun);
      return WindowText(GetDlgItem(progress, IDC_CHECKPROGRESS_FILE)) == next;
    }));
    const std::wstring left = WindowText(GetDlgItem(progress, IDC_CHECKPROGRESS_LEFT));
    const int seconds = _wtoi(left.c_str() + std::min(left.find_first_of(L"123456789"), left.size()));
    EXPECT_TRUE(seconds > 0 && left == FormatText(LoadResString(IDS_LEFT_SECONDS).c_str(), seconds)) << left.c_str();
    if (aborts) Close(progress, IDCANCEL);
    run.wait();
    EXPECT_FALSE(IsWindow(progress));
    EXPECT_EQ(script.Calls < kAll, aborts);
    EXPECT_EQ(Column(3), L"*|||||||*|" + std::wstring(kAll - 8, L'|')) << "what was not looked at keeps its marks";
    EXPECT_TRUE(!aborts || HasSaid(FormatText(LoadResString(IDS_CHECK_STOPPED).c_str(), script.Calls, kAll)));
  }
}

TEST_F(Check, WithoutALibraryItSaysSoAndChangesNothing) {
  AddSyllable(L"a", {220.0});
  folder_.Write(L"checkfrq.dll", Bytes(3000, 'M'));
  Start(folder_.Path());
  FindLibrariesIn(folder_.Path());
  EXPECT_EQ(Answer([&] { List().RunCheck({}); }, {IDOK}), LoadResString(IDS_CHECKLIBRARYFAILED));
  FindLibrariesIn(DoubleFolder("nothing"));
  List().RunCheck({});
  EXPECT_FALSE(FindBox()) << "a library without the entry is passed over";
  EXPECT_FALSE(GetModuleHandleW(L"checkfrq.dll")) << "it may be exchanged while the program runs";
  EXPECT_EQ(Column(3), L"|");
}

}  // namespace

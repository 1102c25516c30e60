// Making maps: which runs there are, what becomes of the maps, and what the user sees meanwhile.

#include "gui/resamplerdouble.h"
#include "resampler/createfrqdlg.h"

namespace {

struct Creating : DoubleTest {
  void AddWaves(std::initializer_list<const wchar_t*> names) {
    for (const wchar_t* const name : names) folder_.Write(L"bank\\" + std::wstring(name) + L".wav", kSecondOfSound);
  }
  void AddMap(const std::wstring& name, double hz) { AddSyllable(L"bank\\" + name, {hz}); }
};

TEST_F(Creating, MakesEachMissingMapOnceWithAsManyRunsAtATimeAsTheUserWants) {
  Install(L"resampler.exe", 3);
  AddWaves({L"a b", L"c&d", L"e%TEMP%f", L"g^h", L"強い", L"z"});
  AddMap(L"b", 220.0);
  Script(L"200 0 map");
  Start(Bank());
  Press(ID_EDIT_INITIALIZE);
  EXPECT_EQ(Frames(), L"440.00000000|----|") << "there was none, so nothing is asked";
  Select(1);
  SetFirstFrame(L"100");
  Press(ID_EDIT_CREATEMISSING);
  EXPECT_EQ(Column(1), L"*|*|*|*|*|*|*|");
  EXPECT_TRUE(IsGrey(ID_EDIT_CREATEMISSING));
  EXPECT_EQ(Column(2) + Frames(), L"|*||||||100.00000000|") << "its map was not missing";
  const std::vector<std::wstring> calls = TakeCalls();
  EXPECT_EQ(MostAtOnce(calls), 3);
  std::multiset<std::wstring> expected, made;
  for (const wchar_t* const name : {L"a b", L"c&d", L"e%TEMP%f", L"g^h", L"z", L"強い"}) {
    expected.insert(L" \"" + Wave(name) + L"\" nul 100 100 GN 0 50");
  }
  for (const std::wstring& call : calls) {
    if (call != L"-") made.insert(call.substr(call.find(L".exe\"") + 5));
  }
  EXPECT_EQ(made, expected);
}

TEST_F(Creating, GoesOnOrEndsByWhatBecomesOfARun) {
  const std::tuple<std::wstring, const wchar_t*, const wchar_t*, const wchar_t*, int> tests[] = {
      {L"resampler.exe", L"0 7 map", L"*|*|*|*|*|", L"440.00000000|----|", 5},
      {L"resampler.exe", L"0 -1 map", L"|||||", L"", 5},
      {L"resampler.exe", L"0 0 nothing", L"|||||", L"", 5},
      {L"resampler.exe", L"0 0 rubbish", L"*|*|*|*|*|", L"", 5},
      // Each worker takes one item, loses its map and leaves.
      {L"gone.exe", L"0 0 map", L"||*|*|*|", L"", 0},
      {L"rubbish.exe", L"0 0 map", L"||*|*|*|", L"", 0}};
  for (const auto& [program, script, maps, frames, runs] : tests) {
    SCOPED_TRACE(script);
    Install(L"resampler.exe", 2);
    Choose(folder_.Path(L"program\\" + program), 2);
    folder_.Write(L"program\\rubbish.exe", {'r', 'u', 'b'});
    Script(script);
    for (const wchar_t* const name : {L"a", L"b", L"c", L"d", L"e"}) AddMap(name, 220.0);
    Start(Bank());
    SetFirstFrame(L"100");
    EXPECT_EQ(PressAndAnswer(ID_EDIT_INITIALIZEALL, IDNO), LoadResString(IDS_DISCARD));
    EXPECT_EQ(Frames(), L"100.00000000|");
    EXPECT_EQ(Answer([this] { Press(ID_EDIT_INITIALIZEALL); }, {IDYES, IDYES}),
              LoadResString(IDS_DISCARD) + LoadResString(IDS_ASKCREATEALL));
    ASSERT_TRUE(Eventually([&] { return IsWindowEnabled(list_) && IsWindowEnabled(editor_); }));
    EXPECT_EQ(Starts(TakeCalls()), runs);
    EXPECT_EQ(Column(1) + Column(2) + Frames(), maps + std::wstring(L"|||||") + frames);
    Leave();
  }
}

TEST_F(Creating, ShowsItsProgressAndLetsWhatRunsComeToItsEndOnAbort) {
  Install(L"resampler.exe", 2);
  Script(L"700 0 map");
  AddWaves({L"a", L"b", L"c", L"d", L"e"});
  Start(Bank());
  LRESULT position = 0;
  InDialog(ID_EDIT_CREATEMISSING, IDC_CREATEFRQ_PROGRESS, [&](HWND progress) {
    const HWND bar = GetDlgItem(progress, IDC_CREATEFRQ_PROGRESS);
    const auto text = [&] { return WindowText(GetDlgItem(progress, IDC_CREATEFRQ_FILE)); };
    EXPECT_TRUE(Eventually([&] { return text() >= L"(3/5) "; })) << text().c_str();
    EXPECT_EQ(SendMessageW(bar, PBM_GETRANGE, FALSE, 0), 5);
    EXPECT_FALSE(IsWindowEnabled(editor_) || IsWindowEnabled(list_));
    SendMessageW(editor_, WM_COMMAND, IDCANCEL, 0);
    EXPECT_TRUE(IsWindow(editor_)) << "it cannot be closed under a job";
    SendMessageW(progress, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(IsWindow(progress)) << "Enter ended it under its workers";
    SendMessageW(list_, FLM_SELECTSYLLABLE, 4, 0);
    EXPECT_EQ(List().Selection(), 0) << "a thumbnail puts another syllable under the job";
    SendMessageW(progress, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(progress, IDCANCEL)));
    position = SendMessageW(bar, PBM_GETPOS, 0, 0);
    EXPECT_TRUE(position == 2 || position == 3) << position;
  });
  const std::vector<std::wstring> calls = TakeCalls();
  // The window may not have heard of the last one yet.
  EXPECT_GE(Starts(calls), position + 1);
  EXPECT_LT(Starts(calls), 5) << "it went on behind the abort";
  EXPECT_EQ(std::ranges::count(calls, L"-"), Starts(calls)) << "a run was killed";
  EXPECT_EQ(List().CountMaps(), Starts(calls));
}

TEST_F(Creating, RenewsOnlyTheAnalysisOfEntriesThatTheUserKeeps) {
  Install(L"moresampler.exe", 2);
  Script(L"0 0 nothing");
  AddWaves({L"ni", L"ta"});
  FrqMap map;
  map.Create(2, FrqTypeMrq);
  MrqStore store;
  store.AddFolder(Bank());
  for (const wchar_t* const name : {L"ni", L"ta"}) {
    SaveMap(map, Wave(name), FrqTypeMrq, &store);
    folder_.Write(L"bank\\" + std::wstring(name) + L".wav.llsm");
  }
  Start(Bank());
  const std::tuple<UINT, int, const wchar_t*> tests[] = {{ID_EDIT_INITIALIZEALL, IDCANCEL, L"*|*|*|*|"},
                                                         {ID_EDIT_INITIALIZE, IDC_INITMRQ_ONLYLLSM, L"*|*||*|"},
                                                         {ID_EDIT_INITIALIZEALL, IDC_INITMRQ_ONLYLLSM, L"*|*|||"},
                                                         {ID_EDIT_INITIALIZEALL, IDC_INITMRQ_BOTH, L"||||"}};
  for (const auto& [command, choice, entriesAndAnalyses] : tests) {
    InDialog(command, IDYES, [&, choice = choice](HWND question) {
      PostMessageW(question, WM_COMMAND, IDYES, 0);
      HWND box = nullptr;
      ASSERT_TRUE(Eventually([&] { return (box = FindDialogWith(L"Static", IDC_INITMRQ_BOTH)) != nullptr; }));
      if (choice != IDCANCEL) SendDlgItemMessageW(box, choice, BM_CLICK, 0, 0);
      SendMessageW(box, WM_COMMAND, choice == IDCANCEL ? IDCANCEL : IDOK, 0);
    });
    EXPECT_EQ(Column(1) + Column(2), entriesAndAnalyses) << command << " " << choice;
  }
}

}  // namespace

// Making maps: which runs there are, what becomes of the maps, and what the user sees meanwhile.
#include "frqmap/mapfiles.h"
#include "gui/resamplerdouble.h"
#include "native/testdata.h"
#include "resampler/createfrqdlg.h"

namespace {

class Creating : public DoubleTest {
 protected:
  void AddWaves(std::initializer_list<const wchar_t*> names) {
    for (const wchar_t* const name : names) folder_.Write(L"bank\\" + std::wstring(name) + L".wav", kSecondOfSound);
  }
  void AddMap(const std::wstring& name, double hz) { AddSyllable(L"bank\\" + name, {hz}); }
  // The progress of a job that runs; null if none comes.
  HWND WaitForProgress() const {
    HWND found = nullptr;
    Eventually([&] { return (found = FindBox()) && GetDlgItem(found, IDC_CREATEFRQ_PROGRESS); });
    return found;
  }
};

TEST_F(Creating, MakesEachMissingMapOnceWithAsManyRunsAtATimeAsTheUserWants) {
  for (const DWORD workers : {1, 3, 20}) {
    std::filesystem::remove_all(folder_.Path(L"bank"));
    Install(L"resampler.exe", workers);
    AddWaves({L"a b", L"c&d", L"e%TEMP%f", L"g^h", L"強い", L"z"});
    AddMap(L"b", 220.0);
    AddMap(L"y", 330.0);
    Script(L"200 0 map");
    Start(Bank());
    Select(1);
    SetFirstFrame(L"100");
    Press(ID_EDIT_CREATEMISSING);
    EXPECT_EQ(Column(1), L"*|*|*|*|*|*|*|*|");
    EXPECT_TRUE(IsGrey(ID_EDIT_CREATEMISSING));
    EXPECT_EQ(Column(2) + Frames(), L"|*|||||||100.00000000|") << "its map was not missing";
    std::vector<std::wstring> calls = TakeCalls();
    EXPECT_EQ(MostAtOnce(calls), std::min<int>(workers, 6));
    std::erase(calls, L"-");
    std::ranges::sort(calls);
    std::wstring expected, made;
    for (const wchar_t* const name : {L"a b", L"c&d", L"e%TEMP%f", L"g^h", L"z", L"強い"}) {
      expected += L" \"" + Wave(name) + L"\" nul 100 100 GN 0 50|";
    }
    for (const std::wstring& call : calls) made += call.substr(call.find(L".exe\"") + 5) + L"|";
    EXPECT_EQ(made, expected);
    Select(0);
    EXPECT_EQ(Frames(), L"440.00000000|----|");
    Press(ID_EDIT_CREATEMISSING);
    EXPECT_EQ(Starts(TakeCalls()), 0) << "nothing is missing any more";
    Leave();
  }
}

TEST_F(Creating, GoesOnOrEndsByWhatBecomesOfARun) {
  const struct {
    const wchar_t *program, *script, *maps, *frames;
    int runs;
  } tests[] = {
      {L"resampler.exe", L"0 0 map", L"*|*|*|*|*|", L"440.00000000|----|", 5},
      {L"resampler.exe", L"0 7 map", L"*|*|*|*|*|", L"440.00000000|----|", 5},
      {L"resampler.exe", L"0 -1 map", L"|||||", L"", 5},
      {L"resampler.exe", L"0 -1 nothing", L"|||||", L"", 5},
      {L"resampler.exe", L"0 0 nothing", L"|||||", L"", 5},
      {L"resampler.exe", L"0 0 rubbish", L"*|*|*|*|*|", L"", 5},
      // Each worker takes one item, loses its map and leaves.
      {L"gone.exe", L"0 0 map", L"||*|*|*|", L"", 0},
      {L"", L"0 0 map", L"||*|*|*|", L"", 0},
      {L".", L"0 0 map", L"||*|*|*|", L"", 0},
  };
  for (const auto& test : tests) {
    SCOPED_TRACE(testing::Message() << test.program << " " << test.script);
    Install(L"resampler.exe", 2);
    if (test.program != std::wstring(L"resampler.exe")) {
      Choose(*test.program ? folder_.Path(L"program\\" + std::wstring(test.program)) : L"", 2);
    }
    Script(test.script);
    for (const wchar_t* const name : {L"a", L"b", L"c", L"d", L"e"}) AddMap(name, 220.0);
    Start(Bank());
    SetFirstFrame(L"100");
    EXPECT_EQ(PressAndAnswer(ID_EDIT_INITIALIZEALL, IDNO), LoadResString(IDS_ASKCREATEALL));
    EXPECT_EQ(Frames(), L"100.00000000|");
    PressAndAnswer(ID_EDIT_INITIALIZEALL, IDYES);
    ASSERT_TRUE(Eventually([&] { return IsWindowEnabled(list_) && IsWindowEnabled(editor_); }));
    EXPECT_EQ(Starts(TakeCalls()), test.runs);
    EXPECT_EQ(Column(1), test.maps);
    EXPECT_EQ(Column(2) + Frames(), std::wstring(L"|||||") + test.frames);
    Leave();
  }
}

TEST_F(Creating, AsksBeforeTheMapOfASyllableIsLost) {
  Install(L"resampler.exe", 3);
  Script(L"0 0 map");
  AddMap(L"a", 220.0);
  AddMap(L"b", 330.0);
  AddWaves({L"c"});
  Start(Bank());
  Select(1);
  SetFirstFrame(L"100");
  EXPECT_EQ(PressAndAnswer(ID_EDIT_INITIALIZE, IDNO), LoadResString(IDS_ASKINITIALIZE));
  EXPECT_EQ(Column(2) + Frames(), L"|*||100.00000000|");
  PressAndAnswer(ID_EDIT_INITIALIZE, IDYES);
  EXPECT_TRUE(Eventually([&] { return Frames() == L"440.00000000|----|"; }));
  EXPECT_EQ(Column(2), L"|||");
  Select(2);
  Press(ID_EDIT_INITIALIZE);
  EXPECT_EQ(Column(1) + Frames(), L"*|*|*|440.00000000|----|") << "there was none, so nothing is asked";
  EXPECT_EQ(Starts(TakeCalls()), 2);
  EXPECT_EQ(List().Map(0)->Average, 261.5) << "the other syllables are left alone";
}

TEST_F(Creating, ShowsItsProgressAndLetsWhatRunsComeToItsEndOnAbort) {
  Install(L"resampler.exe", 2);
  Script(L"700 0 map");
  AddWaves({L"a", L"b", L"c", L"d", L"e"});
  Start(Bank());
  const auto pressed = std::async(std::launch::async, [this] { Press(ID_EDIT_CREATEMISSING); });
  const HWND progress = WaitForProgress();
  const HWND bar = GetDlgItem(progress, IDC_CREATEFRQ_PROGRESS);
  const auto text = [&] { return WindowText(GetDlgItem(progress, IDC_CREATEFRQ_FILE)); };
  EXPECT_TRUE(Eventually([&] { return text() >= L"(3/5) "; })) << text().c_str();
  EXPECT_EQ(SendMessageW(bar, PBM_GETRANGE, FALSE, 0), 5);
  EXPECT_FALSE(IsWindowEnabled(editor_) || IsWindowEnabled(list_));
  SendMessageW(editor_, WM_COMMAND, IDCANCEL, 0);
  EXPECT_TRUE(IsWindow(editor_)) << "it cannot be closed under a job";
  SendMessageW(progress, WM_COMMAND, IDOK, 0);
  EXPECT_TRUE(IsWindow(progress)) << "Enter ended it under its workers";
  SendMessageW(progress, WM_COMMAND, IDCANCEL, 0);
  EXPECT_FALSE(IsWindowEnabled(GetDlgItem(progress, IDCANCEL)));
  const LRESULT position = SendMessageW(bar, PBM_GETPOS, 0, 0);
  EXPECT_TRUE(position == 2 || position == 3) << position;
  pressed.wait();
  const std::vector<std::wstring> calls = TakeCalls();
  EXPECT_EQ(Starts(calls), position + 1);
  EXPECT_EQ(std::ranges::count(calls, L"-"), Starts(calls)) << "a run was killed";
  EXPECT_EQ(List().CountMaps(), Starts(calls));
}

// Users who ask for no runs at a time get none, and a dialog that cannot be left.
TEST_F(Creating, WithoutWorkersStaysForEver) {
  Install(L"resampler.exe", 0);
  AddWaves({L"a"});
  Start(Bank());
  const auto pressed = std::async(std::launch::async, [this] { Press(ID_EDIT_CREATEMISSING); });
  const HWND progress = WaitForProgress();
  for (int i = 0; i < 3; ++i) SendMessageW(progress, WM_COMMAND, IDCANCEL, 0);
  EXPECT_TRUE(IsWindowVisible(progress));
  EXPECT_FALSE(IsWindowEnabled(GetDlgItem(progress, IDCANCEL)));
  PostMessageW(progress, WM_CREATEFRQ_WORKER_DONE, 0, 0);  // nobody sends it; it ends the test
}

TEST_F(Creating, RenewsOnlyTheAnalysisOfEntriesThatTheUserKeeps) {
  Install(L"moresampler.exe", 2);
  Script(L"0 0 nothing");
  AddWaves({L"ni", L"ta", L"zz"});
  const auto setUp = [&] {
    FrqMap map;
    map.Create(2, FrqTypeMrq);
    map.SetFrequency(0, 220.0);
    DeleteFileW((Bank() + L"\\desc.mrq").c_str());
    MrqStore store;
    store.AddFolder(Bank());
    for (const wchar_t* const name : {L"ni", L"ta"}) {
      SaveMap(map, Wave(name), FrqTypeMrq, &store);
      folder_.Write(L"bank\\" + std::wstring(name) + L".wav.llsm");
    }
  };
  const struct {
    UINT command;
    int choice;
    const wchar_t *entries, *analyses;
  } tests[] = {
      {ID_EDIT_INITIALIZEALL, 0, L"*|*||", L"*|*||"},  // the user goes back
      {ID_EDIT_INITIALIZEALL, IDC_INITMRQ_ONLYLLSM, L"*|*||", L"|||"},
      {ID_EDIT_INITIALIZE, IDC_INITMRQ_ONLYLLSM, L"*|*||", L"|*||"},
      {ID_EDIT_INITIALIZEALL, IDC_INITMRQ_BOTH, L"|||", L"|||"},
      {ID_EDIT_INITIALIZE, IDC_INITMRQ_BOTH, L"|*||", L"|*||"},
  };
  int remembered = IDC_INITMRQ_BOTH;
  for (const auto& test : tests) {
    SCOPED_TRACE(testing::Message() << test.command << " " << test.choice);
    setUp();
    Start(Bank());
    const auto pressed = std::async(std::launch::async, [&] { Press(test.command); });
    HWND box = nullptr;
    ASSERT_TRUE(Eventually([&] { return (box = FindBox()) != nullptr; }));
    PostMessageW(box, WM_COMMAND, IDYES, 0);
    ASSERT_TRUE(Eventually([&] { return (box = FindBox()) && GetDlgItem(box, IDC_INITMRQ_BOTH); }));
    EXPECT_TRUE(IsDlgButtonChecked(box, remembered)) << "the choice of the last time";
    if (test.choice) {
      SendDlgItemMessageW(box, test.choice, BM_CLICK, 0, 0);
      remembered = test.choice;
    }
    SendMessageW(box, WM_COMMAND, test.choice ? IDOK : IDCANCEL, 0);
    pressed.wait();
    EXPECT_EQ(Column(1), test.entries);
    EXPECT_EQ(Column(2), test.analyses);
    if (test.choice == 0) {
      Select(2);
      Press(ID_EDIT_INITIALIZE);
      Press(ID_EDIT_CREATEMISSING);
      EXPECT_EQ(Starts(TakeCalls()), 2) << "where there is no entry nothing is asked";
    }
    TakeCalls();
    Leave();
  }
}

}  // namespace

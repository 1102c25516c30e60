// The commands of the menu: when each may be used, what it asks, and what it does to the files.
#include "frqctrl/frqctrlmessages.h"
#include "gui/program.h"

namespace {

class Commands : public ProgramTest {
 protected:
  void ThreeSyllables() const {
    for (const wchar_t* name : {L"a", L"b", L"c"}) AddSyllable(name, {220.0, 330.0});
  }
  void Edit(int row) const {
    Select(row);
    SelectFrames({0});
    Press(IDC_EDITOR_DOUBLE);
  }
  // The commands that may be used now, by a letter for each.
  std::string Usable() const {
    SendMessageW(editor_, WM_MENUSELECT, 0, 0);
    std::string usable;
    const std::pair<char, UINT> commands[] = {
        {'s', ID_FILE_SAVE},      {'S', ID_FILE_SAVEALL},       {'f', ID_EDIT_RELOADSELECTED}, {'r', ID_EDIT_RELOAD},
        {'R', ID_EDIT_RELOADALL}, {'D', ID_EDIT_REMOVEALL},     {'p', ID_VIEW_PREVIOUS},       {'n', ID_VIEW_NEXT},
        {'a', ID_EDIT_SELECTALL}, {'v', ID_VIEW_SPECTRUM},      {'i', ID_VIEW_ZOOMIN},         {'o', ID_VIEW_ZOOMOUT},
        {'b', ID_VIEW_BRIGHTEN},  {'d', ID_VIEW_DARKEN},        {'h', ID_HELP_MANUAL},         {'?', ID_HELP_ABOUT},
        {'O', ID_FILE_OPEN},      {'c', ID_EDIT_CREATEMISSING},
    };
    for (const auto& [letter, command] : commands) {
      if (!IsGrey(command)) usable += letter;
    }
    return usable;
  }
  std::wstring Shown() const { return Frames() + Column(1) + Column(2); }
};

TEST_F(Commands, MayBeUsedWhereTheyCanDoSomething) {
  Start(L"");
  EXPECT_EQ(Usable(), "avibdh?O") << "no syllable";
  Leave();
  ThreeSyllables();
  Start(folder_.Path());
  SelectFrames({0});
  EXPECT_EQ(Usable(), "Dnavibdh?O");
  Edit(1);
  EXPECT_EQ(Usable(), "sSfrRDpnavibdh?O");
  Select(2);
  SelectFrames({0});
  EXPECT_EQ(Usable(), "SRDpavibdh?O") << "another one is edited";
  EXPECT_EQ(MenuText(ID_TOOL_MODIFYALL) + MenuText(ID_FILE_EDITALL), L"") << "these are not in the menu";
}

TEST_F(Commands, ChangeTheViewAndTellItInTheMenu) {
  Start(L"");
  const FrqCtrlSender table(Item(IDC_EDITOR_TABLE));
  Press(ID_VIEW_SPECTRUM);
  EXPECT_TRUE(IsChecked(ID_VIEW_SPECTRUM) && table.ViewMode() == 1);
  for (UINT chosen = ID_VIEW_COLOR_LAST; chosen >= ID_VIEW_COLOR_FIRST; --chosen) {
    Press(chosen);
    EXPECT_EQ(table.ColorTable(), int(chosen - ID_VIEW_COLOR_FIRST));
    for (UINT id = ID_VIEW_COLOR_FIRST; id <= ID_VIEW_COLOR_LAST; ++id) EXPECT_EQ(IsChecked(id), id == chosen);
  }
  for (const auto& [command, end] : {std::pair{ID_VIEW_BRIGHTEN, -3}, {ID_VIEW_DARKEN, 3}}) {
    for (int step = 0; step < 9 && !IsGrey(command); ++step) Press(command);
    EXPECT_EQ(table.Brightness(), end);
    EXPECT_NE(IsGrey(ID_VIEW_BRIGHTEN), IsGrey(ID_VIEW_DARKEN));
  }
}

TEST_F(Commands, OneSyllableIsReloadedWithoutAQuestionAndAllAfterOne) {
  ThreeSyllables();
  Start(folder_.Path());
  for (const int row : {0, 1, 2}) Edit(row);
  DeleteFileW(folder_.Path(L"b_wav.frq").c_str());
  Press(ID_EDIT_RELOAD);
  EXPECT_EQ(Shown(), L"220.00000000|330.00000000|*|*|*|*|*||");
  EXPECT_TRUE(SelectedFrames().empty());
  EXPECT_EQ(PressAndAnswer(ID_EDIT_RELOADALL, IDNO), LoadResString(IDS_DISCARD));
  EXPECT_EQ(Column(2), L"*|*||");
  EXPECT_EQ(PressAndAnswer(ID_EDIT_RELOADALL, IDYES), LoadResString(IDS_DISCARD));
  EXPECT_EQ(Column(1) + Column(2), L"*|*|*||*||") << "the map that has gone stays edited";
  Select(1);
  EXPECT_EQ(Frames(), L"");
  Press(ID_EDIT_RELOAD);
  EXPECT_EQ(Shown(), L"*|*|*||||");
}

TEST_F(Commands, RemovedMapsAreGoneWithTheirEditsAfterTheOneQuestion) {
  ThreeSyllables();
  Start(folder_.Path());
  for (const int row : {0, 1}) Edit(row);
  const std::wstring kept = folder_.Path(L"a_wav.frq");
  SetFileAttributesW(kept.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(PressAndAnswer(ID_EDIT_REMOVEALL, IDNO), LoadResString(IDS_ASKREMOVEALL));
  EXPECT_EQ(Shown(), L"440.00000000|330.00000000|*|*|*|*|*||");
  EXPECT_EQ(PressAndAnswer(ID_EDIT_REMOVEALL, IDYES), LoadResString(IDS_ASKREMOVEALL));
  EXPECT_EQ(Shown() + WindowText(Item(IDC_EDITOR_KEY)), L"*|||*|||");
  EXPECT_FALSE(FileExists(folder_.Path(L"b_wav.frq")) || FileExists(folder_.Path(L"c_wav.frq")));
  Select(0);
  EXPECT_EQ(Frames(), L"440.00000000|330.00000000|");
  SetFileAttributesW(kept.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Commands, AnswerToTheKeyboard) {
  AddSyllable(L"a", {220.0, 330.0});
  AddSyllable(L"b", {440.0});
  Start(folder_.Path());
  const auto press = [this](std::initializer_list<WORD> keys) {
    SetForegroundWindow(editor_);
    for (const WORD key : keys) PressKey(key, 0);
    for (const WORD key : keys) PressKey(key, KEYEVENTF_KEYUP);
  };
  // Again and again, as the list may come to the front only now.
  EXPECT_TRUE(Eventually([&] {
    press({VK_CONTROL, 'A'});
    return SelectedFrames().size() == 2;
  }));
  Press(IDC_EDITOR_HALVE);
  press({VK_CONTROL, VK_DOWN});
  EXPECT_TRUE(Eventually([&] { return Frames() == L"440.00000000|"; }));
  press({VK_CONTROL, 'S'});
  press({VK_CONTROL, VK_UP});
  EXPECT_TRUE(Eventually([&] { return Frames() == L"110.00000000|165.00000000|"; }));
  EXPECT_EQ(Column(2), L"*||") << "Save was grey for the other one";
  press({VK_CONTROL, 'S'});
  EXPECT_TRUE(Eventually([&] { return Column(2) == L"||"; }));
  press({VK_CONTROL, 'Q'});
  EXPECT_EQ(ExitCode(), 0);
}

TEST_F(Commands, HelpTellsTheVersionAndMissesAManualThatIsNotThere) {
  Start(L"");
  EXPECT_EQ(PressAndAnswer(ID_HELP_ABOUT, IDOK, IDC_ABOUT_NAME), L"Marlit Ver.1.26.2016.417");
  wchar_t program[MAX_PATH];
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  const std::wstring manual = std::filesystem::path(program).replace_filename("manual.html").wstring();
  EXPECT_EQ(Answer([this] { Press(ID_HELP_MANUAL); }, {IDOK, IDOK}),
            LoadResString(IDS_ASKMANUAL) + LoadResString(IDS_FILENOTFOUND) + L"\r\n\r\n" + manual);
}

TEST_F(Commands, ARestrictedFolderBringsAWarningBeforeItsFirstSyllable) {
  wchar_t windows[MAX_PATH];
  GetWindowsDirectoryW(windows, MAX_PATH);
  const auto bank = std::filesystem::path(windows) / (L"MarlitTest" + std::to_wstring(GetCurrentProcessId()));
  std::filesystem::create_directories(bank);
  WriteWholeFile((bank / L"a.wav").wstring(), kSecondOfSound);
  Start(L"");
  const auto open = std::async(std::launch::async, [&] { List().OpenFolder(bank.c_str()); });
  EXPECT_TRUE(Eventually([this] { return FindBox() != nullptr; }));
  EXPECT_EQ(WindowText(GetDlgItem(FindBox(), IDC_VIRTUALSTORE_FOLDER)), bank.wstring());
  EXPECT_EQ(WindowText(Item(IDC_EDITOR_TABLE)), L"");
  PostMessageW(FindBox(), WM_COMMAND, IDOK, 0);
  open.wait();
  EXPECT_EQ(Column(0) + WindowText(Item(IDC_EDITOR_TABLE)), L"a.wav|a.wav");
  std::filesystem::remove_all(bank);
}

}  // namespace

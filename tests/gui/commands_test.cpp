// The commands of the menu: when each may be used, what it asks, and what it does to the files.
#include "gui/program.h"

namespace {

struct Commands : ProgramTest {
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
        {'s', ID_FILE_SAVE},      {'S', ID_FILE_SAVEALL},   {'f', ID_EDIT_RELOADSELECTED}, {'r', ID_EDIT_RELOAD},
        {'R', ID_EDIT_RELOADALL}, {'D', ID_EDIT_REMOVEALL}, {'p', ID_VIEW_PREVIOUS},       {'n', ID_VIEW_NEXT},
        {'a', ID_EDIT_SELECTALL}, {'O', ID_FILE_OPEN},      {'c', ID_EDIT_CREATEMISSING}};
    for (const auto& [letter, command] : commands) {
      if (!IsGrey(command)) usable += letter;
    }
    return usable;
  }
  std::wstring Shown() const { return Frames() + Column(1) + Column(2); }
};

TEST_F(Commands, MayBeUsedWhereTheyCanDoSomething) {
  Start(L"");
  EXPECT_EQ(Usable(), "aO") << "no syllable";
  Leave();
  ThreeSyllables();
  Start(folder_.Path());
  Edit(1);
  EXPECT_EQ(Usable(), "sSfrRDpnaO");
  Select(2);
  SelectFrames({0});
  EXPECT_EQ(Usable(), "SRDpaO") << "another one is edited";
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

}  // namespace

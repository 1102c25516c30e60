// How the program comes up on each sort of argument, which folders it remembers, and how it ends.
#include "gui/program.h"

namespace {

using Starting = ProgramTest;

std::list<std::wstring> RecentFolders() {
  std::list<std::wstring> folders;
  LoadHistory(kFolderHistoryKey, folders);
  return folders;
}

TEST_F(Starting, AFolderShowsItsVoicebankAndIsRemembered) {
  for (const wchar_t* name : {L"z.WAV", L"B.wave", L"a.AIF", L"no.mp3", L"b\\c\\no.wav"}) folder_.Write(name);
  AddSyllable(L"b\\ka", {220.0});
  folder_.Write(L"character.txt", {'n', 'a', 'm', 'e', '=', 0x82, 0xA9});
  Start(folder_.Path());
  EXPECT_EQ(Column(0), L"B.wave|a.AIF|z.WAV|b\\ka.wav|");
  EXPECT_EQ(Column(1), L"|||*|");
  EXPECT_EQ(WindowText(editor_), L"か - Marlit");
  Press(ID_FILE_EXIT);
  EXPECT_EQ(ExitCode(), 0);
  EXPECT_EQ(RecentFolders(), std::list{folder_.Path()});
}

TEST_F(Starting, AWaveIsShownAloneAndItsFolderIsNotRemembered) {
  AddSyllable(L"a", {220.0});
  AddSyllable(L"b", {330.0});
  Start(folder_.Path(L"b.wav"));
  EXPECT_EQ(Column(0) + Frames(), L"b.wav|330.00000000|");
  EXPECT_EQ(WindowText(editor_), L"Marlit");
  PostMessageW(Item(IDC_EDITOR_FRAMES), WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_EQ(ExitCode(), 0);
  EXPECT_TRUE(RecentFolders().empty());
}

TEST_F(Starting, AMissingPathEndsTheProgramWithoutAWord) {
  Start(folder_.Path(L"missing"));
  EXPECT_EQ(ExitCode(), 0);
  WINDOWPLACEMENT left;
  EXPECT_TRUE(RegReadValue(L"EditorDlg", left) && RegReadValue(L"FileListDlg", left)) << "both windows had come";
}

TEST_F(Starting, WindowsThatWereClosedMinimisedComeBackInTheirPlace) {
  const WINDOWPLACEMENT stored{sizeof(stored), 0, SW_SHOWMINIMIZED, {}, {}, {30, 20, 760, 520}};
  EXPECT_TRUE(RegWriteValue(L"EditorDlg", stored) && RegWriteValue(L"FileListDlg", stored));
  Start(L"");
  for (const HWND window : {editor_, list_}) EXPECT_EQ(Place(window), stored.rcNormalPosition);
  EXPECT_EQ(Column(0) + Frames(), L"");
}

TEST_F(Starting, ARecentFolderThatHasGoneIsDroppedAndTheOthersMoveUp) {
  AddSyllable(L"bank\\a", {220.0});
  const std::wstring gone = folder_.Path(L"gone & lost"), bank = folder_.Path(L"bank");
  SaveHistory(kFolderHistoryKey, {gone, L"2", bank, L"4", L"5", L"6", L"7", L"8", L"9", L"10", L"11", L"12"});
  Start(L"");
  EXPECT_EQ(MenuText(ID_RECENT_FIRST), L"1 " + folder_.Path(L"gone && lost") + L"(&1)");
  EXPECT_EQ(MenuText(ID_RECENT_LAST) + MenuText(ID_RECENT_LAST + 1), L"10 10(&0)");
  EXPECT_EQ(PressAndAnswer(ID_RECENT_FIRST, IDOK), LoadResString(IDS_FOLDERNOTFOUND) + L"\r\n\r\n" + gone);
  EXPECT_EQ(MenuText(ID_RECENT_LAST), L"10 11(&0)");
  Press(ID_RECENT_FIRST + 1);
  EXPECT_EQ(Frames(), L"220.00000000|");
  Press(ID_FILE_EXIT);
  EXPECT_EQ(ExitCode(), 0);
  const std::list<std::wstring> left = {bank, L"2", L"4", L"5", L"6", L"7", L"8", L"9", L"10", L"11", L"12"};
  EXPECT_EQ(RecentFolders(), left);
}

}  // namespace

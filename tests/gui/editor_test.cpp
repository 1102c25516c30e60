// The editor: what it shows of a syllable, what it takes from the user, and what becomes of edits.
#include "gui/program.h"

namespace {

using Editor = ProgramTest;

TEST_F(Editor, EachSyllableIsShownWithItsFramesKeyAndWave) {
  AddSyllable(L"a", {55.0, 220.0});
  AddSyllable(L"b", {440.0});
  folder_.Write(L"c.wav");
  folder_.Write(L"c_wav.frq", Bytes(50));
  Start(folder_.Path());
  EXPECT_EQ(WindowText(Item(IDC_EDITOR_KEY)), L"261.50000000");
  const std::tuple<bool, int, std::wstring> steps[] = {
      {true, 0, L"----|220.00000000|"}, {false, 1, L"440.00000000|"}, {false, 2, L""}, {false, 2, L""}};
  for (const auto& [previous, row, frames] : steps) {
    SendMessageW(list_, FLM_SELECTNEIGHBOUR, previous, 0);
    EXPECT_EQ(List().Selection(), row);
    EXPECT_EQ(Frames(), frames);
  }
  List().OpenFolder(folder_.Path(L"none").c_str());
  EXPECT_EQ(WindowText(Item(IDC_EDITOR_TABLE)) + WindowText(Item(IDC_EDITOR_WAVEINFO)), L"");
}

TEST_F(Editor, ASavedFrameReachesItsFileAndNothingElseChanges) {
  AddSyllable(L"a", {220.0, 330.0});
  folder_.Write(L"a.wav.llsm");
  Bytes expected = *ReadWholeFile(folder_.Path(L"a_wav.frq"));
  Start(folder_.Path());
  Press(ID_FILE_SAVE);
  EXPECT_TRUE(FileExists(folder_.Path(L"a.wav.llsm"))) << "there was nothing to save";
  SetFirstFrame(L"246.25");
  EXPECT_EQ(Frames() + Column(2), L"246.25000000|330.00000000|*|");
  EXPECT_FALSE(IsGrey(ID_FILE_SAVE) || IsGrey(ID_FILE_SAVEALL));
  Press(ID_FILE_SAVE);
  const double frequency = 246.25;
  std::memcpy(&expected[40], &frequency, sizeof(frequency));  // the first frame, behind the header
  EXPECT_EQ(ReadWholeFile(folder_.Path(L"a_wav.frq")), expected);
  EXPECT_EQ(Column(2), L"|");
  EXPECT_TRUE(IsGrey(ID_FILE_SAVE) && IsGrey(ID_FILE_SAVEALL));
  EXPECT_FALSE(FileExists(folder_.Path(L"a.wav.llsm")));
}

TEST_F(Editor, EditsThatCannotBeSavedStayUntilTheUserLetsThemGo) {
  for (const wchar_t* name : {L"a", L"b", L"c", L"d", L"e"}) AddSyllable(name, {220.0});
  Start(folder_.Path());
  for (const int row : {0, 1, 3, 4, 2}) {
    Select(row);
    SetFirstFrame(L"440");
  }
  const std::wstring refused = folder_.Path(L"c_wav.frq");
  const auto before = ReadWholeFile(refused);
  SetFileAttributesW(refused.c_str(), FILE_ATTRIBUTE_READONLY);
  for (const UINT command : {ID_FILE_SAVEALL, ID_FILE_SAVE}) {
    EXPECT_EQ(PressAndAnswer(command, IDOK), LoadResString(IDS_SAVEFAILED) + SystemErrorText(ERROR_ACCESS_DENIED));
    EXPECT_EQ(Column(2), L"||*|*|*|");
  }
  EXPECT_EQ(List().SavedMap(2)->Frames[0].Frequency, 440.0) << "the second curve follows the attempt";
  EXPECT_EQ(PressAndAnswer(IDCANCEL, IDNO), LoadResString(IDS_DISCARD));
  EXPECT_EQ(Column(2) + Frames(), L"||*|*|*|440.00000000|");
  LRESULT mayEnd = TRUE;
  const auto query = [&] { mayEnd = SendMessageW(editor_, WM_QUERYENDSESSION, 0, 0); };
  EXPECT_EQ(Answer(query, {IDNO}), LoadResString(IDS_DISCARD));
  EXPECT_EQ(mayEnd, FALSE);
  SendMessageW(editor_, WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(PressAndAnswer(IDCANCEL, IDYES), LoadResString(IDS_DISCARD));
  EXPECT_EQ(ExitCode(), 0);
  EXPECT_EQ(ReadWholeFile(refused), before);
  EXPECT_NE(ReadWholeFile(folder_.Path(L"b_wav.frq")), before);
  SetFileAttributesW(refused.c_str(), FILE_ATTRIBUTE_NORMAL);
}

}  // namespace

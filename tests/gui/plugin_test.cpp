// The program as the host's plug-in: what it lists, which resampler it takes and what it leaves for the host.
#include "gui/program.h"

namespace {

struct PluginMode : ProgramTest {
  PluginMode() {
    for (const wchar_t* name : {L"bank\\a", L"bank\\b", L"bank\\c"}) AddSyllable(name, {220.0});
    folder_.WriteText(L"bank\\oto.ini", L"a.wav=x,0,0,0,0,0\nb.wav=,0,0,0,0,0\nc.wav=,0,0,0,0,0\n");
    folder_.WriteText(L"song.ust", L"[#SETTING]\nTool2=a\\b.exe\n[#0000]\nLyric=c\n");
    folder_.WriteText(L"plugin.tmp", L"[#VERSION]\n[#SETTING]\nProject=" + folder_.Path(L"song.ust") + L"\nVoiceDir=" +
                                         folder_.Path(L"bank") +
                                         L"\n[#PREV]\nLyric=c\n[#0001]\nLyric=c\n@alias=x\n[#0002]\n" +
                                         L"Lyric=b\n[#0003]\nLyric=a\n[#0004]\nLyric=unknown\n[#NEXT]\nLyric=c\n");
    SaveHistory(kFolderHistoryKey, recent_);
  }
  // Leaves the program; what the host finds in the plug-in file then.
  std::string Leave() const {
    Press(ID_FILE_EXIT);
    EXPECT_EQ(ExitCode(), 0);
    std::list<std::wstring> recent;
    LoadHistory(kFolderHistoryKey, recent);
    EXPECT_EQ(recent, recent_);
    const std::optional<Bytes> answer = ReadWholeFile(folder_.Path(L"plugin.tmp"));
    return answer ? std::string(answer->begin(), answer->end()) : "no file";
  }

  const std::list<std::wstring> recent_ = {L"before"};
};

TEST_F(PluginMode, ListsTheNotesSyllablesAndTakesTheProjectsResampler) {
  wchar_t chosen[MAX_PATH] = L"C:\\w4u.exe";  // its maps are of another kind
  EXPECT_TRUE(RegWriteValue(L"Resampler", chosen));
  Start(folder_.Path(L"plugin.tmp"));
  EXPECT_EQ(Column(0) + Column(1) + Frames(), L"a.wav|b.wav|*|*|220.00000000|");
  EXPECT_EQ(WindowText(editor_), L"bank - Marlit");
  EXPECT_EQ(MenuText(ID_FILE_OPEN), L"");
  EXPECT_EQ(Leave(), "");
  wchar_t kept[MAX_PATH];
  EXPECT_TRUE(RegReadValue(L"Resampler", kept));
  EXPECT_EQ(std::wstring(kept), chosen);
}

TEST_F(PluginMode, TheWholeVoicebankComesOnDemandAndTheHostHearsOfASave) {
  Start(folder_.Path(L"plugin.tmp"));
  SetFirstFrame(L"330");
  Press(ID_FILE_SAVE);
  EXPECT_FALSE(IsGrey(ID_FILE_EDITALL));
  Press(ID_FILE_EDITALL);
  EXPECT_EQ(Column(0) + Frames(), L"a.wav|b.wav|c.wav|330.00000000|");
  EXPECT_TRUE(IsGrey(ID_FILE_EDITALL));
  EXPECT_EQ(SendMessageW(editor_, WM_QUERYENDSESSION, 0, 0), TRUE);
  SendMessageW(editor_, WM_ENDSESSION, TRUE, 0);  // the program has ended by then, Leave finds no window
  EXPECT_EQ(Leave(), "dummy\n");
}

}  // namespace

// Play: what the resampler is given, what is left of it, and that the button stops what it began.
#include "resampler/preview.h"

#include "gui/resamplerdouble.h"

namespace {

constexpr wchar_t kReadOnly[] = L"強 い&%^";

struct Preview : DoubleTest {
  void SetUp() override {
    // Left by a test that was ended early and had the number of this process.
    while (!Scratch().empty()) std::filesystem::remove_all(Scratch());
    folder_.Write(L"program\\note", SecondOfSilence());
    Script(L"0 0 note");
  }
  void TearDown() override { SetFileAttributesW(Wave(kReadOnly).c_str(), FILE_ATTRIBUTE_NORMAL); }

  bool IsStopped() const { return WindowText(Item(IDC_EDITOR_PLAY)) == LoadResString(IDS_PLAY); }
  // Presses, and waits for the end; the log of it all.
  std::wstring Play() const {
    Press(IDC_EDITOR_PLAY);
    EXPECT_TRUE(Eventually([this] { return IsStopped(); }));
    return PreviewLogText;
  }
  // On a machine without a device the sound ends the preview, after all else went well.
  static bool HasRendered(const std::wstring& log) {
    return log.starts_with(L"succeed to play ") || log.starts_with(L"fail to play ");
  }
  static std::wstring Scratch() {
    const std::vector<std::wstring> folders = Scratches();
    return folders.empty() ? L"" : folders.front();
  }
};

TEST_F(Preview, GivesTheResamplerTheEditedMapAndWhatTheBoxesSay) {
  Install(L"resampler.exe");
  AddSyllable(std::wstring(L"bank\\") + kReadOnly, {220.0});
  const auto saved = ReadWholeFile(Bank() + L"\\強 い&%^_wav.frq");
  SetFileAttributesW(Wave(kReadOnly).c_str(), FILE_ATTRIBUTE_READONLY);
  Start(Bank());
  SetFirstFrame(L"100");
  const std::wstring scratch = Scratch(), wave = scratch + L"\\強 い&%^.wav";
  // Pitch, key, modulation, flags; the middle and the end of the call.
  const std::tuple<int, const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*> tests[] = {
      {24, L"445", L"", L"g-5\"B 0", L"A5 100 \"g-5 B 0\"", L"100"},
      {0, L"453", L"500", L"g", L"A#3 100 \"g\"", L"200"}};
  for (const auto& [pitch, key, modulation, flags, middle, end] : tests) {
    SendItem(IDC_EDITOR_PITCH, TBM_SETPOS, TRUE, reinterpret_cast<void*>(pitch));
    Type(IDC_EDITOR_KEY, key);
    SendItem(IDC_EDITOR_KEY, WM_KILLFOCUS);
    SetDlgItemTextW(editor_, IDC_EDITOR_MODULATION, modulation);
    SetDlgItemTextW(editor_, IDC_EDITOR_FLAGS, flags);
    EXPECT_TRUE(HasRendered(Play())) << PreviewLogText.c_str();
    const std::wstring call = TakeCalls().at(0);
    EXPECT_EQ(call.substr(call.find(L".exe\"") + 5), L" \"" + wave + L"\" \"" + scratch + L"\\output.wav\" " + middle +
                                                         L" 0 1000 0 0 100 " + end + L" !120 AA#1#");
    FrqMap map;
    ASSERT_EQ(LoadMap(map, wave, FrqTypeFrq, nullptr), 0);
    EXPECT_EQ(map.Frames[0].Frequency, 100.0);
    EXPECT_EQ(NamesIn(Scratch()), (std::set<std::wstring>{L"output.wav", L"強 い&%^.wav", L"強 い&%^_wav.frq"}));
  }
  EXPECT_EQ(ReadWholeFile(Bank() + L"\\強 い&%^_wav.frq"), saved);
  EXPECT_EQ(Column(2), L"*|") << "nothing was saved";
  WriteWholeFile(Scratch() + L"\\left.llsm", {});
  Play();
  EXPECT_TRUE(FileExists(Scratch() + L"\\left.llsm")) << "the input is the same";
  EXPECT_EQ(Starts(TakeCalls()), 1) << "every press renders";
  SetFirstFrame(L"101");
  Play();
  EXPECT_FALSE(FileExists(Scratch() + L"\\left.llsm"));
}

TEST_F(Preview, FailsWithoutAWordAndCanBeTriedAgain) {
  Install(L"resampler.exe");
  AddSyllable(L"bank\\a", {440.0});
  Start(Bank());
  Script(L"0 1 nothing");
  EXPECT_TRUE(Play().starts_with(L"fail to render\n\n\"" + folder_.Path(L"program\\resampler.exe") + L"\" \""));
  Script(L"0 0 rubbish");
  EXPECT_EQ(Play(), L"fail to play " + Scratch() + L"\\output.wav");
  SendItem(IDC_EDITOR_DIRECT, BM_CLICK);
  TakeCalls();
  EXPECT_TRUE(HasRendered(Play()));
  EXPECT_EQ(Starts(TakeCalls()), 0) << "the wave itself was asked for";
  EXPECT_EQ(ReadWholeFile(Scratch() + L"\\output.wav"), kSecondOfSound);
  DeleteFileW(Wave(L"a").c_str());
  EXPECT_EQ(Play(), L"fail to copy " + Wave(L"a") + L" to " + Scratch() + L"\\a.wav");
}

TEST_F(Preview, CopiesAWaveThatATextNamesWithASlash) {
  Install(L"resampler.exe");
  AddSyllable(L"bank\\low\\a", {440.0});
  folder_.WriteText(L"bank\\oto.ini", L"low/a.wav=x,0,0,0,0,0\n");
  folder_.WriteText(L"plugin.tmp", L"[#VERSION]\n[#SETTING]\nVoiceDir=" + Bank() + L"\n[#0001]\nLyric=x\n[#NEXT]\n");
  Start(folder_.Path(L"plugin.tmp"));
  EXPECT_TRUE(HasRendered(Play())) << PreviewLogText.c_str();
}

TEST_F(Preview, StopsAtASecondPressAndWithTheWindowWhileARunComesToItsEnd) {
  Install(L"resampler.exe");
  AddSyllable(L"bank\\a", {440.0});
  Script(L"600 0 note");
  Start(Bank());
  Press(IDC_EDITOR_PLAY);
  EXPECT_EQ(WindowText(Item(IDC_EDITOR_PLAY)), LoadResString(IDS_STOP));
  const ULONGLONG start = GetTickCount64();
  for (int i = 0; i < 3; ++i) Press(IDC_EDITOR_PLAY);
  EXPECT_FALSE(IsStopped());
  SetFirstFrame(L"100");
  EXPECT_TRUE(Eventually([this] { return IsStopped(); }));
  EXPECT_GE(GetTickCount64() - start, 500u) << "the run was not waited for";
  EXPECT_EQ(TakeCalls().back(), L"-");
  const std::wstring scratch = Scratch();
  Press(IDC_EDITOR_PLAY);
  Leave();
  EXPECT_EQ(ExitCode(), 0);
  EXPECT_EQ(TakeCalls().back(), L"-");
  EXPECT_FALSE(std::filesystem::exists(scratch));
}

}  // namespace

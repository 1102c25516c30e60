// The unpacked release as a user starts it: a process of its own in a folder where nothing else of ours lies, driven by
// keyboard and mouse. MARLIT_RELEASE is that folder.
#include <windows.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "driver/mapfiles.h"
#include "driver/user.h"

namespace {

const std::filesystem::path& ReleaseFolder() {
  static const std::filesystem::path folder = _wgetenv(L"MARLIT_RELEASE");
  return folder;
}

struct ReleaseTest : testing::Test, User {
  const std::filesystem::path bank_ = ReleaseFolder() / L"voicebank";
};

// As at the first start of all: nobody has chosen a resampler, and the one that comes along makes the maps.
TEST_F(ReleaseTest, MakesAndChecksTheMapsOfItsVoicebank) {
  limitMs = 60'000;
  SetCurrentDirectoryW(L"C:\\");
  ForgetSettings();
  Start(ReleaseFolder() / L"marlit.exe", bank_);
  EXPECT_FALSE(MapsAreThere(bank_));
  GoTo(1);
  ASSERT_TRUE(Eventually([this] { return FrameCount() > 0; })) << "no map is shown";
  CreateMissingMaps(bank_);
  EXPECT_TRUE(EveryWaveHasAMap(FilesIn(bank_)));

  Menu(L"Right*3 Down Return");
  Dialog(kCheck);
  Press(L"Return");
  Front(Dialog(kModifyBar));
  Press(L"Escape");
  AwaitEndOf(kModifyBar);
  PressInEditor(L"Ctrl+q");
  EXPECT_TRUE(EndsWell());
}

TEST(ReleasedFiles, CheckTheVoicebankOnTheCommandLine) {
  const std::wstring program = (ReleaseFolder() / L"marlit-batch.exe").wstring();
  const std::wstring bank = (ReleaseFolder() / L"voicebank").wstring();
  const auto started = StartProgram(L'"' + program + L"\" check \"" + bank + L'"', L"C:\\");
  EXPECT_EQ(ExitCodeOf(started.first.get()), 1u) << "findings";
}

// A text of the version block in a language of its own, as Explorer shows it.
std::wstring VersionText(const std::vector<char>& block, const std::wstring& language, const wchar_t* name) {
  void* text = nullptr;
  UINT size = 0;
  const std::wstring path = L"\\StringFileInfo\\" + language + L"04b0\\" + name;
  return VerQueryValueW(block.data(), path.c_str(), &text, &size) && size > 0 ? static_cast<wchar_t*>(text) : L"";
}

TEST(ReleasedFiles, TellTheirVersionInBothLanguages) {
  for (const wchar_t* const name : {L"marlit.exe", L"marlit-batch.exe", L"basic-resampler.exe", L"checkfrq.dll"}) {
    const std::wstring path = (ReleaseFolder() / name).wstring();
    DWORD unused = 0;
    std::vector<char> block(GetFileVersionInfoSizeW(path.c_str(), &unused));
    const auto size = static_cast<DWORD>(block.size());
    ASSERT_TRUE(size > 0 && GetFileVersionInfoW(path.c_str(), 0, size, block.data())) << path;
    for (const std::wstring language : {L"0409", L"0411"}) {
      EXPECT_EQ(VersionText(block, language, L"ProductVersion"), L"1.26.2016.417") << path;
      EXPECT_EQ(VersionText(block, language, L"OriginalFilename"), name);
      EXPECT_NE(VersionText(block, language, L"FileDescription"), L"");
      EXPECT_NE(VersionText(block, language, L"LegalCopyright").find(L"The Marlit authors"), std::wstring::npos);
    }
    EXPECT_NE(VersionText(block, L"0409", L"Comments"), VersionText(block, L"0411", L"Comments"));
  }
}

}  // namespace

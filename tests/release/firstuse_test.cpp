// The unpacked release as a user starts it: a process of its own in a folder where nothing else of ours lies, driven by
// its windows from outside. MARLIT_RELEASE is that folder.
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/messages.h"
#include "base/text.h"
#include "resources/ids.h"
#include "driver/programs.h"

namespace {

const std::filesystem::path& ReleaseFolder() {
  static const std::filesystem::path folder = _wgetenv(L"MARLIT_RELEASE");
  return folder;
}

struct ReleaseTest : testing::Test {
  // As at the first start of all: nobody has chosen a resampler, and the one that comes along makes the maps.
  ReleaseTest() {
    limitMs = 60'000;
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\UTAU Plugin");
    started_ = StartProgram(L"\"" + (folder_ / L"marlit.exe").wstring() + L"\" \"" + bank_.wstring() + L"\"", L"C:\\");
  }
  ~ReleaseTest() override { TerminateProcess(started_.first.get(), 1); }

  // A dialog of the program, told by the id and the class of a control in it; waits for it.
  HWND Dialog(int control, const wchar_t* controlClass) const {
    HWND found = nullptr;
    Eventually([&] { return (found = FindDialogOf(started_.second, controlClass, control, editor_)) != nullptr; });
    return found;
  }
  bool EveryWaveHasAMap() const {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(bank_)) {
      std::filesystem::path map = entry.path();
      map.replace_filename(map.stem().wstring() + L"_wav.frq");
      if (entry.path().extension() == L".wav" && !std::filesystem::exists(map)) return false;
    }
    return true;
  }

  const std::filesystem::path folder_ = ReleaseFolder();
  const std::filesystem::path bank_ = folder_ / L"voicebank";

  std::pair<UniqueHandle<KernelTraits>, DWORD> started_;
  HWND editor_ = nullptr;  // found, and no other dialog any more
};

TEST_F(ReleaseTest, MakesAndChecksTheMapsOfItsVoicebank) {
  const HWND editor = editor_ = Dialog(IDC_EDITOR_FRAMES, WC_LISTBOXW);
  const HWND list = Dialog(IDC_LIST_FILES, WC_LISTVIEWW);
  ASSERT_TRUE(editor && list);
  EXPECT_FALSE(EveryWaveHasAMap());

  const HWND waveInformation = GetDlgItem(editor, IDC_EDITOR_WAVEINFO);
  ASSERT_TRUE(Eventually([&] { return SendMessageW(waveInformation, WM_GETTEXTLENGTH, 0, 0) > 0; })) << "no syllable";
  SendMessageW(list, FLM_SELECTSYLLABLE, 1, 0);
  const HWND frames = GetDlgItem(editor, IDC_EDITOR_FRAMES);
  ASSERT_TRUE(Eventually([&] { return SendMessageW(frames, LB_GETCOUNT, 0, 0) > 0; })) << "no map is shown";
  PostMessageW(editor, WM_COMMAND, ID_EDIT_CREATEMISSING, 0);
  EXPECT_TRUE(Eventually([this] { return EveryWaveHasAMap(); }));
  EXPECT_TRUE(Eventually([&] { return IsWindowEnabled(editor); })) << "the job goes on";

  PostMessageW(editor, WM_COMMAND, ID_TOOL_CHECK, 0);
  const HWND check = Dialog(IDC_CHECK_LOWNOTE, WC_COMBOBOXW);
  ASSERT_TRUE(check);
  PostMessageW(check, WM_COMMAND, IDOK, 0);
  const HWND bar = Dialog(IDC_MODIFY_MODIFYALL, WC_BUTTONW);
  ASSERT_TRUE(bar) << "the check found nothing";
  PostMessageW(bar, WM_COMMAND, IDCANCEL, 0);
  EXPECT_TRUE(Eventually([&] { return !IsWindow(bar); }));

  PostMessageW(editor, WM_COMMAND, ID_FILE_EXIT, 0);
  EXPECT_EQ(ExitCodeOf(started_.first.get()), 0u);
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

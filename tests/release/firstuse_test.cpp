// The unpacked release as a user starts it: a process of its own in a folder where nothing else of ours lies, driven by
// its windows from outside. MARLIT_RELEASE is that folder.
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "app/messages.h"
#include "base/registry.h"
#include "base/text.h"
#include "resources/ids.h"
#include "win/polling.h"

namespace {

struct ReleaseTest : testing::Test {
  // Settings of an earlier run would say another resampler or window.
  ReleaseTest() {
    limitMs = 60'000;
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\UTAU Plugin");
    wchar_t resampler[MAX_PATH] = L"";
    (folder_ / L"basic-resampler.exe").wstring().copy(resampler, MAX_PATH - 1);
    RegWriteValue(L"Resampler", resampler);
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

  const std::filesystem::path folder_ = _wgetenv(L"MARLIT_RELEASE");
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

}  // namespace

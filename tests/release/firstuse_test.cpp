// The unpacked release as a user starts it: a process of its own in a folder where nothing else of ours lies, driven by
// its windows from outside. MARLIT_RELEASE is that folder.
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "app/messages.h"
#include "base/handle.h"
#include "base/registry.h"
#include "base/text.h"
#include "resources/ids.h"

namespace {

constexpr int kLimitMs = 60000;

template <typename State>
bool Eventually(State state) {
  for (const ULONGLONG end = GetTickCount64() + kLimitMs; !state(); Sleep(20)) {
    if (GetTickCount64() > end) return false;
  }
  return true;
}

class ReleaseTest : public testing::Test {
 protected:
  // Settings of an earlier run would say another resampler or window.
  ReleaseTest() {
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\UTAU Plugin");
    wchar_t resampler[MAX_PATH] = L"";
    (folder_ / L"basic-resampler.exe").wstring().copy(resampler, MAX_PATH - 1);
    RegWriteValue(L"Resampler", resampler);
  }
  ~ReleaseTest() override { TerminateProcess(process_.get(), 1); }

  void Start() {
    std::wstring command = L"\"" + (folder_ / L"marlit.exe").wstring() + L"\" \"" + bank_.wstring() + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION made{};
    ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, L"C:\\", &start, &made));
    CloseHandle(made.hThread);
    process_.reset(made.hProcess);
    processId_ = made.dwProcessId;
  }

  // A dialog of the program, told by the id and the class of a control in it; waits for it.
  HWND Dialog(int control, const wchar_t* controlClass) const {
    HWND found = nullptr;
    Eventually([&] { return (found = FindDialog(control, controlClass)) != nullptr; });
    return found;
  }
  bool GoesAway(HWND window) const {
    return Eventually([&] { return !IsWindow(window); });
  }
  DWORD ExitCode() const {
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(process_.get(), kLimitMs);
    GetExitCodeProcess(process_.get(), &code);
    return code;
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

 private:
  HWND FindDialog(int control, const wchar_t* controlClass) const {
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, L"#32770", nullptr));) {
      DWORD process = 0;
      GetWindowThreadProcessId(window, &process);
      wchar_t name[64] = L"";
      GetClassNameW(GetDlgItem(window, control), name, 64);
      if (process == processId_ && IsWindowVisible(window) && lstrcmpiW(name, controlClass) == 0) return window;
    }
    return nullptr;
  }

  UniqueHandle<KernelTraits> process_;
  DWORD processId_ = 0;
};

TEST_F(ReleaseTest, MakesAndChecksTheMapsOfItsVoicebank) {
  ASSERT_NO_FATAL_FAILURE(Start());
  const HWND editor = Dialog(IDC_EDITOR_FRAMES, WC_LISTBOXW);
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
  EXPECT_TRUE(GoesAway(bar));

  PostMessageW(editor, WM_COMMAND, ID_FILE_EXIT, 0);
  EXPECT_EQ(ExitCode(), 0u);
}

}  // namespace

#include "app/application.h"

#include <windows.h>
#include <commctrl.h>
#include <objbase.h>
#include <process.h>
#include <shlwapi.h>

#include <clocale>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "app/voicebank.h"
#include "base/handle.h"
#include "base/registry.h"
#include "base/systempath.h"
#include "frqctrl/frqctrl.h"
#include "resources/ids.h"
#include "window/flatbutton.h"

namespace {

unsigned WINAPI ListThread(void* argument) {
  CoInitialize(nullptr);
  static_cast<CFileListDlg*>(argument)->Run(false);
  CoUninitialize();
  return 0;
}

HACCEL Accelerators(int id) {
  return LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id));
}

// The path is full, since the process may change its current folder and a host is answered at the end. It loses the
// separator that completion of a typed name leaves behind a folder, a root excepted. Both windows go by it.
std::wstring ArgumentPath(const std::wstring& path) {
  std::wstring full = FullPathOf(path);
  if (full.ends_with(L'\\') && !PathIsRootW(full.c_str())) full.pop_back();
  return full;
}

}  // namespace

int RunApplication(const std::wstring& given) {
  CoInitialize(nullptr);
  // Drives without a disk and damaged libraries come back to us as errors and bring up no box of the system's.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  // Narrow paths and texts are Japanese, whatever the user's own locale is.
  setlocale(LC_ALL, "Japanese");
  ForgetSettingsFailure();
  InitCommonControls();
  RegisterControl<CFrqCtrl>();
  RegisterControl<CFlatButton>();
  {
    const std::wstring argument = given.empty() ? given : ArgumentPath(given);
    Voicebank voicebank;
    voicebank.Run.Start();
    CFileListDlg list(argument, voicebank);
    CEditorDlg editor(argument, voicebank);
    list.Editor = &editor;
    editor.FileList = &list;
    editor.LoadSettings();
    ThreadHandle thread(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, ListThread, &list, 0, nullptr)));
    editor.Accelerators = {Accelerators(IDR_ACCELERATORS), Accelerators(IDR_SHAREDKEYS), Accelerators(IDR_ADDEDKEYS)};
    editor.Run(true);
    // Without an editor the list would wait for it for ever.
    if (!editor.Hwnd) ExitProcess(1);
    WaitForSingleObject(thread.get(), INFINITE);
    thread.reset();
    list.Windows.EndThreads();
    voicebank.Run.End();
    CoUninitialize();
  }
  return 0;
}

#include "app/application.h"

#include <windows.h>
#include <commctrl.h>
#include <objbase.h>
#include <process.h>

#include <clocale>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "base/handle.h"
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

}  // namespace

int RunApplication(const std::wstring& argument) {
  CoInitialize(nullptr);
  // Whatever the user's own locale: narrow paths and texts are Japanese.
  setlocale(LC_ALL, "Japanese");
  InitCommonControls();
  RegisterControl<CFrqCtrl>();
  RegisterControl<CFlatButton>();
  const HACCEL accelerators = LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_ACCELERATORS));
  {
    CFileListDlg list(argument);
    CEditorDlg editor(argument);
    list.Editor = &editor;
    editor.FileList = &list;
    editor.LoadSettings();
    ThreadHandle thread(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, ListThread, &list, 0, nullptr)));
    editor.Accelerators = accelerators;
    editor.Run(accelerators != nullptr);
    // Without an editor the list would wait for it for ever.
    if (!editor.Hwnd) ExitProcess(1);
    WaitForSingleObject(thread.get(), INFINITE);
    thread.reset();
    CoUninitialize();
  }
  return 0;
}

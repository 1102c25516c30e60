// The manual and the about box.
#include <windows.h>
#include <shellapi.h>

#include "app/editordlg.h"
#include "base/files.h"
#include "base/path.h"
#include "base/text.h"
#include "dialogs/aboutdlg.h"
#include "resources/ids.h"
#include "window/messagebox.h"

namespace {

// Beside the program, in the user's language.
std::wstring ManualPath() {
  wchar_t program[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  return PathIn(FolderOf(program), LoadResString(IDS_MANUALFILE));
}

}  // namespace

void CEditorDlg::OnManual(UINT) {
  if (ShowMessage(Hwnd, LoadResString(IDS_ASKMANUAL), MB_OKCANCEL | MB_ICONINFORMATION) != IDOK) return;
  const std::wstring manual = ManualPath();
  if (FileExists(manual)) {
    ShellExecuteW(Hwnd, L"open", manual.c_str(), nullptr, nullptr, SW_SHOW);
  } else {
    ShowMessage(Hwnd, LoadResString(IDS_FILENOTFOUND) + L"\r\n\r\n" + manual, MB_ICONWARNING);
  }
}

void CEditorDlg::OnAbout(UINT) {
  CAboutDlg dialog;
  dialog.ParentWindow = Hwnd;
  dialog.Run(false);
}

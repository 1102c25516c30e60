#include "app/helpcommands.h"

#include <shellapi.h>

#include <string>

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

void ShowManual(HWND owner) {
  if (ShowMessage(owner, LoadResString(IDS_ASKMANUAL), MB_OKCANCEL | MB_ICONINFORMATION) != IDOK) return;
  const std::wstring manual = ManualPath();
  if (FileExists(manual)) {
    ShellExecuteW(owner, L"open", manual.c_str(), nullptr, nullptr, SW_SHOW);
  } else {
    ShowMessage(owner, LoadResString(IDS_FILENOTFOUND) + L"\r\n\r\n" + manual, MB_ICONWARNING);
  }
}

void ShowAbout(HWND owner) {
  CAboutDlg dialog;
  dialog.ParentWindow = owner;
  dialog.Run(false);
}

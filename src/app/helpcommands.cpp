#include "app/helpcommands.h"

#include <shellapi.h>

#include <string>

#include "base/files.h"
#include "base/narrowpath.h"
#include "base/path.h"
#include "base/systempath.h"
#include "base/text.h"
#include "dialogs/aboutdlg.h"
#include "resources/ids.h"
#include "window/messagebox.h"

namespace {

// The manual lies beside the program, in the user's language.
std::wstring ManualPath() {
  return PathIn(FolderOf(ProgramPath()), LoadResString(IDS_MANUALFILE));
}

}  // namespace

void ShowManual(HWND owner) {
  if (ShowMessage(owner, LoadResString(IDS_ASKMANUAL), MB_OKCANCEL | MB_ICONINFORMATION) != IDOK) return;
  const std::wstring manual = ManualPath();
  if (FileExists(manual)) {
    // The shell knows no extended form.
    const std::wstring file = manual == ApiPath(manual) ? manual : NarrowForm(manual).value_or(manual);
    ShellExecuteW(owner, L"open", file.c_str(), nullptr, nullptr, SW_SHOW);
  } else {
    ShowMessage(owner, LoadResString(IDS_FILENOTFOUND) + L"\r\n\r\n" + manual, MB_ICONWARNING);
  }
}

void ShowAbout(HWND owner) {
  CAboutDlg dialog;
  dialog.ParentWindow = owner;
  dialog.Run(false);
}

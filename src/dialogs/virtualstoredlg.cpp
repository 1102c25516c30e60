#include "dialogs/virtualstoredlg.h"

#include <commctrl.h>
#include <shellapi.h>

#include "resources/ids.h"
#include "voicebank/folderaccess.h"

namespace {

bool HasShadow(const std::wstring& folder) {
  std::wstring shadow;
  bool isFile = false;
  return GetVirtualStorePath(folder, shadow) == 0 && FileExistsAsFile(shadow, isFile) && !isFile;
}

}  // namespace

INT_PTR VirtualStoreDlg::OnInitDialog(LPARAM) {
  const HICON icon = LoadIconW(nullptr, IDI_WARNING);
  SendDlgItemMessageW(Hwnd, IDC_VIRTUALSTORE_ICON, STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
  SetDlgItemTextW(Hwnd, IDC_VIRTUALSTORE_FOLDER, Folder.c_str());
  if (!HasShadow(Folder)) {
    EnableWindow(Item(IDC_VIRTUALSTORE_LINK), FALSE);
    ShowWindow(Item(IDC_VIRTUALSTORE_LINK), SW_HIDE);
  }
  return 1;
}

LRESULT VirtualStoreDlg::OnNotify(WPARAM, NMHDR* header) {
  if (header->idFrom != IDC_VIRTUALSTORE_LINK) return 1;
  if (header->code == NM_CLICK || header->code == NM_RETURN) OpenShadow();
  return 0;
}

// The dialog stays open, whatever comes of it.
void VirtualStoreDlg::OpenShadow() const {
  std::wstring shadow;
  if (GetVirtualStorePath(Folder, shadow) != 0) return;
  ShellExecuteW(Hwnd, L"Open", shadow.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

#include "dialogs/mapchangeddlg.h"

#include "base/text.h"

// The focus is set here and not by the system: the button that has it is the one that Enter presses.
INT_PTR CMapChangedDlg::OnInitDialog(LPARAM) {
  SetWindowTextW(Hwnd, LoadResString(IDS_NAME).c_str());
  SetDlgItemTextW(Hwnd, IDC_MAPCHANGED_TEXT, FormatText(LoadResString(IDS_MAPCHANGED).c_str(), Wave.c_str()).c_str());
  const auto icon = reinterpret_cast<WPARAM>(LoadIconW(nullptr, IDI_WARNING));
  SendDlgItemMessageW(Hwnd, IDC_MAPCHANGED_ICON, STM_SETICON, icon, 0);
  SetFocus(Item(IDCANCEL));
  return 0;
}

LRESULT CMapChangedDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  const int id = LOWORD(wParam);
  if (id == IDC_MAPCHANGED_OVERWRITE || id == IDC_MAPCHANGED_RELOAD) End(id);
  return CTemplateDlg::OnCommand(wParam, code, control);
}

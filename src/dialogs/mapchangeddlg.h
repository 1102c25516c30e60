// CMapChangedDlg: the question what becomes of edits whose map another program has changed, before they are saved.
// Cancel is the default: it alone leaves both as they are.
#pragma once

#include <string>

#include "resources/ids.h"
#include "window/templatedialog.h"

// The dialog's result is the id of the button.
class CMapChangedDlg : public CTemplateDlg<CMapChangedDlg, IDD_MAPCHANGED> {
 public:
  std::wstring Wave;  // name of the file

  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
};

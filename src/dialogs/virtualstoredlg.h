// VirtualStoreDlg: the warning about a folder in which writing is restricted, with a way to its shadow if there is one.
#pragma once

#include <string>

#include "resources/ids.h"
#include "window/templatedialog.h"

class VirtualStoreDlg : public CTemplateDlg<VirtualStoreDlg, IDD_VIRTUALSTORE> {
 public:
  // Set before the dialog is run.
  std::wstring Folder;

  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnNotify(WPARAM wParam, NMHDR* header) override;

 private:
  void OpenShadow() const;
};

// VirtualStoreDlg: the warning about a folder in which writing is restricted, with a way to its shadow if there is one.
#pragma once

#include <string>

#include "window/dialogbase.h"

class VirtualStoreDlg : public CDlgBase {
 public:
  // Set before the dialog is run.
  std::wstring Folder;

  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnNotify(WPARAM wParam, NMHDR* header) override;
  std::unique_ptr<CDlgBase> CreateInstance() const override;
  int GetTemplateId() const override;

 private:
  void OpenShadow() const;
};

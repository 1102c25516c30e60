// CAboutDlg: the name and the version of the program.
#pragma once

#include "window/dialogbase.h"

class CAboutDlg : public CDlgBase {
 public:
  INT_PTR OnInitDialog(LPARAM lParam) override;
  std::unique_ptr<CDlgBase> CreateInstance() const override;
  int GetTemplateId() const override;
};

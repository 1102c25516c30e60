// CAboutDlg: the name and the version of the program.
#pragma once

#include "resources/ids.h"
#include "window/templatedialog.h"

class CAboutDlg : public CTemplateDlg<CAboutDlg, IDD_ABOUT> {
 public:
  INT_PTR OnInitDialog(LPARAM lParam) override;
};

// CInitMrqDlg: the question, before maps in desc.mrq are made anew, what to renew: their entries as well, or only the
// analysis that lies beside the waves, which keeps entries that were edited by hand.
#pragma once

#include "resources/ids.h"
#include "window/templatedialog.h"

// The form in the plural, for one syllable too.
class CInitMrqDlg : public CTemplateDlg<CInitMrqDlg, IDD_INITMRQALL> {
 public:
  bool InitializeBoth = true;

  INT_PTR OnInitDialog(LPARAM lParam) override;
  void OnOK() override;
};

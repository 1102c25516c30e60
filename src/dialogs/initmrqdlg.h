// CInitMrqDlg: what to renew of the maps in desc.mrq, asked before they are made anew: their entries as well, or only
// the analysis that lies beside the waves, which keeps entries that were edited by hand.
#pragma once

#include "window/dialogbase.h"

class CInitMrqDlg : public CDlgBase {
 public:
  bool InitializeBoth = true;

  INT_PTR OnInitDialog(LPARAM lParam) override;
  void OnOK() override;
  std::unique_ptr<CDlgBase> CreateInstance() const override;
  int GetTemplateId() const override;
};

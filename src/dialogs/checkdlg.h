// CCheckFrqDlg: the settings of a check, kept in the registry, which wins over what the dialog is given.
#pragma once

#include "check/checkrecords.h"
#include "window/dialogbase.h"

class CCheckFrqDlg : public CDlgBase {
 public:
  explicit CCheckFrqDlg(const CheckFrqSettings& settings) : Settings(settings) {}

  // The user's answers, when the dialog ended with 1.
  CheckFrqSettings Settings;

  INT_PTR OnInitDialog(LPARAM lParam) override;
  void OnOK() override;
  std::unique_ptr<CDlgBase> CreateInstance() const override;
  int GetTemplateId() const override;

 private:
  void ShowNote(int nameBox, int octaveBox, int note) const;
};

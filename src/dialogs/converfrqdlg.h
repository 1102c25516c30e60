// CConverFrqDlg: which kind of map to convert into which, and for which syllables.
#pragma once

#include "frqmap/frqtype.h"
#include "window/dialogbase.h"

class CConverFrqDlg : public CDlgBase {
 public:
  int SourceType = FrqTypeUnknown;
  int TargetType = FrqTypeUnknown;
  bool ConvertAll = true;  // or the current syllable alone

  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  void OnOK() override;
  std::unique_ptr<CDlgBase> CreateInstance() const override;
  int GetTemplateId() const override;

 private:
  void ReadSettings();
  void FillKinds(int box, int shown) const;
  int SelectedKind(int box) const;
  void EnableOK() const;
};

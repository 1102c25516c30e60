// CConverFrqDlg: which kind of map to convert into which, and for which syllables.
#pragma once

#include "frqmap/frqtype.h"
#include "resources/ids.h"
#include "window/templatedialog.h"

class CConverFrqDlg : public CTemplateDlg<CConverFrqDlg, IDD_CONVERT> {
 public:
  int SourceType = FrqTypeUnknown;
  int TargetType = FrqTypeUnknown;
  bool ConvertAll = true;  // false: the current syllable alone

  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnOK() override;

 private:
  void ReadSettings();
  void FillKinds(int box, int shown) const;
  int SelectedKind(int box) const;
  void EnableOK() const;
  void TellOfSameKind() const;
};

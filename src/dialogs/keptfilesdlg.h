// CKeptFilesDlg: the maps that were kept before they were overwritten or deleted, to be looked through and put back.
//
// The window's owner sees to what putting back means for the voicebank that is open.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "recovery/keptfiles.h"
#include "resources/ids.h"
#include "window/templatedialog.h"

class CKeptFilesDlg : public CTemplateDlg<CKeptFilesDlg, IDD_KEPTFILES> {
 public:
  // Set before Run. `PutBack` puts the chosen ones back, each map once, and gives the sentence that tells how it went;
  // empty if the user went back.
  const KeptFiles* Kept = nullptr;
  std::function<std::wstring(const std::vector<KeptMap>&)> PutBack;

  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  LRESULT OnNotify(WPARAM wParam, NMHDR* header) override;

 private:
  void SetupColumns() const;
  void Fill();
  std::vector<KeptMap> Chosen() const;
  void PutChosenBack();
  void EnableButton() const;

  std::vector<KeptMap> list_;
};

// COptionDlg: the resampler, how many maps are made at a time, and whether a save deletes the analysis beside the wave.
//
// The resamplers that were chosen before are kept in the registry, the newest first. One that has gone leaves that list
// when it is chosen again.
#pragma once

#include <list>
#include <string>

#include "resources/ids.h"
#include "window/templatedialog.h"

class COptionDlg : public CTemplateDlg<COptionDlg, IDD_OPTION> {
 public:
  // The name of the resampler that is in use while none is chosen; empty for none.
  std::wstring Bundled;

  // The values that are shown and, after Run, those that the user settled on.
  std::wstring ResamplerPath;
  DWORD MaxParallelCount = 1;  // 0 is taken too
  bool AutoDeleteLlsm = true;

  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  // The dialog stays open if the resampler is not there.
  void OnOK() override;

 private:
  void FillResamplers() const;
  void ShowBundled(HWND edit) const;
  void Browse();
  std::wstring ResamplerInBox() const;
  void Accept(const std::wstring& resampler);
  void Refuse(const std::wstring& resampler);

  std::list<std::wstring> history_;
};

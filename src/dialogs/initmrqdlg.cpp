#include "dialogs/initmrqdlg.h"

#include "base/registry.h"
#include "resources/ids.h"

namespace {

constexpr wchar_t kBothValue[] = L"InitializeBothLLSMandMRQ";

}  // namespace

INT_PTR CInitMrqDlg::OnInitDialog(LPARAM) {
  InitializeBoth = RegReadFlag(kBothValue, InitializeBoth);
  CheckRadioButton(Hwnd, IDC_INITMRQ_BOTH, IDC_INITMRQ_ONLYLLSM,
                   InitializeBoth ? IDC_INITMRQ_BOTH : IDC_INITMRQ_ONLYLLSM);
  return 1;
}

void CInitMrqDlg::OnOK() {
  InitializeBoth = IsDlgButtonChecked(Hwnd, IDC_INITMRQ_BOTH) == BST_CHECKED;
  RegWriteFlag(kBothValue, InitializeBoth);
  End(IDOK);
}

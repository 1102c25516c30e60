#include "dialogs/converfrqdlg.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/registry.h"
#include "base/text.h"
#include "frqmap/mapkind.h"
#include "resources/ids.h"
#include "window/balloon.h"

namespace {

constexpr wchar_t kAllValue[] = L"ConvertAllFrq";
constexpr wchar_t kKindsValue[] = L"ConvertFrqType";

// Both kinds in one value of the registry.
struct StoredKinds {
  std::uint16_t Source;
  std::uint16_t Target;
};

// In the order in which they are offered.
std::vector<const MapKind*> OfferedKinds() {
  std::vector<const MapKind*> kinds;
  for (const MapKind& kind : MapKinds()) kinds.push_back(&kind);
  std::ranges::sort(kinds, {}, &MapKind::Place);
  return kinds;
}

}  // namespace

INT_PTR CConverFrqDlg::OnInitDialog(LPARAM) {
  ReadSettings();
  FillKinds(IDC_CONVERT_FROM, SourceType);
  FillKinds(IDC_CONVERT_TO, TargetType);
  CheckRadioButton(Hwnd, IDC_CONVERT_ONE, IDC_CONVERT_ALL, ConvertAll ? IDC_CONVERT_ALL : IDC_CONVERT_ONE);
  EnableOK();
  return 0;
}

void CConverFrqDlg::ReadSettings() {
  ConvertAll = RegReadFlag(kAllValue, ConvertAll);
  StoredKinds kinds;
  if (!RegReadValue(kKindsValue, kinds)) return;
  SourceType = kinds.Source;
  TargetType = kinds.Target;
}

// The first kind is shown for one that is none.
void CConverFrqDlg::FillKinds(int box, int shown) const {
  const HWND window = Item(box);
  ComboBox_ResetContent(window);
  for (const MapKind* const kind : OfferedKinds()) {
    const int position = ComboBox_AddString(window, LoadResString(kind->Name).c_str());
    ComboBox_SetItemData(window, position, kind->Type);
    if (position == 0 || kind->Type == shown) ComboBox_SetCurSel(window, position);
  }
}

int CConverFrqDlg::SelectedKind(int box) const {
  const HWND window = Item(box);
  return static_cast<int>(ComboBox_GetItemData(window, ComboBox_GetCurSel(window)));
}

void CConverFrqDlg::EnableOK() const {
  EnableWindow(Item(IDOK), SelectedKind(IDC_CONVERT_FROM) != SelectedKind(IDC_CONVERT_TO));
}

LRESULT CConverFrqDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  const UINT id = LOWORD(wParam);
  if ((id == IDC_CONVERT_FROM || id == IDC_CONVERT_TO) && code == CBN_SELCHANGE) EnableOK();
  return CDlgBase::OnCommand(wParam, code, control);
}

// A click on a grey button comes to its window.
INT_PTR CConverFrqDlg::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_LBUTTONDOWN) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const HWND button = Item(IDOK);
    if (!IsWindowEnabled(button) && ChildWindowFromPoint(Hwnd, point) == button) TellOfSameKind();
  }
  return CDlgBase::OnDialogMessage(message, wParam, lParam);
}

void CConverFrqDlg::TellOfSameKind() const {
  Balloon::Show(Item(IDC_CONVERT_TO), LoadResString(IDS_CONVERT_SAMEKIND));
}

void CConverFrqDlg::OnOK() {
  SourceType = SelectedKind(IDC_CONVERT_FROM);
  TargetType = SelectedKind(IDC_CONVERT_TO);
  if (SourceType == TargetType) return TellOfSameKind();
  ConvertAll = IsDlgButtonChecked(Hwnd, IDC_CONVERT_ALL) == BST_CHECKED;
  RegWriteFlag(kAllValue, ConvertAll);
  RegWriteValue(kKindsValue,
                StoredKinds{static_cast<std::uint16_t>(SourceType), static_cast<std::uint16_t>(TargetType)});
  End(IDOK);
}

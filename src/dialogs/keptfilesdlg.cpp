#include "dialogs/keptfilesdlg.h"

#include <commctrl.h>

#include <algorithm>
#include <array>

#include "base/path.h"
#include "base/text.h"
#include "window/listcolumns.h"

namespace {

struct Column {
  UINT Title;
  int Width;  // in units of the dialog
  int Format;
};

constexpr std::array kColumns = {
    Column{IDS_KEPT_MAP, 90, LVCFMT_LEFT},     Column{IDS_KEPT_TIME, 92, LVCFMT_LEFT},
    Column{IDS_KEPT_BECAUSE, 92, LVCFMT_LEFT}, Column{IDS_KEPT_SIZE, 40, LVCFMT_RIGHT},
    Column{IDS_KEPT_FOLDER, 200, LVCFMT_LEFT},
};

std::wstring Text(const KeptMap& kept, UINT title) {
  switch (title) {
    case IDS_KEPT_MAP: return FileNameOf(kept.MapPath);
    case IDS_KEPT_TIME: return LocalTimeText(kept.Time);
    case IDS_KEPT_BECAUSE: return LoadResString(IDS_KEPT_BECAUSE_FIRST + static_cast<UINT>(kept.Because));
    case IDS_KEPT_SIZE: return FormatText(L"%u", kept.Size);
    default: return FolderOf(kept.MapPath);
  }
}

}  // namespace

INT_PTR CKeptFilesDlg::OnInitDialog(LPARAM) {
  SetupColumns();
  Fill();
  SetDlgItemTextW(Hwnd, IDC_KEPTFILES_RESULT, LoadResString(list_.empty() ? IDS_KEPT_NONE : IDS_KEPT_HINT).c_str());
  return 1;
}

void CKeptFilesDlg::SetupColumns() const {
  const HWND view = Item(IDC_KEPTFILES_LIST);
  PrepareReport(view);
  for (const Column& column : kColumns) AppendColumn(Hwnd, view, column.Title, column.Width, column.Format);
}

// The list asks for the texts when they are seen (OnNotify): a job keeps a thousand maps.
void CKeptFilesDlg::Fill() {
  list_ = Kept->List();
  const HWND view = Item(IDC_KEPTFILES_LIST);
  SendMessageW(view, LVM_SETITEMCOUNT, list_.size(), 0);
  ListView_SetItemState(view, -1, 0, LVIS_SELECTED);
  InvalidateRect(view, nullptr, TRUE);
  EnableButton();
}

LRESULT CKeptFilesDlg::OnNotify(WPARAM, NMHDR* header) {
  if (header->idFrom != IDC_KEPTFILES_LIST) return 0;
  if (header->code == LVN_ITEMCHANGED || header->code == LVN_ODSTATECHANGED) EnableButton();
  if (header->code != LVN_GETDISPINFOW) return 0;
  LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(header)->item;
  const auto row = static_cast<std::size_t>(item.iItem);
  const auto column = static_cast<std::size_t>(item.iSubItem);
  if (!(item.mask & LVIF_TEXT) || row >= list_.size() || column >= kColumns.size()) return 0;
  lstrcpynW(item.pszText, Text(list_[row], kColumns[column].Title).c_str(), item.cchTextMax);
  return 0;
}

LRESULT CKeptFilesDlg::OnCommand(WPARAM wParam, UINT code, HWND control) {
  switch (LOWORD(wParam)) {
    case IDC_KEPTFILES_ALL: ListView_SetItemState(Item(IDC_KEPTFILES_LIST), -1, LVIS_SELECTED, LVIS_SELECTED); return 0;
    case IDC_KEPTFILES_PUTBACK: PutChosenBack(); return 0;
    default: return CDlgBase::OnCommand(wParam, code, control);
  }
}

// Each map comes once, in the version that was kept last, which stands first.
std::vector<KeptMap> CKeptFilesDlg::Chosen() const {
  const HWND view = Item(IDC_KEPTFILES_LIST);
  std::vector<KeptMap> chosen;
  for (int row = -1; (row = ListView_GetNextItem(view, row, LVNI_SELECTED)) >= 0;) {
    const KeptMap& kept = list_[static_cast<std::size_t>(row)];
    if (std::ranges::find(chosen, kept.MapPath, &KeptMap::MapPath) == chosen.end()) chosen.push_back(kept);
  }
  return chosen;
}

void CKeptFilesDlg::PutChosenBack() {
  const std::vector<KeptMap> chosen = Chosen();
  if (chosen.empty()) return;
  const std::wstring result = PutBack(chosen);
  if (result.empty()) return;
  Fill();
  SetDlgItemTextW(Hwnd, IDC_KEPTFILES_RESULT, result.c_str());
  SetFocus(Item(IDC_KEPTFILES_LIST));
}

void CKeptFilesDlg::EnableButton() const {
  const bool isAny = SendDlgItemMessageW(Hwnd, IDC_KEPTFILES_LIST, LVM_GETSELECTEDCOUNT, 0, 0) > 0;
  EnableWindow(Item(IDC_KEPTFILES_PUTBACK), isAny);
  EnableWindow(Item(IDC_KEPTFILES_ALL), !list_.empty());
}

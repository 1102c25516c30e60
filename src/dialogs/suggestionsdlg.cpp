#include "dialogs/suggestionsdlg.h"

#include <commctrl.h>

#include <array>

#include "base/text.h"
#include "window/clearplace.h"
#include "window/listcolumns.h"

namespace {

struct Column {
  UINT Title;
  int Width;  // in units of the dialog
  std::wstring CSuggestionsDlg::Line::*Text;
};

constexpr std::array kColumns = {
    Column{IDS_SUGGESTED_SYLLABLE, 90, &CSuggestionsDlg::Line::Syllable},
    Column{IDS_SUGGESTED_FRAMES, 50, &CSuggestionsDlg::Line::Frames},
    Column{IDS_SUGGESTED_FROM, 84, &CSuggestionsDlg::Line::From},
    Column{IDS_SUGGESTED_TO, 84, &CSuggestionsDlg::Line::To},
    Column{IDS_SUGGESTED_WHY, 190, &CSuggestionsDlg::Line::Why},
};

}  // namespace

INT_PTR CSuggestionsDlg::OnInitDialog(LPARAM) {
  const HWND view = Item(IDC_SUGGESTIONS_LIST);
  PrepareReport(view);
  for (const Column& column : kColumns) AppendColumn(Hwnd, view, column.Title, column.Width);
  SendMessageW(view, LVM_SETITEMCOUNT, Lines.size(), 0);
  const int count = static_cast<int>(Lines.size());
  PlaceClearOf(Hwnd, {List, ParentWindow}, 0);
  SetDlgItemTextW(Hwnd, IDC_SUGGESTIONS_SUM, FormatText(LoadResString(IDS_SUGGESTED_SUM).c_str(), count).c_str());
  return 1;
}

LRESULT CSuggestionsDlg::OnNotify(WPARAM, NMHDR* header) {
  if (header->idFrom != IDC_SUGGESTIONS_LIST) return 0;
  if (header->code == LVN_ITEMCHANGED) {
    const auto& change = *reinterpret_cast<const NMLISTVIEW*>(header);
    const bool isChosen = (change.uNewState & LVIS_SELECTED) && !(change.uOldState & LVIS_SELECTED);
    if (isChosen && change.iItem >= 0 && static_cast<std::size_t>(change.iItem) < Lines.size()) {
      Show(static_cast<std::size_t>(change.iItem));
    }
  }
  if (header->code != LVN_GETDISPINFOW) return 0;
  LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(header)->item;
  const auto row = static_cast<std::size_t>(item.iItem), column = static_cast<std::size_t>(item.iSubItem);
  if (!(item.mask & LVIF_TEXT) || row >= Lines.size() || column >= kColumns.size()) return 0;
  lstrcpynW(item.pszText, (Lines[row].*kColumns[column].Text).c_str(), item.cchTextMax);
  return 0;
}

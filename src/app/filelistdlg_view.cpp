// The rows and columns of the list view.
//
// A column is found by the id in its header item, since the llsm column comes and goes; a row leads to its entry by its
// own number tag.
#include <windows.h>
#include <commctrl.h>

#include "app/filelistdlg.h"
#include "base/files.h"
#include "base/text.h"
#include "resources/ids.h"
#include "window/redrawonce.h"

namespace {

enum ColumnId { kNameColumn = 0, kMapColumn = 1, kLlsmColumn = 2, kEditedColumn = 3, kMarkedColumn = 4 };

constexpr int kNameWidth = 150;
constexpr int kMarkWidth = 50;

UINT KindTitle(FrqType kind) {
  switch (kind) {
    case FrqTypeVs4ufrq: return IDS_KIND_VS4UFRQ;
    case FrqTypeFrc: return IDS_KIND_FRC;
    case FrqTypePmk: return IDS_KIND_PMK;
    case FrqTypeDio: return IDS_KIND_DIO;
    case FrqTypeMrq: return IDS_KIND_MRQ;
    default: return IDS_KIND_FRQ;
  }
}

}  // namespace

void CFileListDlg::SetupColumns() {
  InsertColumn(0, kNameColumn, LoadResString(IDS_COLUMN_NAME), kNameWidth, LVCFMT_LEFT);
  InsertColumn(1, kMapColumn, LoadResString(KindTitle(FrqType)), kMarkWidth, LVCFMT_CENTER);
  InsertColumn(2, kEditedColumn, LoadResString(IDS_COLUMN_EDITED), kMarkWidth, LVCFMT_CENTER);
  InsertColumn(3, kMarkedColumn, LoadResString(IDS_COLUMN_TOBECHECKED), kMarkWidth, LVCFMT_CENTER);
  UpdateColumns();
}

void CFileListDlg::UpdateColumns() {
  std::wstring title = LoadResString(KindTitle(FrqType));
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT;
  column.pszText = title.data();
  ListView_SetColumn(ListView(), ColumnIndexOf(kMapColumn), &column);

  const int llsm = ColumnIndexOf(kLlsmColumn);
  if (FrqType != FrqTypeMrq && llsm >= 0) ListView_DeleteColumn(ListView(), llsm);
  if (FrqType == FrqTypeMrq && llsm < 0) {
    InsertColumn(ColumnIndexOf(kEditedColumn), kLlsmColumn, L"llsm", kMarkWidth, LVCFMT_CENTER);
  }
}

void CFileListDlg::InsertColumn(int position, int id, const std::wstring& title, int width, int format) {
  std::wstring text = title;
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
  column.pszText = text.data();
  column.cx = static_cast<int>(width * DpiScaleX);
  column.fmt = format;
  ListView_InsertColumn(ListView(), position, &column);
  HDITEMW header{};
  header.mask = HDI_LPARAM;
  header.lParam = id;
  Header_SetItem(ListView_GetHeader(ListView()), position, &header);
}

int CFileListDlg::ColumnIndexOf(int columnId) const {
  const HWND header = ListView_GetHeader(ListView());
  for (int index = 0; index < Header_GetItemCount(header); ++index) {
    HDITEMW item{};
    item.mask = HDI_LPARAM;
    if (Header_GetItem(header, index, &item) && item.lParam == columnId) return index;
  }
  return -1;
}

void CFileListDlg::SortAndShow() {
  SortEntries();
  const RedrawOnce redraw(ListView());
  ListView_DeleteAllItems(ListView());
  ListView_SetItemCount(ListView(), static_cast<int>(Entries.size()));
  for (int index = 0; index < static_cast<int>(Entries.size()); ++index) InsertRow(index);
  FillColumn(kMapColumn, &SyllableEntry::HasMap);
  FillColumn(kEditedColumn, &SyllableEntry::Edited);
  for (int index = 0; index < static_cast<int>(Entries.size()); ++index) UpdateLlsmCell(index);
}

// The marks of new rows, whose cells are empty. To look the column and the text up for each cell would take longer than
// the rows themselves.
void CFileListDlg::FillColumn(int columnId, bool SyllableEntry::*marked) {
  LVITEMW cell{};
  std::wstring text = LoadResString(IDS_MARK);
  cell.iSubItem = ColumnIndexOf(columnId);
  cell.pszText = text.data();
  const HWND view = ListView();
  for (const SyllableEntry& entry : Entries) {
    if (!(entry.*marked) || entry.ListRow < 0) continue;
    SendMessageW(view, LVM_SETITEMTEXTW, static_cast<WPARAM>(entry.ListRow), reinterpret_cast<LPARAM>(&cell));
  }
}

void CFileListDlg::InsertRow(int index) {
  SyllableEntry& entry = Entries[static_cast<std::size_t>(index)];
  // The name as seen from the folder: its path behind the folder and the separator.
  const std::size_t skipped = Folder.size() + (Folder.ends_with(L'\\') ? 0 : 1);
  std::wstring name = skipped < entry.Path.size() ? entry.Path.substr(skipped) : std::wstring();
  LVITEMW item{};
  item.mask = LVIF_TEXT | LVIF_PARAM;
  item.iItem = index;
  item.pszText = name.data();
  item.lParam = index;
  const int row = ListView_InsertItem(ListView(), &item);
  if (row >= 0) entry.ListRow = row;
}

// A cell holds the mark or nothing. A column that is not there has no cells.
void CFileListDlg::SetCell(int row, int columnId, bool marked) {
  const int column = ColumnIndexOf(columnId);
  if (row < 0 || column < 0) return;
  std::wstring text = marked ? LoadResString(IDS_MARK) : std::wstring();
  ListView_SetItemText(ListView(), row, column, text.data());
}

// To clear the cell is to clear the marks; a set one leaves the map alone.
void CFileListDlg::SetMarkedCell(int index, bool marked) {
  SyllableEntry* const entry = EntryAt(index);
  if (!entry) return;
  if (!marked) entry->Map.ApplyMarks(-1, false);
  SetCell(entry->ListRow, kMarkedColumn, marked);
}

void CFileListDlg::UpdateLlsmCell(int index) {
  const SyllableEntry* const entry = EntryAt(index);
  if (!entry || FrqType != FrqTypeMrq) return;
  SetCell(entry->ListRow, kLlsmColumn, FileExists(LlsmPathFromWave(entry->Path)));
}

// The notification comes within the call: when it returns, the editor shows the syllable.
void CFileListDlg::SelectRow(int row) {
  LVITEMW item{};
  item.mask = LVIF_STATE;
  item.iItem = row;
  item.state = LVIS_SELECTED;
  item.stateMask = LVIS_SELECTED;
  ListView_SetItem(ListView(), &item);
  ListView_EnsureVisible(ListView(), row, FALSE);
}

int CFileListDlg::SelectedRow() const {
  return ListView_GetNextItem(ListView(), -1, LVNI_SELECTED);
}
int CFileListDlg::RowCount() const {
  return ListView_GetItemCount(ListView());
}

// The entry of a row, -1 if the row cannot be read.
int CFileListDlg::IndexOfRow(int row) const {
  LVITEMW item{};
  item.mask = LVIF_PARAM;
  item.iItem = row;
  return ListView_GetItem(ListView(), &item) ? static_cast<int>(item.lParam) : -1;
}

void CFileListDlg::SetEdited(int index, bool edited, bool notify) {
  SyllableEntry* const entry = EntryAt(index);
  if (!entry) return;
  if (notify) ToThumbnail().PostRefreshItem(index);
  if (entry->Edited == edited) return;
  entry->Edited = edited;
  SetCell(entry->ListRow, kEditedColumn, edited);
}

void CFileListDlg::SetHasMap(int index, bool hasMap, bool notify) {
  SyllableEntry* const entry = EntryAt(index);
  if (!entry) return;
  if (entry->HasMap != hasMap) {
    entry->HasMap = hasMap;
    SetCell(entry->ListRow, kMapColumn, hasMap);
    if (!hasMap) {
      entry->Map.Clear();
      entry->SavedMap.Clear();
      SetMarkedCell(index, false);
      SetEdited(index, false, notify);
    }
  }
  UpdateLlsmCell(index);
}

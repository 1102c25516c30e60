#include "app/syllablerows.h"

#include <commctrl.h>

#include <algorithm>

#include "base/files.h"
#include "base/registry.h"
#include "base/text.h"
#include "frqmap/mapkind.h"
#include "resources/ids.h"
#include "window/directcalls.h"
#include "window/redrawonce.h"

namespace {

constexpr int kNameWidth = 150;
constexpr int kMarkWidth = 50;
constexpr int kTitleMargins = 16;
constexpr int kNameMargins = 8;
constexpr int kWidest = 4000;  // of what the registry may hold
constexpr wchar_t kWidthsValue[] = L"FileListColumns";

UINT KindTitle(FrqType kind) {
  const MapKind* const row = FindMapKind(kind);
  return row ? row->Name : IDS_KIND_FRQ;
}

int InsertRow(const DirectCalls& view, int index, std::wstring text) {
  LVITEMW item{};
  item.mask = LVIF_TEXT | LVIF_PARAM;
  item.iItem = index;
  item.pszText = text.data();
  item.lParam = index;
  return static_cast<int>(view.Send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

}  // namespace

bool HasLlsm(const std::wstring& wavePath, FrqType kind) {
  return kind == FrqTypeMrq && FileExists(LlsmPathFromWave(wavePath));
}

void SyllableRows::Attach(HWND view, double dpiScaleX) {
  view_ = view;
  dpiScaleX_ = dpiScaleX;
  constexpr DWORD kStyles = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
  ListView_SetExtendedListViewStyleEx(view_, kStyles, kStyles);
}

void SyllableRows::SetupColumns(FrqType kind) {
  if (!RegReadValue(kWidthsValue, kept_)) kept_.fill(0);
  InsertColumn(0, kNameColumn, LoadResString(IDS_COLUMN_NAME), LVCFMT_LEFT);
  InsertColumn(1, kMapColumn, LoadResString(KindTitle(kind)), LVCFMT_CENTER);
  InsertColumn(2, kEditedColumn, LoadResString(IDS_COLUMN_EDITED), LVCFMT_CENTER);
  InsertColumn(3, kMarkedColumn, LoadResString(IDS_COLUMN_TOBECHECKED), LVCFMT_CENTER);
  UpdateColumns(kind);
}

void SyllableRows::UpdateColumns(FrqType kind) {
  std::wstring title = LoadResString(KindTitle(kind));
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT;
  column.pszText = title.data();
  ListView_SetColumn(view_, ColumnIndexOf(kMapColumn), &column);

  const int llsm = ColumnIndexOf(kLlsmColumn);
  if (kind != FrqTypeMrq && llsm >= 0) ListView_DeleteColumn(view_, llsm);
  if (kind == FrqTypeMrq && llsm < 0) {
    InsertColumn(ColumnIndexOf(kEditedColumn), kLlsmColumn, L"llsm", LVCFMT_CENTER);
  }
}

// The last column's title is longer than its usual width in one of the languages.
int SyllableRows::WidthOf(SyllableColumn id, const std::wstring& title) const {
  const int kept = kept_[static_cast<std::size_t>(id)];
  if (kept > 0 && kept <= kWidest) return static_cast<int>(kept * dpiScaleX_);
  const auto width = static_cast<int>((id == kNameColumn ? kNameWidth : kMarkWidth) * dpiScaleX_);
  if (id != kMarkedColumn) return width;
  const auto margins = static_cast<int>(kTitleMargins * dpiScaleX_);
  return std::max(width, ListView_GetStringWidth(view_, title.c_str()) + margins);
}

// Only what the user has drawn is kept: a title may need another width in another language or font.
void SyllableRows::KeepWidths() {
  bool isAnyDrawn = false;
  for (const int id : {kNameColumn, kMapColumn, kLlsmColumn, kEditedColumn, kMarkedColumn}) {
    const int index = ColumnIndexOf(static_cast<SyllableColumn>(id));
    if (index < 0) continue;
    const auto column = static_cast<std::size_t>(id);
    const int width = ListView_GetColumnWidth(view_, index);
    if (width == given_[column]) continue;
    kept_[column] = static_cast<int>(width / dpiScaleX_ + 0.5);
    isAnyDrawn = true;
  }
  if (isAnyDrawn) RegWriteValue(kWidthsValue, kept_);
}

void SyllableRows::InsertColumn(int position, SyllableColumn id, const std::wstring& title, int format) {
  std::wstring text = title;
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
  column.pszText = text.data();
  column.cx = given_[static_cast<std::size_t>(id)] = WidthOf(id, title);
  column.fmt = format;
  ListView_InsertColumn(view_, position, &column);
  HDITEMW header{};
  header.mask = HDI_LPARAM;
  header.lParam = id;
  Header_SetItem(ListView_GetHeader(view_), position, &header);
}

int SyllableRows::ColumnIndexOf(SyllableColumn id) const {
  const HWND header = ListView_GetHeader(view_);
  for (int index = 0; index < Header_GetItemCount(header); ++index) {
    HDITEMW item{};
    item.mask = HDI_LPARAM;
    if (Header_GetItem(header, index, &item) && item.lParam == id) return index;
  }
  return -1;
}

void SyllableRows::Fill(const std::vector<SyllableRow>& rows) {
  const RedrawOnce redraw(view_);
  ListView_DeleteAllItems(view_);
  ListView_SetItemCount(view_, static_cast<int>(rows.size()));
  rowOfIndex_.assign(rows.size(), -1);
  const DirectCalls view(view_);
  for (std::size_t i = 0; i < rows.size(); ++i) rowOfIndex_[i] = InsertRow(view, static_cast<int>(i), rows[i].Name);
  FillColumn(kMapColumn, rows, &SyllableRow::HasMap);
  FillColumn(kEditedColumn, rows, &SyllableRow::Edited);
  FillColumn(kLlsmColumn, rows, &SyllableRow::HasLlsm);
}

// The marks of new rows, whose cells are empty. To look the column and the text up for each cell would take longer than
// the rows themselves.
void SyllableRows::FillColumn(SyllableColumn id, const std::vector<SyllableRow>& rows,
                              bool SyllableRow::*marked) const {
  const int column = ColumnIndexOf(id);
  if (column < 0) return;
  LVITEMW cell{};
  std::wstring text = LoadResString(IDS_MARK);
  cell.iSubItem = column;
  cell.pszText = text.data();
  const DirectCalls view(view_);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!(rows[i].*marked) || rowOfIndex_[i] < 0) continue;
    view.Send(LVM_SETITEMTEXTW, static_cast<WPARAM>(rowOfIndex_[i]), reinterpret_cast<LPARAM>(&cell));
  }
}

void SyllableRows::SetCell(int index, SyllableColumn id, bool marked) const {
  const int row = RowOf(index);
  const int column = ColumnIndexOf(id);
  if (row < 0 || column < 0) return;
  std::wstring text = marked ? LoadResString(IDS_MARK) : std::wstring();
  ListView_SetItemText(view_, row, column, text.data());
}

void SyllableRows::UpdateLlsm(int index, const std::wstring& wavePath, FrqType kind) const {
  if (kind == FrqTypeMrq) SetCell(index, kLlsmColumn, HasLlsm(wavePath, kind));
}

// On a display with colours of its own for those who need contrast, a grey text is one of them and red is none.
LRESULT SyllableRows::Draw(NMLVCUSTOMDRAW& drawing, const std::function<bool(int)>& isMarkedOut) {
  constexpr COLORREF kRed = RGB(0xC0, 0, 0);
  if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (drawing.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  if (!isMarkedOut(static_cast<int>(drawing.nmcd.lItemlParam))) return CDRF_DODEFAULT;
  HIGHCONTRASTW contrast{sizeof(contrast), 0, nullptr};
  SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0);
  drawing.clrText = contrast.dwFlags & HCF_HIGHCONTRASTON ? GetSysColor(COLOR_GRAYTEXT) : kRed;
  return CDRF_DODEFAULT;
}

void SyllableRows::Redraw(int index) const {
  const int row = RowOf(index);
  if (row >= 0) ListView_RedrawItems(view_, row, row);
}

int SyllableRows::Count() const {
  return ListView_GetItemCount(view_);
}

int SyllableRows::RowOf(int index) const {
  return index >= 0 && index < static_cast<int>(rowOfIndex_.size()) ? rowOfIndex_[static_cast<std::size_t>(index)] : -1;
}

int SyllableRows::IndexOf(int row) const {
  LVITEMW item{};
  item.mask = LVIF_PARAM;
  item.iItem = row;
  return ListView_GetItem(view_, &item) ? static_cast<int>(item.lParam) : -1;
}

std::wstring SyllableRows::CutNameAt(POINT screen) const {
  constexpr int kLongest = 1024;  // characters that a tip has room for
  LVHITTESTINFO hit{};
  hit.pt = screen;
  ScreenToClient(view_, &hit.pt);
  if (ListView_SubItemHitTest(view_, &hit) < 0 || hit.iSubItem != ColumnIndexOf(kNameColumn)) return {};
  wchar_t name[kLongest] = L"";
  ListView_GetItemText(view_, hit.iItem, hit.iSubItem, name, kLongest);
  RECT place{};
  ListView_GetItemRect(view_, hit.iItem, &place, LVIR_LABEL);
  const auto margins = static_cast<int>(kNameMargins * dpiScaleX_);
  return ListView_GetStringWidth(view_, name) + margins > place.right - place.left ? name : L"";
}

int SyllableRows::Selected() const {
  return ListView_GetNextItem(view_, -1, LVNI_SELECTED);
}

void SyllableRows::Select(int row) const {
  LVITEMW item{};
  item.mask = LVIF_STATE;
  item.iItem = row;
  item.state = LVIS_SELECTED;
  item.stateMask = LVIS_SELECTED;
  ListView_SetItem(view_, &item);
  ListView_EnsureVisible(view_, row, FALSE);
}

void SyllableRows::SelectNeighbour(bool previous) const {
  const int row = Selected() + (previous ? -1 : 1);
  if (row >= 0 && row < Count()) Select(row);
}

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
  View = view;
  DpiScaleX = dpiScaleX;
  constexpr DWORD kStyles = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
  ListView_SetExtendedListViewStyleEx(View, kStyles, kStyles);
}

void SyllableRows::SetupColumns(FrqType kind) {
  if (!RegReadValue(kWidthsValue, Kept)) Kept.fill(0);
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
  ListView_SetColumn(View, ColumnIndexOf(kMapColumn), &column);

  const int llsm = ColumnIndexOf(kLlsmColumn);
  if (kind != FrqTypeMrq && llsm >= 0) ListView_DeleteColumn(View, llsm);
  if (kind == FrqTypeMrq && llsm < 0) {
    InsertColumn(ColumnIndexOf(kEditedColumn), kLlsmColumn, L"llsm", LVCFMT_CENTER);
  }
}

// The last column's title is longer than its usual width in one of the languages.
int SyllableRows::WidthOf(SyllableColumn id, const std::wstring& title) const {
  const int kept = Kept[static_cast<std::size_t>(id)];
  if (kept > 0 && kept <= kWidest) return static_cast<int>(kept * DpiScaleX);
  const auto width = static_cast<int>((id == kNameColumn ? kNameWidth : kMarkWidth) * DpiScaleX);
  if (id != kMarkedColumn) return width;
  const auto margins = static_cast<int>(kTitleMargins * DpiScaleX);
  return std::max(width, ListView_GetStringWidth(View, title.c_str()) + margins);
}

// Only what the user has drawn is kept: a title may need another width in another language or font.
void SyllableRows::KeepWidths() {
  bool isAnyDrawn = false;
  for (const int id : {kNameColumn, kMapColumn, kLlsmColumn, kEditedColumn, kMarkedColumn}) {
    const int index = ColumnIndexOf(static_cast<SyllableColumn>(id));
    if (index < 0) continue;
    const auto column = static_cast<std::size_t>(id);
    const int width = ListView_GetColumnWidth(View, index);
    if (width == Given[column]) continue;
    Kept[column] = static_cast<int>(width / DpiScaleX + 0.5);
    isAnyDrawn = true;
  }
  if (isAnyDrawn) RegWriteValue(kWidthsValue, Kept);
}

void SyllableRows::InsertColumn(int position, SyllableColumn id, const std::wstring& title, int format) {
  std::wstring text = title;
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
  column.pszText = text.data();
  column.cx = Given[static_cast<std::size_t>(id)] = WidthOf(id, title);
  column.fmt = format;
  ListView_InsertColumn(View, position, &column);
  HDITEMW header{};
  header.mask = HDI_LPARAM;
  header.lParam = id;
  Header_SetItem(ListView_GetHeader(View), position, &header);
}

int SyllableRows::ColumnIndexOf(SyllableColumn id) const {
  const HWND header = ListView_GetHeader(View);
  for (int index = 0; index < Header_GetItemCount(header); ++index) {
    HDITEMW item{};
    item.mask = HDI_LPARAM;
    if (Header_GetItem(header, index, &item) && item.lParam == id) return index;
  }
  return -1;
}

void SyllableRows::Fill(const std::vector<SyllableRow>& rows) {
  const RedrawOnce redraw(View);
  ListView_DeleteAllItems(View);
  ListView_SetItemCount(View, static_cast<int>(rows.size()));
  RowOfIndex.assign(rows.size(), -1);
  const DirectCalls view(View);
  for (std::size_t i = 0; i < rows.size(); ++i) RowOfIndex[i] = InsertRow(view, static_cast<int>(i), rows[i].Name);
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
  const DirectCalls view(View);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!(rows[i].*marked) || RowOfIndex[i] < 0) continue;
    view.Send(LVM_SETITEMTEXTW, static_cast<WPARAM>(RowOfIndex[i]), reinterpret_cast<LPARAM>(&cell));
  }
}

void SyllableRows::SetCell(int index, SyllableColumn id, bool marked) const {
  const int row = RowOf(index);
  const int column = ColumnIndexOf(id);
  if (row < 0 || column < 0) return;
  std::wstring text = marked ? LoadResString(IDS_MARK) : std::wstring();
  ListView_SetItemText(View, row, column, text.data());
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
  if (row >= 0) ListView_RedrawItems(View, row, row);
}

int SyllableRows::Count() const {
  return ListView_GetItemCount(View);
}

int SyllableRows::RowOf(int index) const {
  return index >= 0 && index < static_cast<int>(RowOfIndex.size()) ? RowOfIndex[static_cast<std::size_t>(index)] : -1;
}

int SyllableRows::IndexOf(int row) const {
  LVITEMW item{};
  item.mask = LVIF_PARAM;
  item.iItem = row;
  return ListView_GetItem(View, &item) ? static_cast<int>(item.lParam) : -1;
}

std::wstring SyllableRows::CutNameAt(POINT screen) const {
  constexpr int kLongest = 1024;  // characters that a tip has room for
  LVHITTESTINFO hit{};
  hit.pt = screen;
  ScreenToClient(View, &hit.pt);
  if (ListView_SubItemHitTest(View, &hit) < 0 || hit.iSubItem != ColumnIndexOf(kNameColumn)) return {};
  wchar_t name[kLongest] = L"";
  ListView_GetItemText(View, hit.iItem, hit.iSubItem, name, kLongest);
  RECT place{};
  ListView_GetItemRect(View, hit.iItem, &place, LVIR_LABEL);
  const auto margins = static_cast<int>(kNameMargins * DpiScaleX);
  return ListView_GetStringWidth(View, name) + margins > place.right - place.left ? name : L"";
}

int SyllableRows::Selected() const {
  return ListView_GetNextItem(View, -1, LVNI_SELECTED);
}

void SyllableRows::Select(int row) const {
  LVITEMW item{};
  item.mask = LVIF_STATE;
  item.iItem = row;
  item.state = LVIS_SELECTED;
  item.stateMask = LVIS_SELECTED;
  ListView_SetItem(View, &item);
  ListView_EnsureVisible(View, row, FALSE);
}

void SyllableRows::SelectNeighbour(bool previous) const {
  const int row = Selected() + (previous ? -1 : 1);
  if (row >= 0 && row < Count()) Select(row);
}

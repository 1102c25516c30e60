#include "frqctrl/tablechildren.h"

#include <windows.h>
#include <commctrl.h>

#include <array>

#include "frqctrl/frqctrlmessages.h"
#include "frqctrl/specbrightnessctrl.h"
#include "frqctrl/specbuttonctrl.h"
#include "frqctrl/tablemodel.h"
#include "resources/ids.h"

namespace {

using ColorLabels = std::array<const wchar_t*, TableModel::ColorTableCount>;

// The labels stand in the order of the colour tables. They are no resources: the control brings its menu along.
constexpr ColorLabels kEnglishColors = {L"&Cool", L"&Purple", L"&Jade", L"&Grassy", L"&Flame", L"&Ruby"};
constexpr ColorLabels kJapaneseColors = {L"水晶(&C)", L"紫陽花(&P)", L"翡翠(&J)",
                                         L"草原(&G)", L"火炎(&F)",   L"紅玉(&R)"};

Menu MakeColorMenu() {
  const bool japanese = PRIMARYLANGID(GetUserDefaultLangID()) == LANG_JAPANESE;
  Menu menu(CreatePopupMenu());
  UINT id = ID_VIEW_COLOR_FIRST;
  for (const wchar_t* label : japanese ? kJapaneseColors : kEnglishColors) {
    AppendMenuW(menu.get(), MF_STRING, id++, label);
  }
  return menu;
}

}  // namespace

TableChildren::TableChildren() : colorMenu_(MakeColorMenu()) {}

void TableChildren::Create(HWND table, const TableGeometry& geometry, int brightness) {
  table_ = table;
  // A paint leaves the children out, so that they need no paint of their own at each stroke.
  SetWindowLongW(table, GWL_STYLE, GetWindowLongW(table, GWL_STYLE) | WS_CLIPCHILDREN);
  // Each length is truncated by itself.
  const auto across = [&](int pixels) { return static_cast<int>(pixels * geometry.DpiScaleX); };
  const auto down = [&](int pixels) { return static_cast<int>(pixels * geometry.DpiScaleY); };
  const auto make = [table](const wchar_t* windowClass, const wchar_t* text, DWORD style, const RECT& place, int id) {
    return CreateWindowExW(0, windowClass, text, WS_CHILD | style, place.left, place.top, place.right, place.bottom,
                           table, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr),
                           nullptr);
  };
  // Position and size. The label and the trackbar stand to the right of the button, hidden until the spectrum is shown.
  const int beside = across(18) + across(23);
  const HWND view = make(L"Button", L"s", WS_VISIBLE | BS_PUSHLIKE | BS_AUTOCHECKBOX,
                         {across(18), down(18), across(20), down(20)}, IDC_TABLE_VIEW);
  const HWND label = make(CSpecBrightnessCtrl().GetWindowClassName(), L"*", 0,
                          {beside, down(20) - down(16) + down(18), across(16), down(16)}, IDC_TABLE_BRIGHTNESS);
  make(TRACKBAR_CLASSW, L"", WS_TABSTOP | TBS_TOOLTIPS | TBS_VERT | TBS_AUTOTICKS,
       {beside, down(20) + down(18), across(24), down(70)}, IDC_TABLE_TRACKBAR);

  SubclassControl<CSpecButtonCtrl>(view);
  const LRESULT font = SendMessageW(GetParent(table), WM_GETFONT, 0, 0);
  for (const HWND child : {view, label}) SendMessageW(child, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
  SendToTrackbar(TBM_SETRANGE, FALSE, MAKELPARAM(TableModel::Brightest, TableModel::Darkest));
  SendToTrackbar(TBM_SETPOS, FALSE, TableModel::Brightest);
  ShowBrightness(brightness);
}

void TableChildren::Destroy() {
  for (const int id : {IDC_TABLE_VIEW, IDC_TABLE_BRIGHTNESS, IDC_TABLE_TRACKBAR}) DestroyWindow(GetDlgItem(table_, id));
}

LRESULT TableChildren::SendToTrackbar(UINT message, WPARAM wParam, LPARAM lParam) const {
  return SendDlgItemMessageW(table_, IDC_TABLE_TRACKBAR, message, wParam, lParam);
}

void TableChildren::Show(int id, bool shown) const {
  ShowWindow(GetDlgItem(table_, id), shown ? SW_SHOWNA : SW_HIDE);
}

void TableChildren::ShowViewMode(int mode) const {
  SendDlgItemMessageW(table_, IDC_TABLE_VIEW, BM_SETCHECK, mode == 1 ? BST_CHECKED : BST_UNCHECKED, 0);
  Show(IDC_TABLE_BRIGHTNESS, mode == 1);
  Show(IDC_TABLE_TRACKBAR, false);
}

int TableChildren::ChosenViewMode() const {
  return IsDlgButtonChecked(table_, IDC_TABLE_VIEW) == BST_CHECKED ? 1 : 0;
}

bool TableChildren::IsTrackbar(HWND child) {
  return child && GetDlgCtrlID(child) == IDC_TABLE_TRACKBAR;
}

void TableChildren::ShowBrightness(int brightness) const {
  SendToTrackbar(TBM_SETPOS, TRUE, brightness);
}

int TableChildren::ChosenBrightness() const {
  return static_cast<int>(SendToTrackbar(TBM_GETPOS));
}

void TableChildren::ToggleTrackbar(int brightness) const {
  const HWND trackbar = GetDlgItem(table_, IDC_TABLE_TRACKBAR);
  if (IsWindowVisible(trackbar)) {
    Show(IDC_TABLE_TRACKBAR, false);
    return;
  }
  Show(IDC_TABLE_TRACKBAR, true);
  ShowBrightness(brightness);
  SetFocus(trackbar);
}

void TableChildren::OpenColorMenu(int shownTable) const {
  const UINT shown = ID_VIEW_COLOR_FIRST + static_cast<UINT>(shownTable);
  MENUITEMINFOW item{};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_STATE;
  for (UINT id = ID_VIEW_COLOR_FIRST;; ++id) {
    item.fState = id == shown ? MFS_CHECKED : MFS_UNCHECKED;
    if (!SetMenuItemInfoW(colorMenu_.get(), id, FALSE, &item)) break;
  }
  POINT point{};
  GetCursorPos(&point);
  SetForegroundWindow(table_);  // or the menu stays open when the user clicks elsewhere
  TrackPopupMenu(colorMenu_.get(), 0, point.x, point.y, 0, table_, nullptr);
  PostMessageW(table_, WM_NULL, 0, 0);
}

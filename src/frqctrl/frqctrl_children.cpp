// CFrqCtrl: the button, the label and the trackbar over the plot, and the menu of colours.
#include <windows.h>
#include <commctrl.h>

#include <array>

#include "frqctrl/frqctrl.h"
#include "frqctrl/specbrightnessctrl.h"
#include "frqctrl/specbuttonctrl.h"
#include "resources/ids.h"

namespace {

constexpr UINT kCursorMs = 100;

constexpr int kColorTableCount = 6;

// In the order of the colour tables. They are no resources, as the control brings its menu along wherever it stands.
constexpr std::array<const wchar_t*, kColorTableCount> kEnglishColors = {L"&Cool",   L"&Purple", L"&Jade",
                                                                         L"&Grassy", L"&Flame",  L"&Ruby"};
constexpr std::array<const wchar_t*, kColorTableCount> kJapaneseColors = {L"水晶(&C)", L"紫陽花(&P)", L"翡翠(&J)",
                                                                          L"草原(&G)", L"火炎(&F)",   L"紅玉(&R)"};

}  // namespace

Menu CFrqCtrl::MakeColorMenu() {
  const bool japanese = PRIMARYLANGID(GetUserDefaultLangID()) == LANG_JAPANESE;
  Menu menu(CreatePopupMenu());
  UINT id = ID_VIEW_COLOR_FIRST;
  for (const wchar_t* label : japanese ? kJapaneseColors : kEnglishColors) {
    AppendMenuW(menu.get(), MF_STRING, id++, label);
  }
  return menu;
}

void CFrqCtrl::OnClassRegistered() const {
  RegisterControl<CSpecBrightnessCtrl>();
}

LRESULT CFrqCtrl::OnCreate(CREATESTRUCTW*) {
  // A paint leaves the children out, so that they need no paint of their own at each stroke.
  SetWindowLongW(Hwnd, GWL_STYLE, GetWindowLongW(Hwnd, GWL_STYLE) | WS_CLIPCHILDREN);
  // Each length is truncated by itself.
  const auto across = [this](int pixels) { return static_cast<int>(pixels * Geometry.DpiScaleX); };
  const auto down = [this](int pixels) { return static_cast<int>(pixels * Geometry.DpiScaleY); };
  const auto make = [this](const wchar_t* windowClass, const wchar_t* text, DWORD style, const RECT& place, int id) {
    return CreateWindowExW(0, windowClass, text, WS_CHILD | style, place.left, place.top, place.right, place.bottom,
                           Hwnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
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
  const LRESULT font = SendMessageW(GetParent(Hwnd), WM_GETFONT, 0, 0);
  for (const HWND child : {view, label}) SendMessageW(child, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
  SendToTrackbar(TBM_SETRANGE, FALSE, MAKELPARAM(kBrightest, kDarkest));
  SendToTrackbar(TBM_SETPOS, FALSE, kBrightest);
  SendToTrackbar(TBM_SETPOS, TRUE, Brightness);
  SetTimer(Hwnd, kCursorTimer, kCursorMs, nullptr);
  return 0;
}

LRESULT CFrqCtrl::SendToTrackbar(UINT message, WPARAM wParam, LPARAM lParam) const {
  return SendDlgItemMessageW(Hwnd, IDC_TABLE_TRACKBAR, message, wParam, lParam);
}

void CFrqCtrl::ShowChild(int id, bool shown) const {
  ShowWindow(GetDlgItem(Hwnd, id), shown ? SW_SHOWNA : SW_HIDE);
}

LRESULT CFrqCtrl::SetViewMode(int mode) {
  if (mode != 0 && mode != 1) return -1;
  ViewMode = mode;
  SendDlgItemMessageW(Hwnd, IDC_TABLE_VIEW, BM_SETCHECK, mode == 1 ? BST_CHECKED : BST_UNCHECKED, 0);
  ShowChild(IDC_TABLE_BRIGHTNESS, mode == 1);
  ShowChild(IDC_TABLE_TRACKBAR, false);
  return 0;
}

LRESULT CFrqCtrl::SetBrightness(int brightness) {
  if (brightness < kBrightest || brightness > kDarkest) return 0;
  Brightness = brightness;
  SendToTrackbar(TBM_SETPOS, TRUE, brightness);
  RebuildNow();
  return 0;
}

LRESULT CFrqCtrl::SetColorTable(int table) {
  if (table < 0 || table >= kColorTableCount) return 0;
  ColorTable = table;
  RebuildNow();
  return 0;
}

LRESULT CFrqCtrl::OnCommand(WPARAM wParam, UINT, HWND) {
  const int id = LOWORD(wParam);
  if (id == IDC_TABLE_VIEW) {
    SetViewMode(IsDlgButtonChecked(Hwnd, IDC_TABLE_VIEW) == BST_CHECKED ? 1 : 0);
    RebuildNow();
  }
  if (id >= ID_VIEW_COLOR_FIRST && id <= ID_VIEW_COLOR_LAST) SetColorTable(id - ID_VIEW_COLOR_FIRST);
  return 0;
}

// The trackbar is in the middle of its own message here: the rest waits until it has finished.
void CFrqCtrl::OnTrackbarMoved() {
  Brightness = static_cast<int>(SendToTrackbar(TBM_GETPOS));
  PostMessageW(Hwnd, FCM_SETBRIGHTNESS, static_cast<WPARAM>(Brightness), 0);
}

LRESULT CFrqCtrl::OnToggleBrightness() {
  const HWND trackbar = GetDlgItem(Hwnd, IDC_TABLE_TRACKBAR);
  if (IsWindowVisible(trackbar)) {
    ShowChild(IDC_TABLE_TRACKBAR, false);
  } else {
    ShowChild(IDC_TABLE_TRACKBAR, true);
    SendToTrackbar(TBM_SETPOS, TRUE, Brightness);
    SetFocus(trackbar);
  }
  return 0;
}

LRESULT CFrqCtrl::OnCtlColorStatic(HWND control, HDC) {
  if (GetDlgCtrlID(control) != IDC_TABLE_TRACKBAR) return 0;
  return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_3DFACE));
}

LRESULT CFrqCtrl::OnColorMenu() {
  const UINT shown = ID_VIEW_COLOR_FIRST + static_cast<UINT>(ColorTable);
  MENUITEMINFOW item{};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_STATE;
  for (UINT id = ID_VIEW_COLOR_FIRST;; ++id) {
    item.fState = id == shown ? MFS_CHECKED : MFS_UNCHECKED;
    if (!SetMenuItemInfoW(ColorMenu.get(), id, FALSE, &item)) break;
  }
  POINT point{};
  GetCursorPos(&point);
  SetForegroundWindow(Hwnd);  // or the menu stays open when the user clicks elsewhere
  TrackPopupMenu(ColorMenu.get(), 0, point.x, point.y, 0, Hwnd, nullptr);
  PostMessageW(Hwnd, WM_NULL, 0, 0);
  return 0;
}

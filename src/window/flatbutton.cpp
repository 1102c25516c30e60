#include "window/flatbutton.h"

#include "base/handle.h"
#include "base/text.h"
#include "resources/ids.h"
#include "window/balloon.h"

namespace {

constexpr UINT_PTR kSecondClick = 1;

}  // namespace

bool CFlatButton::Draw(HDC dc, const RECT& client) {
  const Pen frame(CreatePen(PS_SOLID, 1, GetSysColor(COLOR_BTNTEXT)));
  const SelectGuard selectPen(dc, frame.get());
  const SelectGuard selectBrush(dc, GetSysColorBrush(COLOR_3DFACE));
  Rectangle(dc, client.left, client.top, client.right, client.bottom);
  const std::wstring text = WindowText(Hwnd);
  RECT area = client;
  const int oldMode = SetBkMode(dc, TRANSPARENT);
  const COLORREF oldColor = SetTextColor(dc, GetSysColor(IsWindowEnabled(Hwnd) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
  DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &area, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
  InflateRect(&area, -2, -2);
  if (GetFocus() == Hwnd) DrawFocusRect(dc, &area);
  SetTextColor(dc, oldColor);
  SetBkMode(dc, oldMode);
  return true;
}

LRESULT CFlatButton::OnLButtonDown(WPARAM keys, int x, int y) {
  SetTimer(Hwnd, kSecondClick, GetDoubleClickTime(), nullptr);
  return CCtrlBase::OnLButtonDown(keys, x, y);
}

LRESULT CFlatButton::OnTimer(UINT_PTR timer, LPARAM lParam) {
  if (timer != kSecondClick) return CCtrlBase::OnTimer(timer, lParam);
  KillTimer(Hwnd, kSecondClick);
  Balloon::Show(Hwnd, LoadResString(IDS_DOUBLECLICK));
  return 0;
}

LRESULT CFlatButton::OnSetFocus(HWND) {
  Refresh();
  return 0;
}

LRESULT CFlatButton::OnKillFocus(HWND) {
  Refresh();
  return 0;
}

LRESULT CFlatButton::OnKeyDown(WPARAM key, UINT low, UINT high) {
  if (key != VK_SPACE) return CCtrlBase::OnKeyDown(key, low, high);
  Press();
  return 0;
}

LRESULT CFlatButton::OnLButtonDblClk(WPARAM, int, int) {
  Press();
  return 0;
}

void CFlatButton::Press() {
  const HWND window = Hwnd;
  KillTimer(window, kSecondClick);
  const auto id = static_cast<WORD>(GetDlgCtrlID(window));
  SendMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(id, BN_DOUBLECLICKED), reinterpret_cast<LPARAM>(window));
}

const wchar_t* CFlatButton::GetWindowClassName() const {
  return L"FlatButtonControl";
}
UINT CFlatButton::GetClassStyle(UINT defaultStyle) const {
  return defaultStyle | CS_DBLCLKS;
}

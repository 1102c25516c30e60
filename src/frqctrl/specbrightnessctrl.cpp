#include "frqctrl/specbrightnessctrl.h"

#include "base/handle.h"
#include "frqctrl/drawing.h"
#include "frqctrl/frqctrlmessages.h"

namespace {

constexpr COLORREF kGround = 0xF0F0F0;

}  // namespace

bool CSpecBrightnessCtrl::Draw(HDC dc, const RECT& client) {
  Fill(dc, SolidBrush(kGround), client);
  RECT area = client;
  SetBkMode(dc, TRANSPARENT);
  DrawTextW(dc, L"*", 1, &area, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
  return true;
}

LRESULT CSpecBrightnessCtrl::OnLButtonDown(WPARAM keys, int x, int y) {
  SetCapture(Hwnd);
  return CCtrlBase::OnLButtonDown(keys, x, y);
}

LRESULT CSpecBrightnessCtrl::OnLButtonUp(WPARAM keys, int x, int y) {
  Release(LeftButtonDown, x, y);
  return CCtrlBase::OnLButtonUp(keys, x, y);
}

LRESULT CSpecBrightnessCtrl::OnRButtonDown(WPARAM keys, int x, int y) {
  SetCapture(Hwnd);
  return CCtrlBase::OnRButtonDown(keys, x, y);
}

LRESULT CSpecBrightnessCtrl::OnRButtonUp(WPARAM keys, int x, int y) {
  Release(RightButtonDown, x, y);
  return CCtrlBase::OnRButtonUp(keys, x, y);
}

void CSpecBrightnessCtrl::Release(int pressed, int x, int y) {
  if (pressed != 1) return;
  ReleaseCapture();
  RECT client{};
  GetClientRect(Hwnd, &client);
  if (PtInRect(&client, {x, y})) PostMessageW(GetParent(Hwnd), FCM_TOGGLEBRIGHTNESS, 0, 0);
}

const wchar_t* CSpecBrightnessCtrl::GetWindowClassName() const {
  return L"{82AA4006-19E0-408c-8FA8-BE295AFCBE6A}";
}

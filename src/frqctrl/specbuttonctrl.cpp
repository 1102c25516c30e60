#include "frqctrl/specbuttonctrl.h"

#include "frqctrl/frqctrlmessages.h"

LRESULT CSpecButtonCtrl::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_RBUTTONDOWN || message == WM_RBUTTONUP) return Dispatch(window, message, wParam, lParam);
  return CSubclassWindow::OnMessage(window, message, wParam, lParam);
}

LRESULT CSpecButtonCtrl::OnRButtonDown(WPARAM, int, int) {
  SetCapture(Hwnd);
  RightButtonDown = 1;
  return 0;
}

// The menu opens wherever the pointer is by now, since it can still be left.
LRESULT CSpecButtonCtrl::OnRButtonUp(WPARAM, int, int) {
  if (RightButtonDown == 1) {
    ReleaseCapture();
    PostMessageW(GetParent(Hwnd), FCM_COLORMENU, 0, 0);
  }
  RightButtonDown = 0;
  return 0;
}

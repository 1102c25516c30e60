#include "window/subclassedlistbox.h"

LRESULT CSubclassedListbox::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_MOUSEWHEEL) return Dispatch(window, message, wParam, lParam);
  return CSubclassWindow::OnMessage(window, message, wParam, lParam);
}

LRESULT CSubclassedListbox::OnMouseWheel(WPARAM keys, int x, int y, int delta) {
  const HWND window = Hwnd;
  const HWND parent = GetParent(window);
  const WPARAM wParam = MAKEWPARAM(keys, delta);
  const LPARAM lParam = MAKELPARAM(x, y);
  POINT point{x, y};
  ScreenToClient(parent, &point);
  const HWND under = ChildWindowFromPoint(parent, point);
  if (under == window) return CallPrevious(WM_MOUSEWHEEL, wParam, lParam);
  if (under) PostMessageW(under, WM_MOUSEWHEEL, wParam, lParam);
  return 0;
}

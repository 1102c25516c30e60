#include "window/window.h"

#include <windowsx.h>

#include "base/foreignpointer.h"

namespace {

// DefWindowProcW takes a mouse position as it came: both coordinates in one parameter.
LPARAM PackPoint(int x, int y) {
  return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

int SignedHighWord(WPARAM value) {
  return static_cast<short>(HIWORD(value));
}

}  // namespace

LRESULT CWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return Dispatch(window, message, wParam, lParam);
}

// The one place that unpacks messages; long because it is a table.
LRESULT CWindow::Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const int x = GET_X_LPARAM(lParam);
  const int y = GET_Y_LPARAM(lParam);
  const UINT low = LOWORD(lParam);
  const UINT high = HIWORD(lParam);
  const auto other = reinterpret_cast<HWND>(wParam);
  const auto control = reinterpret_cast<HWND>(lParam);
  switch (message) {
    case WM_CREATE: return OnCreate(reinterpret_cast<CREATESTRUCTW*>(lParam));
    case WM_DESTROY: return OnDestroy();
    case WM_ACTIVATE: return OnActivate(LOWORD(wParam), control, HIWORD(wParam) != 0);
    case WM_PAINT: return OnPaint();
    case WM_SIZE: return OnSize(wParam, static_cast<int>(low), static_cast<int>(high));
    case WM_SETFONT: return OnSetFont(reinterpret_cast<HFONT>(wParam), low != 0);
    case WM_GETFONT: return OnGetFont();
    case WM_HSCROLL: return OnHScroll(LOWORD(wParam), SignedHighWord(wParam), control);
    case WM_VSCROLL: return OnVScroll(LOWORD(wParam), SignedHighWord(wParam), control);
    case WM_GETMINMAXINFO: {
      auto* const info = WritableAt<MINMAXINFO>(lParam);
      return info ? OnGetMinMaxInfo(info) : 0;
    }
    case WM_COMMAND: return OnCommand(wParam, HIWORD(wParam), control);
    case WM_MOUSEMOVE: return OnMouseMove(wParam, x, y);
    case WM_LBUTTONDOWN: return OnLButtonDown(wParam, x, y);
    case WM_LBUTTONUP: return OnLButtonUp(wParam, x, y);
    case WM_LBUTTONDBLCLK: return OnLButtonDblClk(wParam, x, y);
    case WM_RBUTTONDOWN: return OnRButtonDown(wParam, x, y);
    case WM_RBUTTONUP: return OnRButtonUp(wParam, x, y);
    case WM_MOUSEWHEEL: return OnMouseWheel(LOWORD(wParam), x, y, SignedHighWord(wParam));
    case WM_DROPFILES: return OnDropFiles(reinterpret_cast<HDROP>(wParam));
    case WM_CTLCOLORSTATIC: return OnCtlColorStatic(control, reinterpret_cast<HDC>(wParam));
    case WM_SETFOCUS: return OnSetFocus(other);
    case WM_KILLFOCUS: return OnKillFocus(other);
    case WM_ENTERSIZEMOVE: return OnEnterSizeMove();
    case WM_EXITSIZEMOVE: return OnExitSizeMove();
    case WM_TIMER: return OnTimer(wParam, lParam);
    case WM_NOTIFY: {
      auto* const header = WritableAt<NMHDR>(lParam);
      return header ? OnNotify(wParam, header) : 0;
    }
    case WM_GETDLGCODE: return OnGetDlgCode();
    case WM_KEYDOWN: return OnKeyDown(wParam, low, high);
    case WM_KEYUP: return OnKeyUp(wParam, low, high);
    case WM_CHAR: return OnChar(wParam, low, high);
    case WM_CONTEXTMENU: return OnContextMenu(other, x, y);
    default: return DefWindowProcW(window, message, wParam, lParam);
  }
}

LRESULT CWindow::OnCreate(CREATESTRUCTW*) {
  return 0;
}
LRESULT CWindow::OnDestroy() {
  return 0;
}

LRESULT CWindow::OnActivate(UINT state, HWND other, bool minimized) {
  return DefWindowProcW(Hwnd, WM_ACTIVATE, MAKEWPARAM(state, minimized), reinterpret_cast<LPARAM>(other));
}

LRESULT CWindow::OnPaint() {
  return 0;
}
LRESULT CWindow::OnSize(WPARAM, int, int) {
  return 0;
}

LRESULT CWindow::OnSetFont(HFONT font, bool) {
  Font = font;
  return 0;
}

LRESULT CWindow::OnGetFont() {
  return reinterpret_cast<LRESULT>(Font);
}
LRESULT CWindow::OnHScroll(UINT, int, HWND) {
  return 0;
}
LRESULT CWindow::OnVScroll(UINT, int, HWND) {
  return 0;
}
LRESULT CWindow::OnGetMinMaxInfo(MINMAXINFO*) {
  return 0;
}
LRESULT CWindow::OnCommand(WPARAM, UINT, HWND) {
  return 0;
}

LRESULT CWindow::OnMouseMove(WPARAM, int x, int y) {
  MouseX = x;
  MouseY = y;
  return 0;
}

LRESULT CWindow::OnLButtonDown(WPARAM keys, int x, int y) {
  MouseX = x;
  MouseY = y;
  LeftButtonDown = 1;
  return DefWindowProcW(Hwnd, WM_LBUTTONDOWN, keys, PackPoint(x, y));
}

LRESULT CWindow::OnLButtonUp(WPARAM keys, int x, int y) {
  LeftButtonDown = 0;
  return DefWindowProcW(Hwnd, WM_LBUTTONUP, keys, PackPoint(x, y));
}

LRESULT CWindow::OnLButtonDblClk(WPARAM, int, int) {
  return 0;
}

LRESULT CWindow::OnRButtonDown(WPARAM keys, int x, int y) {
  RightButtonDown = 1;
  return DefWindowProcW(Hwnd, WM_RBUTTONDOWN, keys, PackPoint(x, y));
}

LRESULT CWindow::OnRButtonUp(WPARAM keys, int x, int y) {
  RightButtonDown = 0;
  return DefWindowProcW(Hwnd, WM_RBUTTONUP, keys, PackPoint(x, y));
}

LRESULT CWindow::OnMouseWheel(WPARAM, int, int, int) {
  return 0;
}
LRESULT CWindow::OnDropFiles(HDROP) {
  return 0;
}
LRESULT CWindow::OnCtlColorStatic(HWND, HDC) {
  return 0;
}
LRESULT CWindow::OnSetFocus(HWND) {
  return 0;
}
LRESULT CWindow::OnKillFocus(HWND) {
  return 0;
}

LRESULT CWindow::OnEnterSizeMove() {
  InSizeMove = true;
  return 0;
}

LRESULT CWindow::OnExitSizeMove() {
  InSizeMove = false;
  return 0;
}

LRESULT CWindow::OnTimer(UINT_PTR, LPARAM) {
  return 0;
}
LRESULT CWindow::OnNotify(WPARAM, NMHDR*) {
  return 0;
}
LRESULT CWindow::OnGetDlgCode() {
  return 0;
}
LRESULT CWindow::OnKeyDown(WPARAM, UINT, UINT) {
  return 0;
}
LRESULT CWindow::OnKeyUp(WPARAM, UINT, UINT) {
  return 0;
}
LRESULT CWindow::OnChar(WPARAM, UINT, UINT) {
  return 0;
}
LRESULT CWindow::OnContextMenu(HWND, int, int) {
  return 0;
}
LRESULT CWindow::OnSpareFirst(WPARAM, LPARAM, LRESULT result) {
  return result;
}
LRESULT CWindow::OnSpareSecond(WPARAM, LPARAM, LRESULT result) {
  return result;
}

// A place for a window beside others that are worked in meanwhile.
#pragma once

#include <windows.h>

#include <initializer_list>

// Places a window below all of these or, where there is no room, above them; else at the lower end of the screen.
// `spare` pixels stay free below it. False, and it stays, where one of the windows is not there.
inline bool PlaceClearOf(HWND window, std::initializer_list<HWND> others, int spare) {
  RECT own{}, all{};
  GetWindowRect(window, &own);
  for (const HWND other : others) {
    RECT rect{};
    if (!GetWindowRect(other, &rect)) return false;
    UnionRect(&all, &all, &rect);
  }
  MONITORINFO screen{};
  screen.cbSize = sizeof(screen);
  GetMonitorInfoW(MonitorFromRect(&all, MONITOR_DEFAULTTONEAREST), &screen);
  const LONG height = own.bottom - own.top + spare, width = own.right - own.left;
  LONG top = screen.rcWork.bottom - height;
  if (all.bottom <= top) {
    top = all.bottom;
  } else if (all.top - height >= screen.rcWork.top) {
    top = all.top - height;
  }
  LONG left = (all.left + all.right - width) / 2;
  if (left + width > screen.rcWork.right) left = screen.rcWork.right - width;
  if (left < screen.rcWork.left) left = screen.rcWork.left;
  return SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE) != 0;
}

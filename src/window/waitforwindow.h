// Waits for a window of another thread to go. After some ten seconds the wait gives up and things go on regardless.
#pragma once

#include <windows.h>

inline void WaitForWindowToGo(HWND window) {
  for (int attempt = 0; attempt < 99 && IsWindow(window); ++attempt) Sleep(100);
}

// The wait cursor for the length of a scope. Nothing keeps it up: a move of the mouse brings the window's own back.
#pragma once

#include <windows.h>

class WaitCursor {
 public:
  WaitCursor() { SetCursor(LoadCursorW(nullptr, IDC_WAIT)); }
  ~WaitCursor() { SetCursor(LoadCursorW(nullptr, IDC_ARROW)); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

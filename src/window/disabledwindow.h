// A window that takes no input for the length of the scope. One that took none before stays so.
#pragma once

#include <windows.h>

class DisabledWindow {
 public:
  // Null for none.
  explicit DisabledWindow(HWND window) : window_(window && IsWindowEnabled(window) ? window : nullptr) {
    Enable(FALSE);
  }
  ~DisabledWindow() { Enable(TRUE); }
  DisabledWindow(const DisabledWindow&) = delete;
  DisabledWindow& operator=(const DisabledWindow&) = delete;

 private:
  void Enable(BOOL enabled) const {
    if (window_) EnableWindow(window_, enabled);
  }

  HWND window_;
};

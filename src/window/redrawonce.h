// Many changes of a list, drawn once: for the length of the scope the control draws nothing.
#pragma once

#include <windows.h>

class RedrawOnce {
 public:
  explicit RedrawOnce(HWND window) : window_(window) { SendMessageW(window_, WM_SETREDRAW, FALSE, 0); }
  ~RedrawOnce() {
    SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window_, nullptr, TRUE);
  }
  RedrawOnce(const RedrawOnce&) = delete;
  RedrawOnce& operator=(const RedrawOnce&) = delete;

 private:
  HWND window_;
};

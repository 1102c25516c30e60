// Messages to a control of the same thread, by a call of the procedure of its class.
//
// A list is filled with tens of thousands of them, and their way through the system and through whatever subclasses the
// control would take as long as the filling. No subclass may have an interest in such a message.
#pragma once

#include <windows.h>

class DirectCalls {
 public:
  explicit DirectCalls(HWND control)
      : control_(control), procedure_(reinterpret_cast<WNDPROC>(GetClassLongPtrW(control, GCLP_WNDPROC))) {}

  LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return CallWindowProcW(procedure_, control_, message, wParam, lParam);
  }

 private:
  HWND control_;
  WNDPROC procedure_;
};

// Paints what waits to be painted of the windows of this thread, which is busy and takes no other messages. The system
// takes it for alive meanwhile and does not grey its windows.
#pragma once

#include <windows.h>

inline void PaintWaiting() {
  MSG message;
  while (PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE)) DispatchMessageW(&message);
}

// One step of a window's own scroll bar, as the bar asks for it by WM_HSCROLL or WM_VSCROLL.
#pragma once

#include <windows.h>

#include <optional>

// Moves the bar (SB_HORZ or SB_VERT) by a scroll code. Gives the new position, or nothing if it stayed where it was.
std::optional<int> StepScroll(HWND window, int bar, UINT code);

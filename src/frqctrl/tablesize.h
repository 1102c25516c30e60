// The scale of the screen and the size of a thumbnail, which the window of the thumbnails asks for before it has a
// control.
#pragma once

#include <windows.h>

#include "frqctrl/geometry.h"

// Dots per inch of the screen / 96.
struct ScreenScale {
  double X = 1.0;
  double Y = 1.0;
};
ScreenScale CurrentScreenScale();

// Size of a thumbnail's window with a whole map in it, in pixels, with or without scroll bars.
PixelSize ThumbnailWindowSize(SampleCount frameCount, DWORD style, DWORD exStyle, bool hasHBar, bool hasVBar);

// Gives a window that size, with the styles and the scroll bars that it has.
void FitWindowToMap(HWND window, SampleCount frameCount);

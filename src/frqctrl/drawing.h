// The tools of the frequency table control's drawing steps: pens and brushes, filled rectangles, lines, and the walk
// over the frames in the plot.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <iterator>

#include "base/handle.h"
#include "frqctrl/geometry.h"
#include "frqmap/frqmap.h"

// The width is truncated; 0 is a line of one pixel, as 1 is.
inline Pen SolidPen(double width, COLORREF color) {
  return Pen(CreatePen(PS_SOLID, static_cast<int>(width), color));
}

inline Brush SolidBrush(COLORREF color) {
  return Brush(CreateSolidBrush(color));
}

inline void Fill(HDC dc, const Brush& brush, const RECT& rect) {
  FillRect(dc, &rect, brush.get());
}

// Draws with the selected pen, without the line's last pixel.
inline void Line(HDC dc, int x0, int y0, int x1, int y1) {
  MoveToEx(dc, x0, y0, nullptr);
  LineTo(dc, x1, y1);
}

// Calls visit(frame, x) for each frame in the plot, from the left. x is the left edge of its column, not truncated.
template <typename Visit>
void WalkFrames(const TableGeometry& geometry, const FrqMap& map, Visit visit) {
  geometry.WalkColumns([&](std::int64_t column, double x) {
    if (column < 0 || column >= std::ssize(map.Frames)) return false;
    visit(map.Frames[static_cast<std::size_t>(column)], x);
    return true;
  });
}

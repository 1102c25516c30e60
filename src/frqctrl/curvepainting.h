// The curve of a map in the plot of the table: a square marker for each frame with a pitch and the lines that join
// them.
#pragma once

#include <windows.h>

#include "frqctrl/geometry.h"
#include "frqmap/frqmap.h"

struct CurveColors {
  COLORREF Plain;
  COLORREF Selected;  // frames of the selection; not told apart in a thumbnail
  COLORREF Unvoiced;
};

// The values that a curve goes through.
enum class CurveOf { Frequencies, Suggestions };  // Suggestions: the check's, at marked frames only

void DrawCurve(HDC dc, const TableGeometry& geometry, const FrqMap& map, CurveOf values, const CurveColors& colors);

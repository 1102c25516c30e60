// A curve as a table of comma-separated values: "time,hertz,level" for each frame, as spreadsheets and scripts take it.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "batch/curvefile.h"

// The points under a heading, in lines that end in CR LF. Numbers come back bit for bit; no pitch and no level are
// empty.
std::string CurveCsv(std::span<const CurvePoint> points);

// Reads a table, also as spreadsheets of other countries write it: parted by semicolons or tabs, with commas in the
// numbers, in quotes, behind a mark of the byte order or a line "sep=;". A heading names its columns in any order;
// without one they are time, hertz and level. A column for the level may be missing, and others are passed over. Rows
// may stand in any order. An empty frequency, or 0, is no pitch.
CurveReading ReadCurveCsv(std::string_view file);

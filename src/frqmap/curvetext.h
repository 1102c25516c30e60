// A curve as text: a row for each frame with its time and its frequency, as a spreadsheet takes and gives them.
//
// It knows no map, so that the text of a clipboard is read apart from its pasting (curvepasting.h). Portable.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct CurveRow {
  double Seconds = 0.0;  // from the first row
  double Hz = 0.0;       // FrqNoPitch where there is no pitch
};

// "seconds<TAB>hertz" in each line, with nothing behind the tab where there is no pitch. A point is the decimal sign in
// every language, and the frequencies come back bit for bit.
std::wstring CurveText(std::span<const CurveRow> rows);

// Rows in ascending time from 0, at most `most` of those that the text begins with. A tab, a comma or blanks stand
// between the two numbers; where it is a tab, a number may have a comma for its point. The first line that holds
// anything may be a heading. An empty frequency, or one that is no pitch, is none. Nothing for a text that has
// anything else in it, or no row.
std::optional<std::vector<CurveRow>> ParseCurve(std::wstring_view text, std::size_t most);

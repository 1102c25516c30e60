// The colours of the frequency table control, one palette for ordinary screens and one for high contrast.
#pragma once

#include <windows.h>

#include <array>

enum TableColor {
  ColorBackground,
  ColorNaturalRow,         // row of a natural note
  ColorAccidentalRow,      // row of an accidental
  ColorRowLine,            // line between rows
  ColorText,               // note labels and caption
  ColorBarLine,            // vertical lines
  ColorAverage,            // average line of the map
  ColorReferenceAverage,   // average line of the saved state
  ColorCurve,              // curve of the map
  ColorCurveSelected,      // its selected frames
  ColorReferenceCurve,     // curve of the saved state
  ColorUnvoiced,           // frame above 55 Hz that is not voiced
  ColorSuggested,          // curve of suggested frequencies
  ColorSuggestedSelected,  // its selected frames
  ColorAmplitude,          // level bars
  ColorMarked,             // columns of marked frames
  TableColorCount,
};

using TablePalette = std::array<COLORREF, TableColorCount>;

const TablePalette& PaletteFor(bool highContrast);

// Whether the system is set to high contrast now.
bool IsHighContrast();

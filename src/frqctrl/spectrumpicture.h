// The picture of the spectrum in the plot of the table: a cell for each column and note.
#pragma once

#include <cstddef>

#include "frqctrl/geometry.h"
#include "frqctrl/pixelbitmap.h"
#include "frqctrl/spectrumbands.h"
#include "frqctrl/spectrumcolor.h"

// The values that the cells show, and their look.
struct SpectrumPicture {
  SpectrumSteps& Steps;
  std::size_t EntryCount;  // of the table behind Steps
  double ColumnHop;        // samples of a column
  int Brightness;
  const SpectrumPalette& Colors;
};

// Pixels between cells and beyond the last entry stay as they are.
void DrawSpectrumCells(PixelBitmap& pixels, const TableGeometry& geometry, const SpectrumPicture& picture);

#include "frqctrl/spectrumpicture.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

// A column of cells: its pixels, and the steps of its notes.
struct CellColumn {
  std::size_t left;
  std::size_t right;
  const std::uint8_t* steps;
};

using StepInks = std::array<std::uint32_t, 256>;

StepInks InksOfSteps(const SpectrumPicture& picture) {
  const IntensityTable intensity(picture.Brightness);
  StepInks inks;
  for (std::size_t step = 0; step < inks.size(); ++step) {
    inks[step] = PixelBitmap::PixelOf(picture.Colors[intensity.OfStep(static_cast<std::uint8_t>(step))]);
  }
  return inks;
}

std::vector<CellColumn> ColumnsInPlot(const TableGeometry& geometry, const SpectrumPicture& picture) {
  const double width = geometry.ColumnWidth();
  std::vector<CellColumn> columns;
  geometry.WalkColumns([&](std::int64_t column, double x) {
    const std::int64_t entry = SpectrumEntryOfColumn(column, picture.ColumnHop, picture.EntryCount);
    if (entry >= 0) {
      const int right = std::min(geometry.PlotRect.right, static_cast<int>(x + width));
      columns.push_back({static_cast<std::size_t>(x), static_cast<std::size_t>(right),
                         picture.Steps.Of(static_cast<std::size_t>(entry))});
    }
    return true;
  });
  return columns;
}

}  // namespace

void DrawSpectrumCells(PixelBitmap& pixels, const TableGeometry& geometry, const SpectrumPicture& picture) {
  const PixelRect& plot = geometry.PlotRect;
  const StepInks inks = InksOfSteps(picture);
  const std::vector<CellColumn> columns = ColumnsInPlot(geometry, picture);
  const auto plotLeft = static_cast<std::size_t>(plot.left);
  // A note's cells are found once, in its first row of pixels, and copied to its others.
  int noteAbove = kNoNote;
  for (int y = plot.top; const int note : geometry.NotesOfSpectrumRows()) {
    if (note == noteAbove && note != kNoNote) {
      std::ranges::copy(pixels.Row(y - 1).subspan(plotLeft), pixels.Row(y).begin() + plot.left);
    } else if (note != kNoNote) {
      const std::span<std::uint32_t> row = pixels.Row(y);
      const auto index = static_cast<std::size_t>(picture.Steps.IndexOf(note));
      for (const CellColumn& column : columns) {
        std::ranges::fill(row.subspan(column.left, column.right - column.left), inks[column.steps[index]]);
      }
    }
    noteAbove = note;
    ++y;
  }
}

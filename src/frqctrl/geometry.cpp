#include "frqctrl/geometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "base/note.h"
#include "frqmap/frqtype.h"

namespace {

// One index zooms both axes. Rows do not shrink as far as columns do: below three pixels no line fits between them.
constexpr std::array<double, kZoomCount> kColumnWidths = {2, 4, 7, 10, 15, 20, 40};
constexpr std::array<double, kZoomCount> kRowHeights = {3, 5, 7, 10, 15, 20, 40};

constexpr double kThumbnailColumnWidth = 0.5;
constexpr double kThumbnailHeight = 68.0;

// A cast of a value that an integer cannot hold is undefined, so it is held within the limits first.
int TruncateWithin(double value, int least, int greatest) {
  if (std::isnan(value)) return least;
  return static_cast<int>(std::clamp<double>(value, least, greatest));
}

int Truncate(double value) {
  return TruncateWithin(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
}

double Log2(double value) {
  return std::log(value) / std::log(2.0);
}

}  // namespace

int ToPixel(double coordinate) {
  return TruncateWithin(coordinate, -kFarthestPixel, kFarthestPixel);
}

double TableGeometry::ColumnWidth() const {
  return DpiScaleX * (ThumbnailMode ? kThumbnailColumnWidth : kColumnWidths[static_cast<std::size_t>(Zoom)]);
}

double TableGeometry::RowHeight() const {
  return DpiScaleY * (ThumbnailMode ? 1.0 : kRowHeights[static_cast<std::size_t>(Zoom)]);
}

std::vector<int> TableGeometry::NotesOfSpectrumRows() const {
  const int height = PlotRect.bottom - PlotRect.top;
  const double rowHeight = RowHeight();
  const auto noteAt = [&](double distance) { return (distance - rowHeight * 0.5) / rowHeight + BottomNote; };
  std::vector<int> notes(static_cast<std::size_t>(std::max(height, 0)), kNoNote);
  const int highest = Truncate(noteAt(height) + 2.0);
  // The rows come from below, so that a cell covers the one under it.
  for (int note = Truncate(noteAt(0)); note <= highest; ++note) {
    const int top = height - Truncate(rowHeight * (note - 0.5 - BottomNote) + rowHeight * 0.5);
    const int bottom = Truncate(top + rowHeight);
    for (int y = std::max(top, 0); y < std::min(bottom, height); ++y) notes[static_cast<std::size_t>(y)] = note;
  }
  return notes;
}

SampleCount TableGeometry::XToColumn(int x, bool strict, SampleCount frameCount) const {
  if (strict && (x < PlotRect.left || x >= PlotRect.right)) return -1;
  const double position = (static_cast<double>(x) - PlotRect.left) / ColumnWidth() + ScrollColumn;
  const SampleCount column = Truncate(position);
  if (!strict) return column;
  // The position is asked too: a fraction below 0 would be truncated to column 0.
  return position < 0.0 || column >= frameCount ? -1 : column;
}

int TableGeometry::FrequencyToY(double hz, int bottom) const {
  // Not HzToNote: its quotient inside the logarithm may truncate to the next pixel.
  const double rows = (Log2(hz) - Log2(440.0)) * 12.0 + 69.0 - BottomNote;
  return ToPixel(bottom - (rows * RowHeight() + RowHeight() * 0.5));
}

double TableGeometry::YToFrequency(int y, const StrokeLimits& limits, bool singlePrecision) const {
  const double distance = static_cast<double>(PlotRect.bottom) - y;
  const double note = (distance - RowHeight() * 0.5) / RowHeight() + BottomNote;
  double hz = NoteToHz(std::min<double>(note, kTopNote));
  if (singlePrecision) hz = static_cast<double>(static_cast<float>(hz));
  // A pitch below the lower limit is 55 Hz even where that limit is above 55 Hz: not the least pitch, but none.
  if (limits.LowerLimit > hz) hz = FrqNoPitch;
  return hz > limits.UpperLimit ? limits.UpperLimit : hz;
}

PixelSize ThumbnailClientSize(SampleCount frameCount, double dpiScaleX, double dpiScaleY) {
  return {Truncate(dpiScaleX * kThumbnailColumnWidth * frameCount + 0.5), Truncate(dpiScaleY * kThumbnailHeight + 0.5)};
}

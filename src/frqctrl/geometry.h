// Geometry of the frequency table: between frames and notes on one side and pixels on the other.
//
// Rows are semitones and columns are frames of the map. Everything here is arithmetic, so that it is tested without a
// window; all results are truncated towards zero, as the picture and the mouse must agree on every pixel.
#pragma once

#include <cstdint>
#include <vector>

#include "base/sample.h"

// A rectangle in pixels, right and bottom exclusive.
struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

struct PixelSize {
  int width = 0;
  int height = 0;
};

// The frequencies [Hz] that a stroke may give.
struct StrokeLimits {
  double UpperLimit = 7902.132820097988;  // note 119
  double LowerLimit = 55.0;               // a pitch below it counts as none
};

inline constexpr int kZoomCount = 7;
inline constexpr int kTopNote = 119;
inline constexpr int kBottomNote = 24;
inline constexpr int kNoNote = -1;

// No y of a frequency is farther from the plot than this: arithmetic on pixels cannot overflow, and a wide line to an
// infinite frequency does not take seconds to draw. Any pitch that makes sense is well within.
inline constexpr int kFarthestPixel = 1 << 16;

// Truncates a coordinate and holds it within kFarthestPixel, as files hold infinities too. No number gives the least.
int ToPixel(double coordinate);

struct TableGeometry {
  PixelRect PlotRect;      // where frames are drawn
  int Zoom = 0;            // 0 to kZoomCount - 1
  double DpiScaleX = 1.0;  // the screen's dots per inch / 96
  double DpiScaleY = 1.0;
  int BottomNote = kBottomNote;  // note number of the lowest row
  SampleCount ScrollColumn = 0;  // column at the left edge of the plot
  bool ThumbnailMode = false;    // half a pixel a frame and one a semitone, whatever the zoom

  // The width in pixels, not whole: drawing adds it up and truncates at each use.
  double ColumnWidth() const;
  double RowHeight() const;

  // Calls visit(column, x) for each column of the plot from the left, those beyond the map too, until it returns false.
  // x is the column's left edge. Columns are counted wider than frames, as the view may be scrolled to any number.
  template <typename Visit>
  void WalkColumns(Visit visit) const {
    const double width = ColumnWidth();
    std::int64_t column = ScrollColumn;
    for (double x = PlotRect.left; x < PlotRect.right; x += width, ++column) {
      if (!visit(column, x)) return;
    }
  }

  // Calls visit(note, y) for each row from the bottom up, until it returns false. y is the row's line; the row itself
  // is above it.
  template <typename Visit>
  void WalkRows(int top, int bottom, Visit visit) const {
    const double height = RowHeight();
    int note = BottomNote;
    for (double y = bottom - 1; y >= top; y -= height, ++note) {
      if (!visit(note, y)) return;
    }
  }

  // The note that the spectrum shows in each row of pixels of the plot, from the top; kNoNote for a row between two
  // cells, which are as high as a row of notes is in whole pixels.
  std::vector<int> NotesOfSpectrumRows() const;

  // Column at x. `strict`: -1 outside the plot or outside the map's `frameCount` columns. Otherwise the mapping goes
  // on in both directions.
  SampleCount XToColumn(int x, bool strict, SampleCount frameCount) const;

  // y of a frequency [Hz] in a rectangle that ends at `bottom`: the middle of its semitone's row for a whole note.
  int FrequencyToY(double hz, int bottom) const;

  // Frequency [Hz] at y, at most note 119 and within the limits; below the lower one it is 55.0, which means no pitch.
  // `singlePrecision`: rounded to what a map of 32-bit floats can hold.
  double YToFrequency(int y, const StrokeLimits& limits, bool singlePrecision) const;
};

// Client size of a thumbnail that shows a whole map.
PixelSize ThumbnailClientSize(SampleCount frameCount, double dpiScaleX, double dpiScaleY);

// The places of a voicebank's thumbnails: in rows as wide as the window, one below the other.
//
// Arithmetic alone, so that it is tested without a window. Everything is in pixels; a place counts from the first row,
// as if nothing were scrolled.
#pragma once

#include <span>
#include <vector>

#include "frqctrl/geometry.h"

struct ThumbnailSpacing {
  int GapX = 8;  // between two thumbnails of a row
  int MarginX = 16;
  int MarginY = 16;  // above the first row, and between rows
};

// Thumbnails First to End, the last one exclusive.
struct ThumbnailRow {
  int Top = 0;
  int First = 0;
  int End = 0;

  bool operator==(const ThumbnailRow&) const = default;
};

struct ThumbnailLayout {
  std::vector<PixelRect> Places;
  std::vector<ThumbnailRow> Rows;

  // The row of a thumbnail.
  int RowOf(int thumbnail) const;
  // The row behind the last one to be seen in a window of a height whose topmost row is `first`.
  int EndOfView(int first, int height) const;
  // The place of the topmost row in the window. The other rows follow at the distance of their tops.
  int Shift(int first) const;
  // Rows that a window of a height holds as a whole, told from the last thumbnail; no more than there are.
  int Page(int height, const ThumbnailSpacing& spacing) const;
};

// Fills row after row with thumbnails of the sizes given, in a window of a width. One that is wider than the window has
// a row of its own and is not cut down.
ThumbnailLayout LayOutThumbnails(std::span<const PixelSize> sizes, int width, const ThumbnailSpacing& spacing);

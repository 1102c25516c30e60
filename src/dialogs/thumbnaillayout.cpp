#include "dialogs/thumbnaillayout.h"

#include <algorithm>

ThumbnailLayout LayOutThumbnails(std::span<const PixelSize> sizes, int width, const ThumbnailSpacing& spacing) {
  ThumbnailLayout layout;
  layout.Places.reserve(sizes.size());
  int x = spacing.MarginX;
  int y = spacing.MarginY;
  for (const PixelSize& size : sizes) {
    if (x > spacing.MarginX && x + size.width >= width - spacing.GapX) {
      y += spacing.MarginY + size.height;
      x = spacing.MarginX;
    }
    const int index = static_cast<int>(layout.Places.size());
    if (layout.Rows.empty() || layout.Rows.back().Top != y) layout.Rows.push_back({y, index, index});
    layout.Rows.back().End = index + 1;
    layout.Places.push_back({x, y, x + size.width, y + size.height});
    x += size.width + spacing.GapX;
  }
  return layout;
}

int ThumbnailLayout::RowOf(int thumbnail) const {
  const auto behind = std::ranges::upper_bound(Rows, thumbnail, {}, &ThumbnailRow::First);
  return static_cast<int>(behind - Rows.begin()) - 1;
}

int ThumbnailLayout::EndOfView(int first, int height) const {
  const int bottom = Rows[static_cast<std::size_t>(first)].Top + height;
  const auto from = Rows.begin() + first;
  return static_cast<int>(std::ranges::lower_bound(from, Rows.end(), bottom, {}, &ThumbnailRow::Top) - Rows.begin());
}

int ThumbnailLayout::Shift(int first) const {
  return Rows.front().Top - Rows[static_cast<std::size_t>(first)].Top;
}

int ThumbnailLayout::Page(int height, const ThumbnailSpacing& spacing) const {
  if (Places.empty()) return 0;
  const int rowHeight = Places.back().bottom - Places.back().top + spacing.MarginY;
  return std::min(height / rowHeight, static_cast<int>(Rows.size()));
}

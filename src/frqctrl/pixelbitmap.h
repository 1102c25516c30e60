// PixelBitmap: a bitmap that is drawn into by GDI and written into by hand.
//
// A table has hundreds of rows and bars and a hundred thousand cells; a GDI call for each would cost more than all else
// in a paint.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

#include "base/handle.h"

class PixelBitmap {
 public:
  PixelBitmap() = default;
  // The pixels are undefined; null where the system has no memory for the bitmap.
  PixelBitmap(int width, int height);

  bool Is(int width, int height) const { return section_ && width_ == width && height_ == height; }
  explicit operator bool() const { return static_cast<bool>(section_); }
  HBITMAP get() const { return section_.get(); }

  // Fills a rectangle as FillRect does, as far as it lies within the bitmap; an empty one is nothing.
  void Fill(const RECT& rect, COLORREF color);

  // One line of pixels as the bitmap has them, see PixelOf; y from the top, within the bitmap.
  std::span<std::uint32_t> Row(int y);

  static std::uint32_t PixelOf(COLORREF color);

 private:
  Bitmap section_;
  std::uint32_t* pixels_ = nullptr;
  int width_ = 0;
  int height_ = 0;
};

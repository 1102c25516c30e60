#include "frqctrl/pixelbitmap.h"

#include <algorithm>

PixelBitmap::PixelBitmap(int width, int height) : width_(width), height_(height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // the top row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  section_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  pixels_ = static_cast<std::uint32_t*>(bits);
}

std::uint32_t PixelBitmap::PixelOf(COLORREF color) {
  return static_cast<std::uint32_t>(RGB(GetBValue(color), GetGValue(color), GetRValue(color)));
}

std::span<std::uint32_t> PixelBitmap::Row(int y) {
  const auto width = static_cast<std::size_t>(width_);
  return {pixels_ + static_cast<std::size_t>(y) * width, width};
}

void PixelBitmap::Fill(const RECT& rect, COLORREF color) {
  const auto left = static_cast<std::size_t>(std::clamp<LONG>(rect.left, 0, width_));
  const auto right = static_cast<std::size_t>(std::clamp<LONG>(rect.right, 0, width_));
  const LONG bottom = std::min<LONG>(rect.bottom, height_);
  if (left >= right) return;
  const std::uint32_t pixel = PixelOf(color);
  for (LONG y = std::max<LONG>(rect.top, 0); y < bottom; ++y) {
    std::ranges::fill(Row(y).subspan(left, right - left), pixel);
  }
}

#include "driver/screen.h"

#include <objidl.h>

#include <gdiplus/gdiplus.h>

#include <cstring>
#include <stdexcept>

#include "base/handle.h"

namespace {

constexpr DWORD kStillMs = 150;
constexpr int kLooks = 100;

constexpr CLSID kPng = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

// GDI+ as long as it is used.
struct Encoding {
  Encoding() {
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token_, &input, nullptr);
  }
  ~Encoding() { Gdiplus::GdiplusShutdown(token_); }

 private:
  ULONG_PTR token_ = 0;
};

}  // namespace

Screen Screen::Now() {
  Screen screen;
  screen.Size = {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  BITMAPINFO form{};
  form.bmiHeader = {sizeof(form.bmiHeader), screen.Size.cx, -screen.Size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  const HDC desktop = GetDC(nullptr);
  void* bits = nullptr;
  const Bitmap bitmap(CreateDIBSection(desktop, &form, DIB_RGB_COLORS, &bits, nullptr, 0));
  const UniqueHandle<MemoryDcTraits> memory(CreateCompatibleDC(desktop));
  const SelectGuard selected(memory.get(), bitmap.get());
  BitBlt(memory.get(), 0, 0, screen.Size.cx, screen.Size.cy, desktop, 0, 0, SRCCOPY);
  ReleaseDC(nullptr, desktop);
  GdiFlush();
  screen.Pixels.resize(static_cast<std::size_t>(screen.Size.cx) * static_cast<std::size_t>(screen.Size.cy));
  std::memcpy(screen.Pixels.data(), bits, screen.Pixels.size() * sizeof(std::uint32_t));
  return screen;
}

Screen Screen::AtRest() {
  Screen before = Now();
  for (int look = 0; look < kLooks; ++look) {
    Sleep(kStillMs);
    Screen now = Now();
    if (now.Pixels == before.Pixels) break;
    before = std::move(now);
  }
  return before;
}

void Screen::Save(const std::filesystem::path& file, RECT cut) const {
  const Encoding encoding;
  RECT whole = {0, 0, Size.cx, Size.cy};
  IntersectRect(&cut, &whole, &cut);
  const auto first = static_cast<std::size_t>(cut.top * Size.cx + cut.left);
  Gdiplus::Bitmap image(cut.right - cut.left, cut.bottom - cut.top, 4 * Size.cx, PixelFormat32bppRGB,
                        reinterpret_cast<BYTE*>(const_cast<std::uint32_t*>(&Pixels[first])));
  if (image.Save(file.c_str(), &kPng, nullptr) != Gdiplus::Ok) throw std::runtime_error("a picture cannot be written");
}

int Pixels(int at96) {
  const HDC screen = GetDC(nullptr);
  const int pixels = MulDiv(at96, GetDeviceCaps(screen, LOGPIXELSX), USER_DEFAULT_SCREEN_DPI);
  ReleaseDC(nullptr, screen);
  return pixels;
}

RECT RectOf(HWND window) {
  RECT rect{};
  if (!GetWindowRect(window, &rect)) throw std::runtime_error("a window has gone");
  return rect;
}

POINT PlaceIn(HWND window, int x, int y) {
  const RECT rect = RectOf(window);
  return {rect.left + Pixels(x), rect.top + Pixels(y)};
}

POINT MiddleOf(HWND window) {
  const RECT rect = RectOf(window);
  return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

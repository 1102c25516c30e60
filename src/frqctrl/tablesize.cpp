#include "frqctrl/tablesize.h"

namespace {

bool IsScrollBarVisible(HWND window, LONG bar) {
  SCROLLBARINFO info{};
  info.cbSize = sizeof(info);
  return GetScrollBarInfo(window, bar, &info) && !(info.rgstate[0] & STATE_SYSTEM_INVISIBLE);
}

}  // namespace

ScreenScale CurrentScreenScale() {
  // A screen that tells nothing is taken as an ordinary one: with a factor of 0 no column would ever end.
  const auto scale = [](int dotsPerInch) { return dotsPerInch > 0 ? dotsPerInch / 96.0 : 1.0; };
  const HDC screen = GetDC(nullptr);
  const ScreenScale result{scale(GetDeviceCaps(screen, LOGPIXELSX)), scale(GetDeviceCaps(screen, LOGPIXELSY))};
  ReleaseDC(nullptr, screen);
  return result;
}

PixelSize ThumbnailWindowSize(SampleCount frameCount, DWORD style, DWORD exStyle, bool hasHBar, bool hasVBar) {
  const ScreenScale scale = CurrentScreenScale();
  const PixelSize client = ThumbnailClientSize(frameCount, scale.X, scale.Y);
  RECT rect{0, 0, client.width, client.height};
  AdjustWindowRectEx(&rect, style, FALSE, exStyle);
  const int height = rect.bottom - rect.top + (hasHBar ? GetSystemMetrics(SM_CYHSCROLL) : 0);
  const int width = rect.right - rect.left + (hasVBar ? GetSystemMetrics(SM_CXVSCROLL) : 0);
  return {width, height};
}

void FitWindowToMap(HWND window, SampleCount frameCount) {
  const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
  const auto exStyle = static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE));
  const PixelSize size = ThumbnailWindowSize(frameCount, style, exStyle, IsScrollBarVisible(window, OBJID_HSCROLL),
                                             IsScrollBarVisible(window, OBJID_VSCROLL));
  SetWindowPos(window, nullptr, 0, 0, size.width, size.height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

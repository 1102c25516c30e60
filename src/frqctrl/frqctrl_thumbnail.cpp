// CFrqCtrl as a thumbnail: without children, as large as its map, its layer held under a cap.
#include <windows.h>

#include "frqctrl/frqctrl.h"
#include "frqctrl/layerevictionlist.h"

namespace {

constexpr int kThumbnailBottomNote = 33;

bool IsScrollBarVisible(HWND window, LONG bar) {
  SCROLLBARINFO info{};
  info.cbSize = sizeof(info);
  return GetScrollBarInfo(window, bar, &info) && !(info.rgstate[0] & STATE_SYSTEM_INVISIBLE);
}

}  // namespace

PixelSize ThumbnailWindowSize(SampleCount frameCount, DWORD style, DWORD exStyle, bool hasHBar, bool hasVBar) {
  const ScreenScale scale = CurrentScreenScale();
  const PixelSize client = ThumbnailClientSize(frameCount, scale.X, scale.Y);
  RECT rect{0, 0, client.width, client.height};
  AdjustWindowRectEx(&rect, style, FALSE, exStyle);
  const int height = rect.bottom - rect.top + (hasHBar ? GetSystemMetrics(SM_CYHSCROLL) : 0);
  const int width = rect.right - rect.left + (hasVBar ? GetSystemMetrics(SM_CXVSCROLL) : 0);
  return {width, height};
}

LRESULT CFrqCtrl::SetThumbnail(bool on) {
  Geometry.ThumbnailMode = on;
  Geometry.BottomNote = on ? kThumbnailBottomNote : kBottomNote;
  if (!on) return 0;
  KillTimer(Hwnd, kCursorTimer);  // a thumbnail has no cursor of its own, and there are thousands
  for (const int id : {IDC_TABLE_VIEW, IDC_TABLE_BRIGHTNESS, IDC_TABLE_TRACKBAR}) DestroyWindow(GetDlgItem(Hwnd, id));
  return 0;
}

LRESULT CFrqCtrl::SetAutoSize(bool on) {
  AutoSize = on;
  FitToMap();
  return 0;
}

void CFrqCtrl::FitToMap() {
  if (!AutoSize) return;
  const auto style = static_cast<DWORD>(GetWindowLongW(Hwnd, GWL_STYLE));
  const auto exStyle = static_cast<DWORD>(GetWindowLongW(Hwnd, GWL_EXSTYLE));
  const PixelSize size = ThumbnailWindowSize(ColumnCount(), style, exStyle, IsScrollBarVisible(Hwnd, OBJID_HSCROLL),
                                             IsScrollBarVisible(Hwnd, OBJID_VSCROLL));
  SetWindowPos(Hwnd, nullptr, 0, 0, size.width, size.height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CFrqCtrl::SetLayerList(LayerEvictionList* list) {
  LayerList = list;
  return 0;
}

// A control that goes is not sent to any more.
LRESULT CFrqCtrl::OnDestroy() {
  if (LayerList) LayerList->Remove(Hwnd);
  return CCtrlBase::OnDestroy();
}

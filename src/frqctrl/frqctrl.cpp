// CFrqCtrl: its messages and its state. Scrolling, painting and the curve have sources of their own.
#include "frqctrl/frqctrl.h"

#include <algorithm>
#include <string_view>

ScreenScale CurrentScreenScale() {
  // A screen that tells nothing is taken as an ordinary one: with a factor of 0 no column would ever end.
  const auto scale = [](int dotsPerInch) { return dotsPerInch > 0 ? dotsPerInch / 96.0 : 1.0; };
  const HDC screen = GetDC(nullptr);
  const ScreenScale result{scale(GetDeviceCaps(screen, LOGPIXELSX)), scale(GetDeviceCaps(screen, LOGPIXELSY))};
  ReleaseDC(nullptr, screen);
  return result;
}

CFrqCtrl::CFrqCtrl() : Colors(PaletteFor(IsHighContrast())), ColorMenu(MakeColorMenu()) {
  const ScreenScale scale = CurrentScreenScale();
  Geometry.DpiScaleX = scale.X;
  Geometry.DpiScaleY = scale.Y;
}

const wchar_t* CFrqCtrl::GetWindowClassName() const {
  return L"FrequencyTableControl";
}

// It sets its cursor itself, by what the mouse can do.
const wchar_t* CFrqCtrl::GetCursorName() const {
  return nullptr;
}

UINT CFrqCtrl::GetClassStyle(UINT defaultStyle) const {
  return defaultStyle | CS_DBLCLKS;
}

LRESULT CFrqCtrl::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const int number = static_cast<int>(wParam);
  switch (message) {
    case FCM_TOGGLEBRIGHTNESS: return OnToggleBrightness();
    case FCM_COLORMENU: return OnColorMenu();
    case FCM_SETMAPS: return SetMaps(reinterpret_cast<const FrqMap*>(wParam), reinterpret_cast<FrqMap*>(lParam));
    case FCM_SETSELECTION: return SetSelection({reinterpret_cast<const int*>(lParam), lParam ? wParam : 0});
    case FCM_STEPZOOM: return StepZoom(wParam != 0);
    case FCM_GETZOOMCOUNT: return kZoomCount;
    case FCM_GETZOOM: return Geometry.Zoom;
    case FCM_SETZOOM: return SetZoom(number);
    case FCM_DROPLAYER:
    case FCM_EVICTLAYER: return OnDropLayer();
    case FCM_SETTHUMBNAIL: return SetThumbnail(wParam != 0);
    case FCM_SETAUTOSIZE: return SetAutoSize(wParam != 0);
    case FCM_SETLAYERLIST: return SetLayerList(reinterpret_cast<LayerEvictionList*>(lParam));
    case FCM_SETLIMITS: return SetLimits(reinterpret_cast<double*>(wParam), reinterpret_cast<double*>(lParam));
    case FCM_SETREADONLY: return SetReadOnly(wParam != 0);
    case FCM_SETSCROLLCOLUMN: return SetScrollColumn(number);
    case FCM_SETWAVEPATH: return SetWavePath(reinterpret_cast<const wchar_t*>(lParam));
    case FCM_SETKIND: return SetKind(static_cast<FrqType>(number));
    case FCM_SETVIEWMODE: return SetViewMode(number);
    case FCM_GETVIEWMODE: return ViewMode;
    case FCM_SETBRIGHTNESS: return SetBrightness(number);
    case FCM_GETBRIGHTNESS: return Brightness;
    case FCM_SETCOLORTABLE: return SetColorTable(number);
    case FCM_GETCOLORTABLE: return ColorTable;
    default: return CCtrlBase::OnMessage(window, message, wParam, lParam);
  }
}

LRESULT CFrqCtrl::OnSize(WPARAM, int, int) {
  return OnDropLayer();
}

LRESULT CFrqCtrl::OnDropLayer() {
  DropLayer();
  return 0;
}

LRESULT CFrqCtrl::SetMaps(const FrqMap* reference, FrqMap* map) {
  // The same map again means that its content is new. Its saved state is not taken here: the editor changes that one
  // in place, and a sender that shows the map once more need not know it.
  if (map && map == Map) {
    RebuildNow();
    return 0;
  }
  Map = map;
  ReferenceMap = reference;
  Geometry.ScrollColumn = 0;
  if (!map && ViewMode == 0) {
    // The layer stays too, so that a window between two maps does not flash.
    EnableScrollBar(Hwnd, SB_HORZ, ESB_DISABLE_BOTH);
    return 0;
  }
  EnableScrollBar(Hwnd, SB_HORZ, ESB_ENABLE_BOTH);
  const SampleCount columns = ScrollableColumns();
  if (!Geometry.ThumbnailMode) SetUpScrollBars(columns);
  DropLayer();
  return 0;
}

LRESULT CFrqCtrl::SetSelection(std::span<const int> frames) {
  if (!Map) return 0;
  Map->ClearSelection();
  for (const int index : frames) {
    if (index >= 0 && index < ColumnCount()) Map->Frames[static_cast<std::size_t>(index)].Selected = true;
  }
  Refresh();
  return 0;
}

LRESULT CFrqCtrl::StepZoom(bool down) {
  SetZoom(down ? Geometry.Zoom - 1 : Geometry.Zoom + 1);
  Notify(FCN_ZOOMCHANGED, Geometry.Zoom);
  return 0;
}

LRESULT CFrqCtrl::SetZoom(int zoom) {
  Geometry.Zoom = std::clamp(zoom, 0, kZoomCount - 1);
  RebuildNow();
  return 0;
}

LRESULT CFrqCtrl::SetLimits(const double* upper, const double* lower) {
  if (upper) Limits.UpperLimit = *upper;
  if (lower) Limits.LowerLimit = *lower;
  return 0;
}

LRESULT CFrqCtrl::SetReadOnly(bool readOnly) {
  ReadOnly = readOnly;
  return 0;
}

LRESULT CFrqCtrl::SetWavePath(const wchar_t* path) {
  WavePath = std::wstring_view(path ? path : L"").substr(0, MAX_PATH - 1);
  ForgetSpectrum();
  return 0;
}

LRESULT CFrqCtrl::SetKind(FrqType kind) {
  MapKind = kind;
  return 0;
}

SampleCount CFrqCtrl::ColumnCount() const {
  return Map ? Map->FrameCount : 0;
}

SampleCount CFrqCtrl::ScrollableColumns() {
  if (ColumnCount() > 0 || ViewMode != 1) return ColumnCount();
  EnsureSpectrum();
  return static_cast<SampleCount>(Spectrum.size());
}

void CFrqCtrl::Notify(FrqCtrlNotification code, LPARAM lParam) {
  const auto id = static_cast<WORD>(GetWindowLongW(Hwnd, GWL_ID));
  SendMessageW(GetParent(Hwnd), WM_COMMAND, MAKEWPARAM(id, code), lParam);
}

void CFrqCtrl::RebuildNow() {
  DropLayer();
  Refresh();
}

#include "frqctrl/frqctrl.h"

#include <mutex>
#include <optional>
#include <string>

#include "base/foreignpointer.h"
#include "base/text.h"
#include "frqctrl/specbrightnessctrl.h"
#include "resources/ids.h"

namespace {

constexpr UINT_PTR kCursorTimer = 100;
constexpr UINT kCursorMs = 100;

constexpr std::size_t kMostFrames = 1 << 28;  // of a selection: more do not fit into memory

bool IsMapOrNull(const FrqMap* map) {
  const bool isAligned = reinterpret_cast<std::uintptr_t>(map) % alignof(void*) == 0;
  return !map || (isAligned && IsWritable(map, sizeof(FrqMap)));
}

// The text about a place of the table.
std::wstring TextAt(POINT point, const TableModel& model, const MapEditing& editing, WaveSpectrum& spectrum) {
  std::optional<TableReading> reading;
  {
    const std::lock_guard lock(editing);
    reading = ReadTable(model, point.x, point.y);
  }
  return reading ? TextOf(*reading, spectrum.SampleRate()) : std::wstring();
}

}  // namespace

CFrqCtrl::CFrqCtrl() {
  const ScreenScale scale = CurrentScreenScale();
  model_.Geometry.DpiScaleX = scale.X;
  model_.Geometry.DpiScaleY = scale.Y;
}

const wchar_t* CFrqCtrl::GetWindowClassName() const {
  return L"FrequencyTableControl";
}

// The control sets its cursor itself, by what the mouse can do.
const wchar_t* CFrqCtrl::GetCursorName() const {
  return nullptr;
}

UINT CFrqCtrl::GetClassStyle(UINT defaultStyle) const {
  return defaultStyle | CS_DBLCLKS;
}

void CFrqCtrl::OnClassRegistered() const {
  RegisterControl<CSpecBrightnessCtrl>();
}

// Long because it is a table.
LRESULT CFrqCtrl::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const int number = static_cast<int>(wParam);
  const bool on = wParam != 0;
  switch (message) {
    case FCM_TOGGLEBRIGHTNESS: children_.ToggleTrackbar(model_.Brightness); break;
    case FCM_COLORMENU: children_.OpenColorMenu(model_.ColorTable); break;
    case FCM_SETMAPS: SetMaps(reinterpret_cast<const FrqMap*>(wParam), reinterpret_cast<FrqMap*>(lParam)); break;
    case FCM_SHOWFRAMES: viewport_.ShowFrames(number, static_cast<SampleCount>(lParam)); break;
    case FCM_FIT: viewport_.Fit(); break;
    case FCM_CENTRE: viewport_.Centre(); break;
    case FCM_SHOWCURVE:
      if (model_.FollowsCurve) viewport_.ShowFrames(0, model_.ColumnCount() - 1);
      break;
    case FCM_ZOOMINPLACE: viewport_.ZoomInPlace(on); break;
    case FCM_SETSELECTION: SetSelection(reinterpret_cast<const int*>(lParam), wParam); break;
    case FCM_STEPZOOM: viewport_.StepZoom(on); break;
    case FCM_GETZOOMCOUNT: return kZoomCount;
    case FCM_GETZOOM: return model_.Geometry.Zoom;
    case FCM_SETZOOM: viewport_.SetZoom(number); break;
    case FCM_DROPLAYER:
    case FCM_EVICTLAYER: DropLayer(); break;
    case FCM_SETTHUMBNAIL: SetThumbnail(on); break;
    case FCM_SETAUTOSIZE: SetAutoSize(on); break;
    case FCM_SETLAYERLIST: layer_.SetList(reinterpret_cast<LayerEvictionList*>(lParam)); break;
    case FCM_SETLIMITS: model_.SetLimits(ReadableAt<double>(number), ReadableAt<double>(lParam)); break;
    case FCM_SETREADONLY: model_.ReadOnly = on; break;
    case FCM_SETSCROLLCOLUMN: viewport_.SetScrollColumn(number); break;
    case FCM_SETWAVEPATH:
      if (const wchar_t* const path = PathAt(lParam); path || lParam == 0) spectrum_.SetWave(path);
      break;
    case FCM_SETKIND: model_.Kind = static_cast<FrqType>(number); break;
    case FCM_SETVIEWMODE: return SetViewMode(number);
    case FCM_GETVIEWMODE: return model_.ViewMode;
    case FCM_SETBRIGHTNESS: SetBrightness(number); break;
    case FCM_GETBRIGHTNESS: return model_.Brightness;
    case FCM_SETCOLORTABLE: SetColorTable(number); break;
    case FCM_GETCOLORTABLE: return model_.ColorTable;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: keys_.OnFocus(message == WM_SETFOCUS); break;
    case WM_GETDLGCODE: return DLGC_WANTARROWS;
    // The themed buttons in the control ask for this, to draw what is behind them.
    case WM_PRINTCLIENT: PrintInto(reinterpret_cast<HDC>(wParam)); break;
    case WM_CAPTURECHANGED: OnCaptureChanged(reinterpret_cast<HWND>(lParam)); break;
    default: return CCtrlBase::OnMessage(window, message, wParam, lParam);
  }
  return 0;
}

LRESULT CFrqCtrl::OnCreate(CREATESTRUCTW*) {
  children_.Create(Hwnd, model_.Geometry, model_.Brightness);
  SetTimer(Hwnd, kCursorTimer, kCursorMs, nullptr);
  return 0;
}

// A control that goes is not sent to any more.
LRESULT CFrqCtrl::OnDestroy() {
  mouse_.EndDrag();
  layer_.Leave(Hwnd);
  return CCtrlBase::OnDestroy();
}

LRESULT CFrqCtrl::OnSize(WPARAM, int, int) {
  DropLayer();
  return 0;
}

bool CFrqCtrl::Draw(HDC dc, const RECT& client) {
  // A paint under the box of a failed analysis draws nothing: the layer is about to be built.
  if (spectrum_.IsAnalyzing()) return false;
  painter_.LayOut(dc, client);
  // The analysis comes ahead of the lock, since it may take seconds and show a box.
  const bool newLayer = !layer_;
  const PixelRect& plot = model_.Geometry.PlotRect;
  if (newLayer && model_.ShowsSpectrum() && plot.left < plot.right) spectrum_.Ensure(Hwnd);
  const std::wstring caption = WindowText(Hwnd);
  {
    const std::lock_guard reading(Editing());
    const auto draw = [&](HDC layer, PixelBitmap& pixels) { painter_.DrawLayer(layer, pixels, client); };
    if (newLayer && !layer_.Build(dc, client, draw)) return false;
    layer_.CopyTo(dc, client);
    pitches_.Draw(dc);
    painter_.DrawMap(dc, client);
    painter_.DrawPointers(dc);
    painter_.DrawCaption(dc, client, caption);
  }
  if (newLayer) layer_.Enter(Hwnd);
  return true;
}

void CFrqCtrl::PrintInto(HDC dc) {
  RECT client{};
  GetClientRect(Hwnd, &client);
  Draw(dc, client);
}

void CFrqCtrl::Rebuild() {
  DropLayer();
  Refresh();
}

// A thumbnail's layer goes with its memory.
void CFrqCtrl::DropLayer() {
  if (model_.Geometry.ThumbnailMode) {
    layer_.GiveUp();
  } else {
    layer_.Drop();
  }
}

void CFrqCtrl::Notify(FrqCtrlNotification code, LPARAM lParam) {
  const auto id = static_cast<WORD>(GetWindowLongW(Hwnd, GWL_ID));
  SendMessageW(GetParent(Hwnd), WM_COMMAND, MAKEWPARAM(id, code), lParam);
}

// Pointers that lead to no map are not taken.
void CFrqCtrl::SetMaps(const FrqMap* reference, FrqMap* map) {
  if (!IsMapOrNull(reference) || !IsMapOrNull(map) || !currentEditing_->MayShow(reference, map)) return;
  // The same map again means that its content is new. Its saved state is not taken here: the editor changes that one
  // in place, and a sender that shows the map once more need not know it.
  if (map && map == model_.Map) {
    Rebuild();
    return;
  }
  mouse_.EndDrag();
  model_.SetMaps(reference, map);
  keys_.Forget();
  if (!map && model_.ViewMode == 0) {
    // The layer stays too, so that a window between two maps does not flash.
    EnableScrollBar(Hwnd, SB_HORZ, ESB_DISABLE_BOTH);
    return;
  }
  EnableScrollBar(Hwnd, SB_HORZ, ESB_ENABLE_BOTH);
  const SampleCount columns = ScrollableColumns();
  if (!model_.Geometry.ThumbnailMode) viewport_.SetUpBars(columns);
  DropLayer();
}

SampleCount CFrqCtrl::ScrollableColumns() {
  {
    const std::lock_guard reading(Editing());
    if (!model_.ScrollsOverSpectrum()) return model_.ColumnCount();
  }
  spectrum_.Ensure(Hwnd);
  return static_cast<SampleCount>(spectrum_.EntryCount());
}

void FrqCtrlSender::SetEditing(MapEditing* editing) const {
  if (auto* const table = dynamic_cast<CFrqCtrl*>(ControlOf(control_))) table->SetEditing(editing);
}

void FrqCtrlSender::SetPitches(WavePitches* pitches) const {
  if (auto* const table = dynamic_cast<CFrqCtrl*>(ControlOf(control_))) table->pitches_.SetSource(pitches);
}

void CFrqCtrl::SetEditing(MapEditing* editing) {
  mouse_.EndDrag();
  currentEditing_ = editing ? editing : &ownEditing_;
}

// Null is none; frames that cannot be read leave the selection as it is.
void CFrqCtrl::SetSelection(const int* frames, std::size_t count) {
  if (!model_.Map || (frames && (count > kMostFrames || !IsReadable(frames, count * sizeof(int))))) return;
  Editing().Select(*model_.Map, {frames, frames ? count : 0});
  Refresh();
}

LRESULT CFrqCtrl::SetViewMode(int mode) {
  if (!model_.SetViewMode(mode)) return -1;
  children_.ShowViewMode(mode);
  return 0;
}

void CFrqCtrl::SetBrightness(int brightness) {
  if (!model_.SetBrightness(brightness)) return;
  children_.ShowBrightness(brightness);
  Rebuild();
}

void CFrqCtrl::SetColorTable(int table) {
  if (model_.SetColorTable(table)) Rebuild();
}

void CFrqCtrl::SetThumbnail(bool on) {
  model_.SetThumbnail(on);
  if (!on) return;
  KillTimer(Hwnd, kCursorTimer);  // a thumbnail has no cursor of its own, and there are thousands
  children_.Destroy();
}

// The window takes the size of its map once; a map that comes later finds it as it is.
void CFrqCtrl::SetAutoSize(bool on) {
  if (on) FitWindowToMap(Hwnd, model_.ColumnCount());
}

LRESULT CFrqCtrl::OnCommand(WPARAM wParam, UINT, HWND) {
  const int id = LOWORD(wParam);
  if (id == IDC_TABLE_VIEW) {
    SetViewMode(children_.ChosenViewMode());
    Rebuild();
  }
  if (id >= ID_VIEW_COLOR_FIRST && id <= ID_VIEW_COLOR_LAST) SetColorTable(id - ID_VIEW_COLOR_FIRST);
  return 0;
}

LRESULT CFrqCtrl::OnCtlColorStatic(HWND control, HDC) {
  return TableChildren::IsTrackbar(control) ? reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_3DFACE)) : 0;
}

LRESULT CFrqCtrl::OnHScroll(UINT code, int, HWND) {
  viewport_.OnScroll(SB_HORZ, code);
  return 0;
}

LRESULT CFrqCtrl::OnVScroll(UINT code, int, HWND scrollBar) {
  if (TableChildren::IsTrackbar(scrollBar)) {
    // The trackbar is in the middle of its own message here: the rest waits until it has finished.
    model_.Brightness = children_.ChosenBrightness();
    PostMessageW(Hwnd, FCM_SETBRIGHTNESS, static_cast<WPARAM>(model_.Brightness), 0);
  } else {
    viewport_.OnScroll(SB_VERT, code);
  }
  return 0;
}

LRESULT CFrqCtrl::OnMouseWheel(WPARAM keys, int x, int y, int delta) {
  tip_.Hide();
  const HWND parent = GetParent(Hwnd);
  POINT point{x, y};
  ScreenToClient(parent, &point);
  // The wheel belongs to what is under the pointer, not to what has the focus.
  const HWND under = ChildWindowFromPoint(parent, point);
  if (under == Hwnd) {
    viewport_.OnWheel(keys, delta);
  } else if (under) {
    PostMessageW(under, WM_MOUSEWHEEL, MAKEWPARAM(keys, delta), MAKELPARAM(x, y));
  }
  return 0;
}

LRESULT CFrqCtrl::OnKeyDown(WPARAM key, UINT low, UINT high) {
  const bool isTaken = !mouse_.IsDragging() && keys_.OnKey(key, GetKeyState(VK_SHIFT) < 0, GetKeyState(VK_CONTROL) < 0);
  return isTaken ? 0 : CCtrlBase::OnKeyDown(key, low, high);
}

LRESULT CFrqCtrl::OnLButtonDown(WPARAM keys, int x, int y) {
  tip_.Hide();
  ruler_.Hide();
  pitches_.Follow(true);
  mouse_.PressLeft({x, y});
  return CCtrlBase::OnLButtonDown(keys, x, y);
}

LRESULT CFrqCtrl::OnRButtonDown(WPARAM keys, int x, int y) {
  tip_.Hide();
  ruler_.Hide();
  mouse_.PressRight({x, y});
  return CCtrlBase::OnRButtonDown(keys, x, y);
}

LRESULT CFrqCtrl::OnMouseMove(WPARAM keys, int x, int y) {
  const bool wasDragging = mouse_.IsDragging();
  pitches_.Follow(wasDragging);
  mouse_.Move({x, y}, LeftButtonDown || RightButtonDown);
  // A drag that was ended from outside has given the capture back, so that the release may go elsewhere.
  if (wasDragging && !mouse_.IsDragging()) LeftButtonDown = RightButtonDown = 0;
  return CCtrlBase::OnMouseMove(keys, x, y);
}

// Either button's release ends any drag.
LRESULT CFrqCtrl::OnLButtonUp(WPARAM keys, int x, int y) {
  TellThumbnailClick(LeftButtonDown);
  mouse_.EndDrag();
  return CCtrlBase::OnLButtonUp(keys, x, y);
}

LRESULT CFrqCtrl::OnRButtonUp(WPARAM keys, int x, int y) {
  TellThumbnailClick(RightButtonDown);
  mouse_.EndDrag();
  return CCtrlBase::OnRButtonUp(keys, x, y);
}

LRESULT CFrqCtrl::OnLButtonDblClk(WPARAM, int x, int y) {
  mouse_.DoubleClick({x, y});
  return 0;
}

// A window that takes the capture away gets the release of the buttons too.
void CFrqCtrl::OnCaptureChanged(HWND owner) {
  if (!mouse_.IsDragging() || owner == Hwnd) return;
  mouse_.OnCaptureChanged(owner);
  LeftButtonDown = RightButtonDown = 0;
}

void CFrqCtrl::TellThumbnailClick(int pressed) {
  if (model_.Geometry.ThumbnailMode && pressed == 1) NotifySelf(FCN_THUMBNAILCLICKED);
}

// Pressing Ctrl or Shift moves no mouse, so that only a timer can bring the cursor of a selection and the dots.
LRESULT CFrqCtrl::OnTimer(UINT_PTR, LPARAM) {
  if (mouse_.IsDragging() || model_.Geometry.ThumbnailMode) return 0;
  mouse_.UpdateCursor();
  if (ruler_.OnTick(Hwnd)) Refresh();
  pitches_.Follow(false);
  tip_.OnTick(Hwnd, [this](POINT point) { return TextAt(point, model_, Editing(), spectrum_); });
  return 0;
}

// The private messages of the frequency table control, and a typed sender for them.
//
// The numbers are unique within the control only: other windows give them other meanings.
#pragma once

#include <windows.h>

#include <span>

#include "base/sample.h"
#include "frqmap/frqtype.h"

class FrqMap;
class LayerEvictionList;
class MapEditing;
class WavePitches;

enum FrqCtrlMessage : UINT {
  FCM_TOGGLEBRIGHTNESS = 32775,
  FCM_COLORMENU = 32779,
  FCM_SETMAPS = 32789,
  FCM_SETSELECTION = 32790,
  FCM_STEPZOOM = 32791,
  FCM_GETZOOMCOUNT = 32792,
  FCM_GETZOOM = 32793,
  FCM_SETZOOM = 32794,
  FCM_DROPLAYER = 32795,
  FCM_SETTHUMBNAIL = 32796,
  FCM_SETAUTOSIZE = 32797,
  FCM_SETLAYERLIST = 32798,
  FCM_EVICTLAYER = 32799,
  FCM_SETLIMITS = 32800,
  FCM_SETREADONLY = 32801,
  FCM_SETSCROLLCOLUMN = 32802,
  FCM_SETWAVEPATH = 32803,
  FCM_SETKIND = 32804,
  FCM_SETVIEWMODE = 32805,
  FCM_GETVIEWMODE = 32806,
  FCM_SETBRIGHTNESS = 32807,
  FCM_GETBRIGHTNESS = 32808,
  FCM_SETCOLORTABLE = 32809,
  FCM_GETCOLORTABLE = 32810,
  FCM_SHOWFRAMES = 32812,  // first and last frame
  FCM_FIT = 32813,
  FCM_CENTRE = 32814,
  FCM_ZOOMINPLACE = 32815,  // down
  FCM_SHOWCURVE = 32816,
};

// Notification codes of the WM_COMMAND that the control sends to its parent.
enum FrqCtrlNotification : UINT {
  FCN_FRAMECHANGED = 0x100,    // lParam: the column, -1 for all
  FCN_ZOOMCHANGED = 0x101,     // lParam: the zoom step
  FCN_AVERAGECHANGED = 0x102,  // lParam: the control, as in the rows below
  FCN_THUMBNAILCLICKED = 0x103,
  FCN_SELECTIONCHANGED = 0x104,
};

// Sends to one control. A null window is allowed: what is sent to it is lost, and what is asked of it is 0.
class FrqCtrlSender {
 public:
  explicit FrqCtrlSender(HWND control) : control_(control) {}

  // The maps are not owned; `reference` is the last saved state, drawn behind. Repaint is the caller's.
  void SetMaps(const FrqMap* reference, FrqMap* map) const { Send(FCM_SETMAPS, Pointer(reference), Pointer(map)); }
  // Sets what the control writes through; not owned, null for its own again, which writes straight into the map. A drag
  // ends. A call on the control's thread, and no message, which any other program might send.
  void SetEditing(MapEditing* editing) const;
  // Sets what the recording offers to the pencil; not owned, null for nothing. Likewise no message.
  void SetPitches(WavePitches* pitches) const;
  void SetScrollColumn(SampleCount column) const { Send(FCM_SETSCROLLCOLUMN, static_cast<WPARAM>(column)); }
  // Scrolls so that these frames are seen; where they are seen already nothing moves.
  void ShowFrames(SampleCount first, SampleCount last) const { Send(FCM_SHOWFRAMES, static_cast<WPARAM>(first), last); }
  // Shows the view made for the curve (TableModel).
  void Fit() const { Send(FCM_FIT); }
  void Centre() const { Send(FCM_CENTRE); }
  // Brings the curve into view, once a view was made for one; a table that was scrolled by hand alone stays as it is.
  void ShowCurve() const { Send(FCM_SHOWCURVE); }
  void ZoomInPlace(bool down) const { Send(FCM_ZOOMINPLACE, down); }
  void SetSelection(std::span<const int> frames) const {
    Send(FCM_SETSELECTION, frames.size(), frames.empty() ? 0 : Pointer(frames.data()));
  }
  void StepZoom(bool down) const { Send(FCM_STEPZOOM, down); }
  int ZoomCount() const { return static_cast<int>(Send(FCM_GETZOOMCOUNT)); }
  int Zoom() const { return static_cast<int>(Send(FCM_GETZOOM)); }
  void SetZoom(int zoom) const { Send(FCM_SETZOOM, static_cast<WPARAM>(zoom)); }
  void DropLayer() const { Send(FCM_DROPLAYER); }
  void EvictLayer() const { Send(FCM_EVICTLAYER); }
  void SetThumbnail(bool on) const { Send(FCM_SETTHUMBNAIL, on); }
  void SetAutoSize(bool on) const { Send(FCM_SETAUTOSIZE, on); }
  void SetLayerList(LayerEvictionList* list) const { Send(FCM_SETLAYERLIST, 0, Pointer(list)); }
  // Frequencies [Hz] that a stroke may give.
  void SetLimits(double highest, double lowest) const { Send(FCM_SETLIMITS, Pointer(&highest), Pointer(&lowest)); }
  void SetReadOnly(bool readOnly) const { Send(FCM_SETREADONLY, readOnly); }
  void SetWavePath(const wchar_t* path) const { Send(FCM_SETWAVEPATH, 0, Pointer(path)); }
  void SetKind(FrqType kind) const { Send(FCM_SETKIND, static_cast<WPARAM>(kind)); }
  void SetViewMode(int mode) const { Send(FCM_SETVIEWMODE, static_cast<WPARAM>(mode)); }
  int ViewMode() const { return static_cast<int>(Send(FCM_GETVIEWMODE)); }
  void SetBrightness(int brightness) const { Send(FCM_SETBRIGHTNESS, static_cast<WPARAM>(brightness)); }
  int Brightness() const { return static_cast<int>(Send(FCM_GETBRIGHTNESS)); }
  void SetColorTable(int table) const { Send(FCM_SETCOLORTABLE, static_cast<WPARAM>(table)); }
  int ColorTable() const { return static_cast<int>(Send(FCM_GETCOLORTABLE)); }

  void RepaintNow() const {
    if (!control_) return;  // a null window would stand for the whole desktop
    InvalidateRect(control_, nullptr, TRUE);
    UpdateWindow(control_);
  }

 private:
  template <typename T>
  static LPARAM Pointer(T* pointer) {
    return reinterpret_cast<LPARAM>(pointer);
  }
  LRESULT Send(FrqCtrlMessage message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return control_ ? SendMessageW(control_, message, wParam, lParam) : 0;
  }

  HWND control_;
};

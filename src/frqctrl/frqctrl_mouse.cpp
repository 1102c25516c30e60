// CFrqCtrl: drawing, erasing and selecting with the mouse.
//
// A stroke writes into the map at once, and the parent is told of each frame. It may take the map away in answer, so
// that nothing of it is kept over a notification.
#include <windows.h>
#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

#include "frqctrl/frqctrl.h"
#include "resources/ids.h"

namespace {

bool IsControlDown() {
  return GetAsyncKeyState(VK_CONTROL) < 0;
}

HCURSOR OwnCursor(int id) {
  return LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id));
}

bool Contains(const RECT& rect, int x, int y) {
  return PtInRect(&rect, {x, y}) != 0;
}

// Where a straight stroke is after `step` of `count` columns; both are negative to the left.
int AlongStroke(int from, int to, SampleCount step, SampleCount count) {
  return static_cast<int>(std::int64_t{to - from} * step / count + from);
}

}  // namespace

LRESULT CFrqCtrl::OnLButtonDown(WPARAM keys, int x, int y) {
  if (Drag == DragNone && !Geometry.ThumbnailMode && !ReadOnly) {
    SetFocus(Hwnd);
    if (Map) BeginLeftDrag(x, y);
  }
  return CCtrlBase::OnLButtonDown(keys, x, y);
}

void CFrqCtrl::BeginLeftDrag(int x, int y) {
  if (!Map->DerivedAverage && Contains(AverageGrip, x, y)) {
    BeginDrag(DragAverage);
    return;
  }
  const SampleCount column = Geometry.XToColumn(x, true, ColumnCount());
  if (column < 0) return;
  if (IsControlDown()) {
    BeginDrag(DragSelect);
    SelectAnchor = column;
    SelectColumns(column, column);
    ShowSelectionChange();
  } else {
    SetFrameFrequency(column, true, FrequencyAtY(y));
    BeginDrag(DragDraw);
  }
}

void CFrqCtrl::BeginDrag(DragMode mode) {
  SetCapture(Hwnd);
  Captured = true;
  Drag = mode;
}

// Either button's release ends any drag.
void CFrqCtrl::EndDrag() {
  if (!Captured) return;
  ReleaseCapture();
  Captured = false;
  Drag = DragNone;
}

LRESULT CFrqCtrl::OnLButtonUp(WPARAM keys, int x, int y) {
  TellThumbnailClick(LeftButtonDown);
  EndDrag();
  return CCtrlBase::OnLButtonUp(keys, x, y);
}

// A control that refuses edits by the left button can be erased in all the same; users rely on it.
LRESULT CFrqCtrl::OnRButtonDown(WPARAM keys, int x, int y) {
  if (Drag == DragNone && !Geometry.ThumbnailMode) {
    SetFocus(Hwnd);
    const SampleCount column = Geometry.XToColumn(x, true, ColumnCount());
    if (column >= 0) {
      SetCursor(OwnCursor(IDC_CURSOR_ERASE));
      SetFrameFrequency(column, true, FrqNoPitch);
      BeginDrag(DragErase);
    }
  }
  return CCtrlBase::OnRButtonDown(keys, x, y);
}

LRESULT CFrqCtrl::OnRButtonUp(WPARAM keys, int x, int y) {
  TellThumbnailClick(RightButtonDown);
  EndDrag();
  return CCtrlBase::OnRButtonUp(keys, x, y);
}

void CFrqCtrl::TellThumbnailClick(int pressed) {
  if (Geometry.ThumbnailMode && pressed == 1) Notify(FCN_THUMBNAILCLICKED, reinterpret_cast<LPARAM>(Hwnd.load()));
}

LRESULT CFrqCtrl::OnMouseMove(WPARAM keys, int x, int y) {
  if (!Geometry.ThumbnailMode) {
    if (Captured) {
      FollowDrag(x, y);
    } else if (!LeftButtonDown && !RightButtonDown) {
      UpdateCursor();
    }
  }
  return CCtrlBase::OnMouseMove(keys, x, y);
}

void CFrqCtrl::FollowDrag(int x, int y) {
  switch (Drag) {
    case DragDraw:
      SetCursor(OwnCursor(IDC_CURSOR_PEN));
      DrawStroke(MouseX, MouseY, x, y, false);
      break;
    case DragErase:
      SetCursor(OwnCursor(IDC_CURSOR_ERASE));
      DrawStroke(MouseX, MouseY, x, y, true);
      break;
    case DragAverage:
      SetCursor(LoadCursorW(nullptr, IDC_SIZENS));
      SetAverage(y);
      break;
    case DragSelect:
      SetCursor(OwnCursor(IDC_CURSOR_SELECT));
      ExtendSelection(x);
      break;
    case DragNone: break;
  }
}

double CFrqCtrl::FrequencyAtY(int y) const {
  return Geometry.YToFrequency(y, Limits, Map && Map->SinglePrecision);
}

// The edited frame becomes the selection.
void CFrqCtrl::SetFrameFrequency(SampleCount column, bool repaint, double frequency) {
  if (!Map) return;
  const SampleCount position = Map->PositionOf(column);
  if (position < 0) return;  // with a hop out of range no position leads to the frame
  Map->SetFrequency(position, frequency);
  SelectColumns(column, column);
  if (repaint) Refresh();
  Notify(FCN_FRAMECHANGED, column);
  if (Map && Map->DerivedAverage) Notify(FCN_AVERAGECHANGED, reinterpret_cast<LPARAM>(Hwnd.load()));
}

// Between two messages of the mouse all columns between the two points are set, so that a fast stroke leaves no gap.
void CFrqCtrl::DrawStroke(int x0, int y0, int x1, int y1, bool erase) {
  const SampleCount first = Geometry.XToColumn(x0, false, 0);
  const SampleCount last = Geometry.XToColumn(x1, false, 0);
  if (first == last) {
    // A stroke that stays in the last column does not change it; one that comes from the column before does.
    if (last >= 0 && last < ColumnCount() - 1) SetFrameFrequency(last, true, erase ? FrqNoPitch : FrequencyAtY(y1));
    return;
  }
  const SampleCount step = last > first ? 1 : -1;
  for (SampleCount column = first;; column += step) {
    if (column >= 0 && column < ColumnCount()) {
      const int y = AlongStroke(y0, y1, column - first, last - first);
      SetFrameFrequency(column, false, erase ? FrqNoPitch : FrequencyAtY(y));
    }
    if (column == last) break;
  }
  Refresh();
}

void CFrqCtrl::SetAverage(int y) {
  if (!Map) return;
  Map->Average = std::max(FrequencyAtY(y), FrqNoPitch);
  RebuildNow();
  Notify(FCN_AVERAGECHANGED, reinterpret_cast<LPARAM>(Hwnd.load()));
}

// On the label strip alone, where the average line can be taken hold of: the whole map becomes one pitch.
LRESULT CFrqCtrl::OnLButtonDblClk(WPARAM, int x, int y) {
  if (ReadOnly || !Map || x < AverageGrip.left || x >= AverageGrip.right) return 0;
  const double frequency = std::max(FrequencyAtY(y), FrqNoPitch);
  Map->Average = frequency;
  for (SampleCount i = 0; i < Map->FrameCount; ++i) Map->SetFrequency(Map->PositionOf(i), frequency);
  Map->ClearSelection();
  RebuildNow();
  Notify(FCN_AVERAGECHANGED, reinterpret_cast<LPARAM>(Hwnd.load()));
  Notify(FCN_FRAMECHANGED, -1);
  return 0;
}

// Columns are told as sample positions, since a map's frames are reached by those alone.
void CFrqCtrl::SelectColumns(SampleCount first, SampleCount last) {
  Map->ClearSelection();
  const SampleCount from = Map->PositionOf(first);
  const SampleCount to = Map->PositionOf(last);
  if (from >= 0 && to >= 0) Map->SelectRange(from, to, false);
}

void CFrqCtrl::ShowSelectionChange() {
  RebuildNow();
  Notify(FCN_SELECTIONCHANGED, reinterpret_cast<LPARAM>(Hwnd.load()));
}

void CFrqCtrl::ExtendSelection(int x) {
  if (ColumnCount() == 0) return;
  const SampleCount column = std::clamp(Geometry.XToColumn(x, false, 0), 0, ColumnCount() - 1);
  SelectColumns(SelectAnchor, column);
  EnsureColumnVisible(column);
  ShowSelectionChange();
}

// What the pointer can do where it stands. The class has no cursor of its own.
void CFrqCtrl::UpdateCursor() {
  POINT point{};
  GetCursorPos(&point);
  RECT window{};
  GetWindowRect(Hwnd, &window);
  if (!PtInRect(&window, point)) return;
  SetCursor(CursorAt(point));
}

HCURSOR CFrqCtrl::CursorAt(POINT screen) const {
  if (!ReadOnly && WindowFromPoint(screen) == Hwnd) {
    POINT point = screen;
    ScreenToClient(Hwnd, &point);
    if (Map && !Map->DerivedAverage && Contains(AverageGrip, point.x, point.y)) {
      return LoadCursorW(nullptr, IDC_SIZENS);
    }
    const PixelRect& plot = Geometry.PlotRect;
    if (Contains({plot.left, plot.top, plot.right, plot.bottom}, point.x, point.y)) {
      return OwnCursor(IsControlDown() ? IDC_CURSOR_SELECT : IDC_CURSOR_PEN);
    }
  }
  return LoadCursorW(nullptr, IDC_ARROW);
}

// Pressing Ctrl moves no mouse, so that only a timer can bring the cursor of a selection.
LRESULT CFrqCtrl::OnTimer(UINT_PTR, LPARAM) {
  if (!Captured && !Geometry.ThumbnailMode) UpdateCursor();
  return 0;
}

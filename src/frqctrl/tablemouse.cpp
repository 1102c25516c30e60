#include "frqctrl/tablemouse.h"

#include <algorithm>
#include <cstdint>
#include <mutex>

#include "resources/ids.h"

namespace {

bool IsControlDown() {
  return GetAsyncKeyState(VK_CONTROL) < 0;
}

HCURSOR OwnCursor(int id) {
  return LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id));
}

// The place of a straight stroke after `step` of `count` columns; both are negative to the left.
int AlongStroke(int from, int to, SampleCount step, SampleCount count) {
  return static_cast<int>(std::int64_t{to - from} * step / count + from);
}

}  // namespace

void TableMouse::PressLeft(POINT point) {
  if (!IsDragging() && !Model.Geometry.ThumbnailMode && !Model.ReadOnly) {
    SetFocus(Host.Window());
    BeginLeftDrag(point);
  }
  Last = point;
}

void TableMouse::BeginLeftDrag(POINT point) {
  const TableSpot spot = SpotAt(point);
  if (spot.Place == TableSpot::Grip) {
    Capture(DragAverage);
  } else if (spot.Column >= 0 && IsControlDown()) {
    BeginSelecting(spot.Column);
  } else if (spot.Column >= 0) {
    if (WriteFrame(spot.Column, PencilAt(spot.Column, point.y), StrokeKind::Draw, true)) Capture(DragDraw);
  }
}

// A control that refuses edits by the left button can be erased in all the same; users rely on it.
void TableMouse::PressRight(POINT point) {
  if (IsDragging() || Model.Geometry.ThumbnailMode) return;
  SetFocus(Host.Window());
  const TableSpot spot = SpotAt(point);
  if (spot.Column < 0) return;
  SetCursor(OwnCursor(IDC_CURSOR_ERASE));
  if (WriteFrame(spot.Column, FrqNoPitch, StrokeKind::Erase, true)) Capture(DragErase);
}

TableSpot TableMouse::SpotAt(POINT point) const {
  const std::lock_guard reading(Host.Editing());
  return Model.SpotAt(point.x, point.y);
}

SampleCount TableMouse::NearestColumn(int x) const {
  const std::lock_guard reading(Host.Editing());
  return Model.NearestColumn(x);
}

void TableMouse::Capture(DragMode mode) {
  SetCapture(Host.Window());
  Mode = mode;
}

void TableMouse::Forget() {
  Mode = DragNone;
  if (!StrokeOpen) return;
  StrokeOpen = false;
  Host.Editing().EndStroke();
}

void TableMouse::EndDrag() {
  const bool captured = IsDragging();
  Forget();  // first, as the system tells of the released capture at once
  if (captured) ReleaseCapture();
}

void TableMouse::OnCaptureChanged(HWND owner) {
  if (owner != Host.Window()) Forget();
}

void TableMouse::Move(POINT point, bool pressed) {
  if (!Model.Geometry.ThumbnailMode) {
    if (IsDragging()) {
      Follow(point);
    } else if (!pressed) {
      UpdateCursor();
    }
  }
  Last = point;
}

void TableMouse::Follow(POINT point) {
  switch (Mode) {
    case DragDraw:
      SetCursor(OwnCursor(IDC_CURSOR_PEN));
      WriteStroke(Last, point, StrokeKind::Draw);
      break;
    case DragErase:
      SetCursor(OwnCursor(IDC_CURSOR_ERASE));
      WriteStroke(Last, point, StrokeKind::Erase);
      break;
    case DragAverage:
      SetCursor(LoadCursorW(nullptr, IDC_SIZENS));
      WriteKey(point.y);
      break;
    case DragSelect:
      SetCursor(OwnCursor(IDC_CURSOR_SELECT));
      ExtendSelection(point.x);
      break;
    case DragNone: break;
  }
}

void TableMouse::OpenStroke(StrokeKind kind) {
  if (StrokeOpen) return;
  StrokeOpen = true;
  Host.Editing().BeginStroke(*Model.Map, kind);
}

// With a hop out of range no position leads to the frame.
bool TableMouse::IsReachable(SampleCount column) const {
  const std::lock_guard reading(Host.Editing());
  return Model.Map->PositionOf(column) >= 0;
}

bool TableMouse::IsKeyDerived() const {
  const std::lock_guard reading(Host.Editing());
  return Model.Map->DerivedAverage;
}

SampleCount TableMouse::ColumnCount() const {
  const std::lock_guard reading(Host.Editing());
  return Model.ColumnCount();
}

double TableMouse::FrequencyAtY(int y) const {
  const std::lock_guard reading(Host.Editing());
  return Model.FrequencyAtY(y);
}

double TableMouse::PencilAt(SampleCount column, int y) const {
  return Pitches.Snapped(column, FrequencyAtY(y));
}

// The edited frame becomes the selection.
bool TableMouse::WriteFrame(SampleCount column, double hz, StrokeKind kind, bool repaint) {
  FrqMap& map = *Model.Map;
  if (!IsReachable(column)) return true;
  OpenStroke(kind);
  if (!Host.Editing().SetFrequency(map, column, hz)) {
    EndDrag();
    return false;
  }
  // The write's notification may have brought another map, or the end of the drag.
  if (!StrokeOpen || Model.Map != &map) return false;
  Host.Editing().SelectRange(map, column, column);
  if (repaint) Host.Repaint();
  Host.Notify(FCN_FRAMECHANGED, column);
  if (Model.Map && IsKeyDerived()) Host.NotifySelf(FCN_AVERAGECHANGED);
  return StrokeOpen;
}

// Between two messages of the mouse all columns between the two points are set, so that a fast stroke leaves no gap.
void TableMouse::WriteStroke(POINT from, POINT to, StrokeKind kind) {
  const auto frequencyAt = [&](SampleCount column, int y) {
    return kind == StrokeKind::Erase ? FrqNoPitch : PencilAt(column, y);
  };
  const SampleCount first = Model.Geometry.XToColumn(from.x, false, 0);
  const SampleCount last = Model.Geometry.XToColumn(to.x, false, 0);
  if (first == last) {
    // A stroke that stays in the last column does not change it; one that comes from the column before does.
    if (last >= 0 && last < ColumnCount() - 1) WriteFrame(last, frequencyAt(last, to.y), kind, true);
    return;
  }
  const SampleCount step = last > first ? 1 : -1;
  const SampleCount count = ColumnCount();
  for (SampleCount column = first;; column += step) {
    if (column >= 0 && column < count) {
      const int y = AlongStroke(from.y, to.y, column - first, last - first);
      if (!WriteFrame(column, frequencyAt(column, y), kind, false)) break;
    }
    if (column == last) break;
  }
  Host.Repaint();
}

void TableMouse::WriteKey(int y) {
  FrqMap& map = *Model.Map;
  OpenStroke(StrokeKind::Average);
  if (!Host.Editing().SetKey(map, std::max(FrequencyAtY(y), FrqNoPitch))) {
    EndDrag();
    return;
  }
  if (Model.Map != &map) return;
  Host.Rebuild();
  Host.NotifySelf(FCN_AVERAGECHANGED);
}

// A double click on the label strip, where the average line can be taken hold of, makes the whole map one pitch.
void TableMouse::DoubleClick(POINT point) {
  if (Model.ReadOnly || !Model.Map || !Model.IsOverLabels(point.x)) return;
  FrqMap& map = *Model.Map;
  Host.Editing().Flatten(map, std::max(FrequencyAtY(point.y), FrqNoPitch));
  if (Model.Map != &map) return;
  Host.Rebuild();
  Host.NotifySelf(FCN_AVERAGECHANGED);
  Host.Notify(FCN_FRAMECHANGED, -1);
}

void TableMouse::BeginSelecting(SampleCount column) {
  Capture(DragSelect);
  SelectAnchor = column;
  Host.Editing().SelectRange(*Model.Map, column, column);
  TellSelection();
}

void TableMouse::ExtendSelection(int x) {
  const SampleCount column = NearestColumn(x);
  if (column < 0) return;
  Host.Editing().SelectRange(*Model.Map, SelectAnchor, column);
  Viewport.EnsureColumnVisible(column);
  TellSelection();
}

void TableMouse::TellSelection() {
  Host.Rebuild();
  Host.NotifySelf(FCN_SELECTIONCHANGED);
}

void TableMouse::UpdateCursor() const {
  POINT point{};
  GetCursorPos(&point);
  RECT window{};
  GetWindowRect(Host.Window(), &window);
  if (PtInRect(&window, point)) SetCursor(CursorAt(point));
}

HCURSOR TableMouse::CursorAt(POINT screen) const {
  if (!Model.ReadOnly && WindowFromPoint(screen) == Host.Window()) {
    POINT point = screen;
    ScreenToClient(Host.Window(), &point);
    switch (SpotAt(point).Place) {
      case TableSpot::Grip: return LoadCursorW(nullptr, IDC_SIZENS);
      case TableSpot::Plot: return OwnCursor(IsControlDown() ? IDC_CURSOR_SELECT : IDC_CURSOR_PEN);
      case TableSpot::Nothing: break;
    }
  }
  return LoadCursorW(nullptr, IDC_ARROW);
}

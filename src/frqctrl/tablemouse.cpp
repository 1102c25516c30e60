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
  if (!IsDragging() && !model_.Geometry.ThumbnailMode && !model_.ReadOnly) {
    SetFocus(host_.Window());
    BeginLeftDrag(point);
  }
  last_ = point;
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
  if (IsDragging() || model_.Geometry.ThumbnailMode) return;
  SetFocus(host_.Window());
  const TableSpot spot = SpotAt(point);
  if (spot.Column < 0) return;
  SetCursor(OwnCursor(IDC_CURSOR_ERASE));
  if (WriteFrame(spot.Column, FrqNoPitch, StrokeKind::Erase, true)) Capture(DragErase);
}

TableSpot TableMouse::SpotAt(POINT point) const {
  const std::lock_guard reading(host_.Editing());
  return model_.SpotAt(point.x, point.y);
}

SampleCount TableMouse::NearestColumn(int x) const {
  const std::lock_guard reading(host_.Editing());
  return model_.NearestColumn(x);
}

void TableMouse::Capture(DragMode mode) {
  SetCapture(host_.Window());
  mode_ = mode;
}

void TableMouse::Forget() {
  mode_ = DragNone;
  if (!StrokeOpen) return;
  StrokeOpen = false;
  host_.Editing().EndStroke();
}

void TableMouse::EndDrag() {
  const bool captured = IsDragging();
  Forget();  // first, as the system tells of the released capture at once
  if (captured) ReleaseCapture();
}

void TableMouse::OnCaptureChanged(HWND owner) {
  if (owner != host_.Window()) Forget();
}

void TableMouse::Move(POINT point, bool pressed) {
  if (!model_.Geometry.ThumbnailMode) {
    if (IsDragging()) {
      Follow(point);
    } else if (!pressed) {
      UpdateCursor();
    }
  }
  last_ = point;
}

void TableMouse::Follow(POINT point) {
  switch (mode_) {
    case DragDraw:
      SetCursor(OwnCursor(IDC_CURSOR_PEN));
      WriteStroke(last_, point, StrokeKind::Draw);
      break;
    case DragErase:
      SetCursor(OwnCursor(IDC_CURSOR_ERASE));
      WriteStroke(last_, point, StrokeKind::Erase);
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
  host_.Editing().BeginStroke(*model_.Map, kind);
}

// With a hop out of range no position leads to the frame.
bool TableMouse::IsReachable(SampleCount column) const {
  const std::lock_guard reading(host_.Editing());
  return model_.Map->PositionOf(column) >= 0;
}

bool TableMouse::IsKeyDerived() const {
  const std::lock_guard reading(host_.Editing());
  return model_.Map->DerivedAverage;
}

SampleCount TableMouse::ColumnCount() const {
  const std::lock_guard reading(host_.Editing());
  return model_.ColumnCount();
}

double TableMouse::FrequencyAtY(int y) const {
  const std::lock_guard reading(host_.Editing());
  return model_.FrequencyAtY(y);
}

double TableMouse::PencilAt(SampleCount column, int y) const {
  return pitches_.Snapped(column, FrequencyAtY(y));
}

// The edited frame becomes the selection.
bool TableMouse::WriteFrame(SampleCount column, double hz, StrokeKind kind, bool repaint) {
  FrqMap& map = *model_.Map;
  if (!IsReachable(column)) return true;
  OpenStroke(kind);
  if (!host_.Editing().SetFrequency(map, column, hz)) {
    EndDrag();
    return false;
  }
  // The write's notification may have brought another map, or the end of the drag.
  if (!StrokeOpen || model_.Map != &map) return false;
  host_.Editing().SelectRange(map, column, column);
  if (repaint) host_.Repaint();
  host_.Notify(FCN_FRAMECHANGED, column);
  if (model_.Map && IsKeyDerived()) host_.NotifySelf(FCN_AVERAGECHANGED);
  return StrokeOpen;
}

// Between two messages of the mouse all columns between the two points are set, so that a fast stroke leaves no gap.
void TableMouse::WriteStroke(POINT from, POINT to, StrokeKind kind) {
  const auto frequencyAt = [&](SampleCount column, int y) {
    return kind == StrokeKind::Erase ? FrqNoPitch : PencilAt(column, y);
  };
  const SampleCount first = model_.Geometry.XToColumn(from.x, false, 0);
  const SampleCount last = model_.Geometry.XToColumn(to.x, false, 0);
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
  host_.Repaint();
}

void TableMouse::WriteKey(int y) {
  FrqMap& map = *model_.Map;
  OpenStroke(StrokeKind::Average);
  if (!host_.Editing().SetKey(map, std::max(FrequencyAtY(y), FrqNoPitch))) {
    EndDrag();
    return;
  }
  if (model_.Map != &map) return;
  host_.Rebuild();
  host_.NotifySelf(FCN_AVERAGECHANGED);
}

// A double click on the label strip, where the average line can be taken hold of, makes the whole map one pitch.
void TableMouse::DoubleClick(POINT point) {
  if (model_.ReadOnly || !model_.Map || !model_.IsOverLabels(point.x)) return;
  FrqMap& map = *model_.Map;
  host_.Editing().Flatten(map, std::max(FrequencyAtY(point.y), FrqNoPitch));
  if (model_.Map != &map) return;
  host_.Rebuild();
  host_.NotifySelf(FCN_AVERAGECHANGED);
  host_.Notify(FCN_FRAMECHANGED, -1);
}

void TableMouse::BeginSelecting(SampleCount column) {
  Capture(DragSelect);
  SelectAnchor = column;
  host_.Editing().SelectRange(*model_.Map, column, column);
  TellSelection();
}

void TableMouse::ExtendSelection(int x) {
  const SampleCount column = NearestColumn(x);
  if (column < 0) return;
  host_.Editing().SelectRange(*model_.Map, SelectAnchor, column);
  viewport_.EnsureColumnVisible(column);
  TellSelection();
}

void TableMouse::TellSelection() {
  host_.Rebuild();
  host_.NotifySelf(FCN_SELECTIONCHANGED);
}

void TableMouse::UpdateCursor() const {
  POINT point{};
  GetCursorPos(&point);
  RECT window{};
  GetWindowRect(host_.Window(), &window);
  if (PtInRect(&window, point)) SetCursor(CursorAt(point));
}

HCURSOR TableMouse::CursorAt(POINT screen) const {
  if (!model_.ReadOnly && WindowFromPoint(screen) == host_.Window()) {
    POINT point = screen;
    ScreenToClient(host_.Window(), &point);
    switch (SpotAt(point).Place) {
      case TableSpot::Grip: return LoadCursorW(nullptr, IDC_SIZENS);
      case TableSpot::Plot: return OwnCursor(IsControlDown() ? IDC_CURSOR_SELECT : IDC_CURSOR_PEN);
      case TableSpot::Nothing: break;
    }
  }
  return LoadCursorW(nullptr, IDC_ARROW);
}

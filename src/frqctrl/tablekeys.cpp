#include "frqctrl/tablekeys.h"

#include <algorithm>
#include <mutex>
#include <span>

#include "frqmap/mapediting.h"

void TableKeys::OnFocus(bool has) {
  const bool isShown = Model.CaretColumn >= 0;
  if (has && GetKeyState(VK_TAB) < 0) {
    ShowCaret();
  } else if (!has) {
    Model.CaretColumn = -1;
  }
  if (isShown != (Model.CaretColumn >= 0)) Host.Repaint();
}

void TableKeys::ShowCaret() {
  if (Model.CaretColumn < 0) Model.CaretColumn = Anchor = StartColumn();
}

void TableKeys::Forget() {
  if (Model.CaretColumn >= 0) Model.CaretColumn = Anchor = StartColumn();
}

SampleCount TableKeys::StartColumn() const {
  const std::lock_guard reading(Host.Editing());
  const SampleCount count = Model.ColumnCount();
  if (count == 0) return -1;
  const SampleCount first = std::clamp(Model.Geometry.ScrollColumn, 0, count - 1);
  const SampleCount columns = std::clamp(Model.ColumnsInView(), 0, count - first);
  const auto inView = std::span(Model.Map->Frames).subspan(first, columns);
  const auto selected = std::ranges::find_if(inView, [](const FrqFrame& frame) { return frame.Selected; });
  return selected == inView.end() ? first : first + static_cast<SampleCount>(selected - inView.begin());
}

bool TableKeys::OnKey(WPARAM key, bool isShift, bool isControl) {
  switch (key) {
    case VK_UP:
    case VK_DOWN: Viewport.OnWheel(0, key == VK_UP ? TableModel::WheelNotch : -TableModel::WheelNotch); return true;
    case VK_LEFT:
    case VK_RIGHT:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_HOME:
    case VK_END:
      ShowCaret();
      if (const SampleCount column = Target(key, isControl); column >= 0) MoveTo(column, isShift);
      return true;
    default: return false;
  }
}

// -1 without a column.
SampleCount TableKeys::Target(WPARAM key, bool isControl) const {
  constexpr SampleCount kBar = TableModel::BarInterval;
  const std::lock_guard reading(Host.Editing());
  const SampleCount last = Model.ColumnCount() - 1;
  const SampleCount caret = std::clamp(Model.CaretColumn, 0, std::max(last, 0));
  const SampleCount page = std::max(Model.ColumnsInView() - 1, 1);
  switch (key) {
    case VK_LEFT: return std::min(last, std::max(0, isControl ? (caret - 1) / kBar * kBar : caret - 1));
    case VK_RIGHT: return std::min(last, isControl ? caret / kBar * kBar + kBar : caret + 1);
    case VK_PRIOR: return std::min(last, std::max(0, caret - page));
    case VK_NEXT: return std::min(last, caret + page);
    case VK_HOME: return std::min(last, 0);
    default: return last;
  }
}

void TableKeys::MoveTo(SampleCount column, bool extend) {
  if (!extend || Anchor < 0) Anchor = column;
  Model.CaretColumn = column;
  Host.Editing().SelectRange(*Model.Map, Anchor, column);
  Viewport.EnsureColumnVisible(column);
  Host.Rebuild();
  Host.NotifySelf(FCN_SELECTIONCHANGED);
}

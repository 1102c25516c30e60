#include "frqctrl/tablekeys.h"

#include <algorithm>
#include <mutex>
#include <span>

#include "frqmap/mapediting.h"

void TableKeys::OnFocus(bool has) {
  const bool isShown = model_.CaretColumn >= 0;
  if (has && GetKeyState(VK_TAB) < 0) {
    ShowCaret();
  } else if (!has) {
    model_.CaretColumn = -1;
  }
  if (isShown != (model_.CaretColumn >= 0)) host_.Repaint();
}

void TableKeys::ShowCaret() {
  if (model_.CaretColumn < 0) model_.CaretColumn = anchor_ = StartColumn();
}

void TableKeys::Forget() {
  if (model_.CaretColumn >= 0) model_.CaretColumn = anchor_ = StartColumn();
}

SampleCount TableKeys::StartColumn() const {
  const std::lock_guard reading(host_.Editing());
  const SampleCount count = model_.ColumnCount();
  if (count == 0) return -1;
  const SampleCount first = std::clamp(model_.Geometry.ScrollColumn, 0, count - 1);
  const SampleCount columns = std::clamp(model_.ColumnsInView(), 0, count - first);
  const auto inView = std::span(model_.Map->Frames).subspan(first, columns);
  const auto selected = std::ranges::find_if(inView, [](const FrqFrame& frame) { return frame.Selected; });
  return selected == inView.end() ? first : first + static_cast<SampleCount>(selected - inView.begin());
}

bool TableKeys::OnKey(WPARAM key, bool isShift, bool isControl) {
  switch (key) {
    case VK_UP:
    case VK_DOWN: viewport_.OnWheel(0, key == VK_UP ? TableModel::WheelNotch : -TableModel::WheelNotch); return true;
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
  const std::lock_guard reading(host_.Editing());
  const SampleCount last = model_.ColumnCount() - 1;
  const SampleCount caret = std::clamp(model_.CaretColumn, 0, std::max(last, 0));
  const SampleCount page = std::max(model_.ColumnsInView() - 1, 1);
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
  if (!extend || anchor_ < 0) anchor_ = column;
  model_.CaretColumn = column;
  host_.Editing().SelectRange(*model_.Map, anchor_, column);
  viewport_.EnsureColumnVisible(column);
  host_.Rebuild();
  host_.NotifySelf(FCN_SELECTIONCHANGED);
}

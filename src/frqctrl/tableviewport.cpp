#include "frqctrl/tableviewport.h"

#include <mutex>

#include "frqctrl/stepscroll.h"
#include "frqmap/mapediting.h"

namespace {

void SetUpBar(HWND window, int bar, int last, int page, int position) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
  info.nMax = last;
  info.nPage = static_cast<UINT>(page);
  info.nPos = position;
  SetScrollInfo(window, bar, &info, TRUE);
}

}  // namespace

void TableViewport::SetUpBars(SampleCount columns) {
  constexpr int page = TableModel::BarInterval;
  SetUpBar(host_.Window(), SB_HORZ, page - 1 + columns, page, 0);
  // The page takes the last positions away, which leaves kBottomNote as the lowest note.
  SetUpBar(host_.Window(), SB_VERT, 100, 6, model_.VerticalPosition());
}

void TableViewport::SetBarPosition(int bar, int position) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_POS;
  info.nPos = position;
  SetScrollInfo(host_.Window(), bar, &info, TRUE);
}

void TableViewport::SetScrollColumn(SampleCount column) {
  model_.Geometry.ScrollColumn = column;
  SetBarPosition(SB_HORZ, column);
  host_.Rebuild();
}

void TableViewport::SetZoom(int zoom) {
  model_.SetZoom(zoom);
  host_.Rebuild();
}

void TableViewport::StepZoom(bool down) {
  SetZoom(down ? model_.Geometry.Zoom - 1 : model_.Geometry.Zoom + 1);
  host_.Notify(FCN_ZOOMCHANGED, model_.Geometry.Zoom);
}

void TableViewport::OnScroll(int bar, UINT code) {
  const auto position = StepScroll(host_.Window(), bar, code);
  if (!position) return;
  if (bar == SB_HORZ) model_.Geometry.ScrollColumn = *position;
  if (bar == SB_VERT) model_.SetVerticalPosition(*position);
  host_.Rebuild();
}

// One notch is also one step of the zoom. The keys are compared as a whole: with a mouse button down the wheel does
// nothing.
void TableViewport::OnWheel(WPARAM keys, int delta) {
  if (keys == MK_SHIFT || model_.Geometry.ThumbnailMode) {
    model_.ScrollColumnsByWheel(delta);
    host_.Rebuild();
    SetBarPosition(SB_HORZ, model_.Geometry.ScrollColumn);
  } else if (keys == MK_CONTROL) {
    StepZoom(delta < 0);
  } else if (keys == 0) {
    model_.ScrollNotesByWheel(delta);
    host_.Rebuild();
    SetBarPosition(SB_VERT, model_.VerticalPosition());
  }
}

void TableViewport::ShowFrames(SampleCount first, SampleCount last) {
  bool moves = false;
  {
    const std::lock_guard reading(host_.Editing());
    moves = model_.ScrollToFrames(first, last);
  }
  if (moves) ShowPlace();
}

void TableViewport::ShowPlace() {
  SetBarPosition(SB_HORZ, model_.Geometry.ScrollColumn);
  SetBarPosition(SB_VERT, model_.VerticalPosition());
  host_.Rebuild();
}

void TableViewport::Fit() {
  {
    const std::lock_guard reading(host_.Editing());
    if (!model_.Fit()) return;
  }
  ShowPlace();
  host_.Notify(FCN_ZOOMCHANGED, model_.Geometry.Zoom);
}

void TableViewport::Centre() {
  {
    const std::lock_guard reading(host_.Editing());
    if (!model_.Centre()) return;
  }
  ShowPlace();
}

void TableViewport::ZoomInPlace(bool down) {
  {
    const std::lock_guard reading(host_.Editing());
    if (!model_.ZoomInPlace(down)) return;
  }
  ShowPlace();
  host_.Notify(FCN_ZOOMCHANGED, model_.Geometry.Zoom);
}

void TableViewport::EnsureColumnVisible(SampleCount column) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_POS;
  GetScrollInfo(host_.Window(), SB_HORZ, &info);
  const auto first = model_.FirstColumnToShow(column, info.nPos);
  if (!first) return;
  SetBarPosition(SB_HORZ, *first);
  // The system limits what it is given.
  GetScrollInfo(host_.Window(), SB_HORZ, &info);
  model_.Geometry.ScrollColumn = info.nPos;
}

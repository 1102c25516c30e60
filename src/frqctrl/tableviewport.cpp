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
  SetUpBar(Host.Window(), SB_HORZ, page - 1 + columns, page, 0);
  // The page takes the last positions away, which leaves kBottomNote as the lowest note.
  SetUpBar(Host.Window(), SB_VERT, 100, 6, Model.VerticalPosition());
}

void TableViewport::SetBarPosition(int bar, int position) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_POS;
  info.nPos = position;
  SetScrollInfo(Host.Window(), bar, &info, TRUE);
}

void TableViewport::SetScrollColumn(SampleCount column) {
  Model.Geometry.ScrollColumn = column;
  SetBarPosition(SB_HORZ, column);
  Host.Rebuild();
}

void TableViewport::SetZoom(int zoom) {
  Model.SetZoom(zoom);
  Host.Rebuild();
}

void TableViewport::StepZoom(bool down) {
  SetZoom(down ? Model.Geometry.Zoom - 1 : Model.Geometry.Zoom + 1);
  Host.Notify(FCN_ZOOMCHANGED, Model.Geometry.Zoom);
}

void TableViewport::OnScroll(int bar, UINT code) {
  const auto position = StepScroll(Host.Window(), bar, code);
  if (!position) return;
  if (bar == SB_HORZ) Model.Geometry.ScrollColumn = *position;
  if (bar == SB_VERT) Model.SetVerticalPosition(*position);
  Host.Rebuild();
}

// One notch is also one step of the zoom. The keys are compared as a whole: with a mouse button down the wheel does
// nothing.
void TableViewport::OnWheel(WPARAM keys, int delta) {
  if (keys == MK_SHIFT || Model.Geometry.ThumbnailMode) {
    Model.ScrollColumnsByWheel(delta);
    Host.Rebuild();
    SetBarPosition(SB_HORZ, Model.Geometry.ScrollColumn);
  } else if (keys == MK_CONTROL) {
    StepZoom(delta < 0);
  } else if (keys == 0) {
    Model.ScrollNotesByWheel(delta);
    Host.Rebuild();
    SetBarPosition(SB_VERT, Model.VerticalPosition());
  }
}

void TableViewport::ShowFrames(SampleCount first, SampleCount last) {
  bool moves = false;
  {
    const std::lock_guard reading(Host.Editing());
    moves = Model.ScrollToFrames(first, last);
  }
  if (moves) ShowPlace();
}

void TableViewport::ShowPlace() {
  SetBarPosition(SB_HORZ, Model.Geometry.ScrollColumn);
  SetBarPosition(SB_VERT, Model.VerticalPosition());
  Host.Rebuild();
}

void TableViewport::Fit() {
  {
    const std::lock_guard reading(Host.Editing());
    if (!Model.Fit()) return;
  }
  ShowPlace();
  Host.Notify(FCN_ZOOMCHANGED, Model.Geometry.Zoom);
}

void TableViewport::Centre() {
  {
    const std::lock_guard reading(Host.Editing());
    if (!Model.Centre()) return;
  }
  ShowPlace();
}

void TableViewport::ZoomInPlace(bool down) {
  {
    const std::lock_guard reading(Host.Editing());
    if (!Model.ZoomInPlace(down)) return;
  }
  ShowPlace();
  Host.Notify(FCN_ZOOMCHANGED, Model.Geometry.Zoom);
}

void TableViewport::EnsureColumnVisible(SampleCount column) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_POS;
  GetScrollInfo(Host.Window(), SB_HORZ, &info);
  const auto first = Model.FirstColumnToShow(column, info.nPos);
  if (!first) return;
  SetBarPosition(SB_HORZ, *first);
  // The system limits what it is given.
  GetScrollInfo(Host.Window(), SB_HORZ, &info);
  Model.Geometry.ScrollColumn = info.nPos;
}

// CFrqCtrl: its scroll bars and the mouse wheel.
#include "frqctrl/frqctrl.h"

#include <algorithm>

#include "frqctrl/stepscroll.h"

namespace {

// The vertical bar counts downward from the top note.
int VerticalPosition(int bottomNote) {
  return kTopNote - bottomNote;
}

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

void CFrqCtrl::SetUpScrollBars(SampleCount columns) {
  SetUpBar(Hwnd, SB_HORZ, BarInterval - 1 + columns, BarInterval, 0);
  // The page takes the last positions away, which leaves kBottomNote as the lowest note.
  SetUpBar(Hwnd, SB_VERT, 100, 6, VerticalPosition(Geometry.BottomNote));
}

void CFrqCtrl::SetScrollPosition(int bar, int position) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_POS;
  info.nPos = position;
  SetScrollInfo(Hwnd, bar, &info, TRUE);
}

LRESULT CFrqCtrl::SetScrollColumn(SampleCount column) {
  Geometry.ScrollColumn = column;
  SetScrollPosition(SB_HORZ, column);
  RebuildNow();
  return 0;
}

LRESULT CFrqCtrl::OnHScroll(UINT code, int, HWND) {
  if (const auto position = StepScroll(Hwnd, SB_HORZ, code)) {
    Geometry.ScrollColumn = *position;
    RebuildNow();
  }
  return 0;
}

LRESULT CFrqCtrl::OnVScroll(UINT code, int, HWND scrollBar) {
  if (scrollBar && GetDlgCtrlID(scrollBar) == IDC_TABLE_TRACKBAR) {
    OnTrackbarMoved();
    return 0;
  }
  if (const auto position = StepScroll(Hwnd, SB_VERT, code)) {
    Geometry.BottomNote = kTopNote - *position;
    RebuildNow();
  }
  return 0;
}

LRESULT CFrqCtrl::OnMouseWheel(WPARAM keys, int x, int y, int delta) {
  const HWND parent = GetParent(Hwnd);
  POINT point{x, y};
  ScreenToClient(parent, &point);
  // The wheel belongs to what is under the pointer, not to what has the focus.
  const HWND under = ChildWindowFromPoint(parent, point);
  if (under == Hwnd) {
    ScrollByWheel(keys, delta);
  } else if (under) {
    PostMessageW(under, WM_MOUSEWHEEL, MAKEWPARAM(keys, delta), MAKELPARAM(x, y));
  }
  return 0;
}

// One notch, a delta of 120, is four columns, one semitone or one step of the zoom. The keys are compared as a whole:
// with a mouse button down the wheel does nothing.
void CFrqCtrl::ScrollByWheel(WPARAM keys, int delta) {
  if (keys == MK_SHIFT || Geometry.ThumbnailMode) {
    ScrollColumnsByWheel(delta);
  } else if (keys == MK_CONTROL) {
    StepZoom(delta < 0);
  } else if (keys == 0) {
    ScrollNotesByWheel(delta);
  }
}

void CFrqCtrl::ScrollColumnsByWheel(int delta) {
  const std::int64_t last = std::max(0, ColumnCount() - 1);
  // Counted wider, as the view may have been scrolled to any number.
  const std::int64_t column = std::int64_t{Geometry.ScrollColumn} - delta * 4 / WHEEL_DELTA;
  Geometry.ScrollColumn = static_cast<SampleCount>(std::clamp<std::int64_t>(column, 0, last));
  RebuildNow();
  SetScrollPosition(SB_HORZ, Geometry.ScrollColumn);
}

void CFrqCtrl::ScrollNotesByWheel(int delta) {
  Geometry.BottomNote = std::clamp(Geometry.BottomNote + delta / WHEEL_DELTA, kBottomNote, kTopNote);
  RebuildNow();
  SetScrollPosition(SB_VERT, VerticalPosition(Geometry.BottomNote));
}

// Scrolls so that a column at the edge of the plot, or beyond it, comes into view with two columns to spare.
void CFrqCtrl::EnsureColumnVisible(SampleCount column) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_POS;
  GetScrollInfo(Hwnd, SB_HORZ, &info);
  const int first = info.nPos;
  const auto visible = static_cast<int>((Geometry.PlotRect.right - Geometry.PlotRect.left) / Geometry.ColumnWidth());
  if (column > first + 3 && column < first + visible - 3) return;
  if (column < first) info.nPos = column - 2;
  if (column >= first + visible) info.nPos = column - visible + 2;
  SetScrollInfo(Hwnd, SB_HORZ, &info, TRUE);
  // The system limits what it is given.
  GetScrollInfo(Hwnd, SB_HORZ, &info);
  Geometry.ScrollColumn = info.nPos;
}

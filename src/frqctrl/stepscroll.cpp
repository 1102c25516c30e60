#include "frqctrl/stepscroll.h"

#include <algorithm>

namespace {

int Target(const SCROLLINFO& info, UINT code) {
  const int page = static_cast<int>(info.nPage);
  switch (code) {
    case SB_LINEUP: return info.nPos - 1;
    case SB_LINEDOWN: return info.nPos + 1;
    case SB_PAGEUP: return info.nPos - page;
    case SB_PAGEDOWN: return info.nPos + page;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK: return info.nTrackPos;  // 32 bits, where the message itself holds 16
    case SB_TOP: return info.nMin;
    case SB_BOTTOM: return info.nMax;
    default: return info.nPos;
  }
}

}  // namespace

std::optional<int> StepScroll(HWND window, int bar, UINT code) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_ALL;
  GetScrollInfo(window, bar, &info);
  const int before = info.nPos;
  info.nPos = std::max(info.nMin, std::min(info.nMax, Target(info, code)));
  if (info.nPos == before) return std::nullopt;

  info.fMask = SIF_POS;
  SetScrollInfo(window, bar, &info, TRUE);
  // The system keeps a page's width off the end, so the position counts that it has made of it.
  GetScrollInfo(window, bar, &info);
  if (info.nPos == before) return std::nullopt;
  return info.nPos;
}

#include "window/standingtip.h"

#include <utility>

#include "window/tipwindow.h"

namespace {

constexpr int kWidest = 700;  // pixels
constexpr int kGap = 2;

}  // namespace

void StandingTip::Show(HWND below, const std::wstring& text) {
  below_ = below;
  text_ = text;
  if (!tip_) tip_ = CreateTrackedTip(below, kWidest, text_);
  if (!tip_) return;
  TTTOOLINFOW tool = TrackedTool(below, text_);
  SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  if (!text_.empty()) isShown_ = false;  // words that stand already are painted when they come once more
  ShowWhileInFront(true);
}

void StandingTip::Follow() const {
  if (!tip_) return;
  RECT window{};
  GetWindowRect(below_, &window);
  SendMessageW(tip_, TTM_TRACKPOSITION, 0, MAKELPARAM(window.left, window.bottom + kGap));
}

void StandingTip::ShowWhileInFront(bool isInFront) {
  const bool isShown = isInFront && !text_.empty();
  if (!tip_ || isShown == std::exchange(isShown_, isShown)) return;
  TTTOOLINFOW tool = TrackedTool(below_, text_);
  Follow();
  SendMessageW(tip_, TTM_TRACKACTIVATE, isShown, reinterpret_cast<LPARAM>(&tool));
}

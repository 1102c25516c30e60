#include "window/sharedkeys.h"

#include <algorithm>

namespace {

constexpr wchar_t kProperty[] = L"{0B6CF3F8-44C2-4B0E-9E0B-6D5E2C0E7A11}";

bool IsDown(int key) {
  return GetKeyState(key) < 0;
}

bool Matches(const ACCEL& accelerator, WPARAM key) {
  return accelerator.key == key && ((accelerator.fVirt & FCONTROL) != 0) == IsDown(VK_CONTROL) &&
         ((accelerator.fVirt & FSHIFT) != 0) == IsDown(VK_SHIFT) &&
         ((accelerator.fVirt & FALT) != 0) == IsDown(VK_MENU);
}

}  // namespace

void SharedKeys::Start(HWND window, HWND target, int accelerators) {
  const HACCEL table = LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(accelerators));
  keys_.resize(static_cast<std::size_t>(std::max(0, CopyAcceleratorTableW(table, nullptr, 0))));
  CopyAcceleratorTableW(table, keys_.data(), static_cast<int>(keys_.size()));
  window_ = window;
  target_ = target;
  SetPropW(window, kProperty, this);
  hook_ = SetWindowsHookExW(WH_MSGFILTER, Filter, nullptr, GetCurrentThreadId());
}

void SharedKeys::Stop() {
  if (!window_) return;
  UnhookWindowsHookEx(hook_);
  RemovePropW(window_, kProperty);
  window_ = nullptr;
}

LRESULT CALLBACK SharedKeys::Filter(int code, WPARAM wParam, LPARAM lParam) {
  const MSG& message = *reinterpret_cast<const MSG*>(lParam);
  if (code == MSGF_DIALOGBOX && message.message == WM_KEYDOWN) {
    const auto* const keys = static_cast<const SharedKeys*>(GetPropW(GetAncestor(message.hwnd, GA_ROOT), kProperty));
    if (keys && keys->Take(message)) return TRUE;
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

bool SharedKeys::Take(const MSG& message) const {
  const auto found = std::ranges::find_if(keys_, [&](const ACCEL& each) { return Matches(each, message.wParam); });
  if (found == keys_.end()) return false;
  const UINT state = GetMenuState(GetMenu(target_), found->cmd, MF_BYCOMMAND);
  const bool isGrey = state != UINT(-1) && (state & (MF_GRAYED | MF_DISABLED));
  if (IsWindowEnabled(target_) && !isGrey) PostMessageW(target_, WM_COMMAND, MAKEWPARAM(found->cmd, 1), 0);
  return true;
}

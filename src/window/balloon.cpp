#include "window/balloon.h"

#include <commctrl.h>

namespace {

constexpr UINT kShownMs = 8000;
constexpr int kWidestText = 320;  // pixels, before it is broken into lines

TTTOOLINFOW ToolOf(HWND owner) {
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
  tool.hwnd = owner;
  tool.uId = 1;
  return tool;
}

}  // namespace

void Balloon::Show(HWND owner, HWND place, const std::wstring& title, const std::wstring& text) {
  Hide();
  owner_ = owner;
  tip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_BALLOON | TTS_ALWAYSTIP,
                         0, 0, 0, 0, owner, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (!tip_) return;
  std::wstring copy = text;
  TTTOOLINFOW tool = ToolOf(owner);
  tool.lpszText = copy.data();
  SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, kWidestText);
  SendMessageW(tip_, TTM_SETTITLEW, TTI_INFO, reinterpret_cast<LPARAM>(title.c_str()));
  RECT rect{};
  GetWindowRect(place, &rect);
  SendMessageW(tip_, TTM_TRACKPOSITION, 0, MAKELPARAM((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2));
  SendMessageW(tip_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  SetTimer(owner, kTimer, kShownMs, nullptr);
}

void Balloon::Hide() {
  if (!tip_) return;
  KillTimer(owner_, kTimer);
  DestroyWindow(tip_);
  tip_ = nullptr;
}

void Balloon::OnTimer(UINT_PTR timer) {
  if (timer == kTimer) Hide();
}

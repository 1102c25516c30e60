// The system's tool tip window, as balloons and the tips of controls and of the table have it in common.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

// The tip goes with its owner. `shape`: TTS_ styles beyond those of all tips. Lines are broken at `widest` pixels. Null
// if the system makes none.
inline HWND CreateTipWindow(HWND owner, int widest, DWORD shape = 0) {
  const HWND tip =
      CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP | shape, 0, 0, 0,
                      0, owner, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (tip) SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, widest);
  return tip;
}

// The one tool of a tip that is shown where and when its owner says. It points to the text.
inline TTTOOLINFOW TrackedTool(HWND owner, std::wstring& text) {
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
  tool.hwnd = owner;
  tool.uId = 1;
  tool.lpszText = text.data();
  return tool;
}

// A tip with that tool, whose owner is the top-level window that `owner` belongs to. Null if the system makes none.
inline HWND CreateTrackedTip(HWND owner, int widest, std::wstring& text, DWORD shape = 0) {
  const HWND tip = CreateTipWindow(owner, widest, shape);
  if (!tip) return nullptr;
  TTTOOLINFOW tool = TrackedTool(GetWindow(tip, GW_OWNER), text);
  SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  return tip;
}

// No tip comes while the user presses or draws.
inline bool IsMouseButtonDown() {
  return GetKeyState(VK_LBUTTON) < 0 || GetKeyState(VK_RBUTTON) < 0 || GetKeyState(VK_MBUTTON) < 0;
}

#include "window/balloon.h"

#include "base/text.h"
#include "resources/ids.h"
#include "window/tipwindow.h"

namespace {

constexpr UINT kShownMs = 8000;
constexpr int kWidestText = 320;  // pixels, before it is broken into lines

// The balloon that a thread shows.
struct Shown {
  HWND Tip = nullptr;
  UINT_PTR Timer = 0;
  HHOOK Hook = nullptr;
};
thread_local Shown shown;

bool IsUsersDoing(UINT message) {
  switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_NCLBUTTONDOWN: return true;
    default: return false;
  }
}

// Sees what any loop of the thread takes from its queue, those of modal dialogs and of menus too.
LRESULT CALLBACK OnTaken(int code, WPARAM wParam, LPARAM lParam) {
  if (code == HC_ACTION && wParam == PM_REMOVE && IsUsersDoing(reinterpret_cast<const MSG*>(lParam)->message)) {
    Balloon::Hide();
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  if (timer == shown.Timer) Balloon::Hide();
}

}  // namespace

void Balloon::Show(HWND place, const std::wstring& text, const std::wstring& title) {
  Hide();
  const HWND owner = GetAncestor(place, GA_ROOT);
  std::wstring copy = text;
  shown.Tip = CreateTrackedTip(owner, kWidestText, copy, TTS_BALLOON);
  if (!shown.Tip) return;
  TTTOOLINFOW tool = TrackedTool(owner, copy);
  const std::wstring head = title.empty() ? LoadResString(IDS_NAME) : title;
  SendMessageW(shown.Tip, TTM_SETTITLEW, TTI_INFO, reinterpret_cast<LPARAM>(head.c_str()));
  RECT rect{};
  GetWindowRect(place, &rect);
  SendMessageW(shown.Tip, TTM_TRACKPOSITION, 0, MAKELPARAM((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2));
  SendMessageW(shown.Tip, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  shown.Timer = SetTimer(nullptr, 0, kShownMs, OnTimer);
  shown.Hook = SetWindowsHookExW(WH_GETMESSAGE, OnTaken, nullptr, GetCurrentThreadId());
}

// The window may have gone with its owner.
void Balloon::Hide() {
  if (shown.Timer) KillTimer(nullptr, shown.Timer);
  if (shown.Hook) UnhookWindowsHookEx(shown.Hook);
  if (shown.Tip && IsWindow(shown.Tip)) DestroyWindow(shown.Tip);
  shown = {};
}

bool Balloon::IsShown() {
  return shown.Tip && IsWindow(shown.Tip);
}

// StandingTip: a line of words below a window for as long as they hold, where its caption is not its own to change.
#pragma once

#include <windows.h>

#include <string>

class StandingTip {
 public:
  StandingTip() = default;
  StandingTip(const StandingTip&) = delete;
  StandingTip& operator=(const StandingTip&) = delete;

  // On the thread of the window, which the tip goes with. Empty text is none.
  void Show(HWND below, const std::wstring& text);
  // The window has moved, or its program has come to the front or left it: the tip of one behind would lie over others.
  void Follow() const;
  void ShowWhileInFront(bool isInFront) const;
  // The window goes.
  void Forget() { tip_ = nullptr; }

 private:
  HWND below_ = nullptr;
  HWND tip_ = nullptr;
  std::wstring text_;
};

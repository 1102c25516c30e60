// StandingTip: a line of words below a window for as long as they hold, where its caption is not its own to change.
#pragma once

#include <windows.h>

#include <string>

class StandingTip {
 public:
  StandingTip() = default;
  StandingTip(const StandingTip&) = delete;
  StandingTip& operator=(const StandingTip&) = delete;

  // To be called on the thread of the window, which the tip goes with. An empty text is no tip.
  void Show(HWND below, const std::wstring& text);
  // The window has moved.
  void Follow() const;
  // A tip lies over all windows: that of a program that is not in front is hidden.
  void ShowWhileInFront(bool isInFront);
  // The window goes.
  void Forget() {
    tip_ = nullptr;
    isShown_ = false;
  }

 private:
  HWND below_ = nullptr;
  HWND tip_ = nullptr;
  bool isShown_ = false;
  std::wstring text_;
};

// Balloon: a word to the user without a box: a tool tip in the shape of a balloon at the place that it is about, which
// goes by itself after some seconds, or with the next one.
//
// A screen reader says it, as the system tells of each tool tip that comes.
#pragma once

#include <windows.h>

#include <string>

class Balloon {
 public:
  Balloon() = default;
  Balloon(const Balloon&) = delete;
  Balloon& operator=(const Balloon&) = delete;

  // At the middle of a control of `owner`'s, on the thread of that window. The window of the balloon goes with `owner`.
  void Show(HWND owner, HWND place, const std::wstring& title, const std::wstring& text);
  void Hide();
  // The timer that Show has started on the owner has run.
  void OnTimer(UINT_PTR timer);

  static constexpr UINT_PTR kTimer = 0x4261;

 private:
  HWND owner_ = nullptr;
  HWND tip_ = nullptr;
};

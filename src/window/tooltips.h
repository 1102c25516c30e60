// Tooltips: what the controls of a dialog are for, told by the system's tool tip where the mouse rests.
//
// The mouse is followed by WM_SETCURSOR, which every control sends up to its dialog: so no control has to be subclassed
// for it, which would cost something with each of the thousand messages that fill a list. While a drag has the capture
// nothing comes, and no tip does.
#pragma once

#include <windows.h>

#include <string>

class Tooltips {
 public:
  Tooltips() = default;
  Tooltips(const Tooltips&) = delete;
  Tooltips& operator=(const Tooltips&) = delete;

  // The window of the tips is made with the first of them and goes with `dialog`.
  void Attach(HWND dialog);

  // The mouse has moved to `text`, which is about `control`, or has been pressed there. Empty: nothing is told there.
  // A window that comes up under a mouse that rests is no move.
  void Follow(HWND control, UINT message, const std::wstring& text);

  // Null before the first tip.
  HWND Window() const { return tip_; }

 private:
  bool HasMoved();
  void Tell(HWND control, const std::wstring& text);

  HWND dialog_ = nullptr;
  HWND tip_ = nullptr;
  HWND control_ = nullptr;  // the one whose tip is told or about to be
  std::wstring text_;
  POINT mouse_{};  // where it was last
};

// CSubclassWindow: a native control with a few of its messages answered by an object of ours.
//
// The owner of the control subclasses it; the object dies with the window. A derived class overrides OnMessage, picks
// its messages, and hands all others to CSubclassWindow::OnMessage.
#pragma once

#include <windows.h>

#include "window/window.h"

class CSubclassWindow : public CWindow {
 public:
  // Hands on to the procedure that was replaced; behind WM_DESTROY the window is unbound and the object deleted.
  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

 protected:
  // The window is bound, and its messages come here.
  virtual void OnBound() {}

  LRESULT CallPrevious(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  friend bool IsSubclassed(HWND window);
  friend void BindSubclass(HWND window, CSubclassWindow* object);

  WNDPROC PreviousProc = nullptr;
};

bool IsSubclassed(HWND window);

// Binds a new object to the window, which owns it from then on.
void BindSubclass(HWND window, CSubclassWindow* object);

// Subclasses a control once; a null window or a second call does nothing.
template <typename Control>
void SubclassControl(HWND window) {
  if (window && !IsSubclassed(window)) BindSubclass(window, new Control);
}

// CCtrlBase: custom controls with a window class of their own, painted through a memory bitmap.
//
// The system makes the window, from a dialog template or by CreateWindowExW, and the class registry makes its object:
// it is bound at WM_CREATE and deletes itself at WM_DESTROY.
#pragma once

#include <windows.h>

#include "window/window.h"

class CCtrlBase : public CWindow {
 public:
  LRESULT OnDestroy() override;
  LRESULT OnPaint() override;

  // Repaints the whole client area now.
  virtual void Refresh();
  // Draws the client area into a memory context; true to show it, false to leave the window as it was.
  virtual bool Draw(HDC dc, const RECT& client) = 0;

  // The facts that the window class is registered with, asked once of a prototype.
  virtual const wchar_t* GetWindowClassName() const = 0;
  virtual const wchar_t* GetCursorName() const;
  virtual HINSTANCE GetCursorModule() const;
  virtual UINT GetClassStyle(UINT defaultStyle) const;
  virtual HBRUSH GetBackgroundBrush() const;
  virtual void OnClassRegistered() const;
};

// The object of a control of ours, null for any other window. Asked on the control's thread.
CCtrlBase* ControlOf(HWND window);

using ControlFactory = CCtrlBase* (*)();

// Registers a control's window class. `prototype` answers for the class and is not kept; `factory` makes the object of
// each window. Called on the main thread before any window exists: the registry is only read afterwards.
void RegisterControlClass(const CCtrlBase& prototype, ControlFactory factory);

template <typename Control>
void RegisterControl() {
  RegisterControlClass(Control(), []() -> CCtrlBase* { return new Control; });
}

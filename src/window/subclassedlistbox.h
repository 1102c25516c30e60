// CSubclassedListbox: a list box that leaves the mouse wheel to the window under the pointer.
#pragma once

#include "window/subclass.h"

class CSubclassedListbox : public CSubclassWindow {
 public:
  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT OnMouseWheel(WPARAM keys, int x, int y, int delta) override;
};

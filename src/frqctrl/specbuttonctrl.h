// CSpecButtonCtrl: the button over the table that turns the spectrum on and off, with the menu of its colours under the
// right mouse button.
#pragma once

#include "window/subclass.h"

class CSpecButtonCtrl : public CSubclassWindow {
 public:
  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT OnRButtonDown(WPARAM keys, int x, int y) override;
  LRESULT OnRButtonUp(WPARAM keys, int x, int y) override;
};

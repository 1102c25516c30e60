// CFlatButton: a small flat button that acts on a double click, or on Space where it has the focus.
//
// Its commands change a whole range of frames, so that a stray click must do nothing. It only says so, once no second
// click can come any more.
#pragma once

#include "window/controlbase.h"

class CFlatButton : public CCtrlBase {
 public:
  bool Draw(HDC dc, const RECT& client) override;
  LRESULT OnLButtonDown(WPARAM keys, int x, int y) override;
  LRESULT OnLButtonDblClk(WPARAM keys, int x, int y) override;
  LRESULT OnSetFocus(HWND other) override;
  LRESULT OnKillFocus(HWND other) override;
  LRESULT OnKeyDown(WPARAM key, UINT low, UINT high) override;
  LRESULT OnTimer(UINT_PTR timer, LPARAM lParam) override;
  const wchar_t* GetWindowClassName() const override;
  UINT GetClassStyle(UINT defaultStyle) const override;

 private:
  void Press();
};

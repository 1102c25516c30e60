// CSpecBrightnessCtrl: the little label over the spectrum that opens the trackbar of its brightness.
#pragma once

#include "window/controlbase.h"

class CSpecBrightnessCtrl : public CCtrlBase {
 public:
  bool Draw(HDC dc, const RECT& client) override;
  LRESULT OnLButtonDown(WPARAM keys, int x, int y) override;
  LRESULT OnLButtonUp(WPARAM keys, int x, int y) override;
  LRESULT OnRButtonDown(WPARAM keys, int x, int y) override;
  LRESULT OnRButtonUp(WPARAM keys, int x, int y) override;
  const wchar_t* GetWindowClassName() const override;

 private:
  // The end of a click: it counts if it was let go over the label.
  void Release(int pressed, int x, int y);
};

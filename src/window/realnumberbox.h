// CTextBoxRealNumberCtrl: an edit box that takes the digits and decimal signs of a positive number.
//
// It filters what is typed. Pasted text comes in as it is, and the owner reads the box with its own conversion.
#pragma once

#include "window/subclass.h"

class CTextBoxRealNumberCtrl : public CSubclassWindow {
 public:
  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT OnChar(WPARAM character, UINT low, UINT high) override;
};

// CTextBoxRealNumberCtrl: an edit box that takes the digits and decimal signs of a positive number.
//
// It filters what is typed. Pasted text comes in as it is, and the owner reads the box with its own conversion.
#pragma once

#include "window/subclass.h"

class CTextBoxRealNumberCtrl : public CSubclassWindow {
 public:
  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT OnChar(WPARAM character, UINT low, UINT high) override;

 protected:
  void OnBound() override;
};

// An input method composes digits that no number box takes: in such a box it stays off, so that keys come as typed.
void TakeNoInputMethod(HWND box);

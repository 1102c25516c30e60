// TableChildren: the button, the label and the trackbar that stand over the plot, and the menu of colours.
#pragma once

#include <windows.h>

#include "base/handle.h"
#include "frqctrl/geometry.h"

class TableChildren {
 public:
  TableChildren();  // without a window yet

  // Makes them as large as the screen of `geometry` wants them; the trackbar stands at `brightness`.
  void Create(HWND table, const TableGeometry& geometry, int brightness);
  void Destroy();

  // Shows which view there is: 0 grid, 1 spectrum, which has a brightness.
  void ShowViewMode(int mode) const;
  // The view that the user has chosen by the button.
  int ChosenViewMode() const;

  static bool IsTrackbar(HWND child);
  void ShowBrightness(int brightness) const;
  int ChosenBrightness() const;
  // Opens the trackbar, or closes it.
  void ToggleTrackbar(int brightness) const;

  // Lets the user choose a colour table; the choice comes as a command.
  void OpenColorMenu(int shownTable) const;

 private:
  LRESULT SendToTrackbar(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
  void Show(int id, bool shown) const;

  HWND table_ = nullptr;
  Menu colorMenu_;
};

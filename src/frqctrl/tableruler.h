// TableRuler: the line at the mouse that names its note.
//
// Like the tip it lives on the ticks of the cursor's timer and comes only where a hand moves the mouse: a move costs
// nothing, and a window that comes up under a resting mouse has no line.
#pragma once

#include <windows.h>

#include "frqctrl/tablemodel.h"

class TableRuler {
 public:
  explicit TableRuler(TableModel& model) : model_(model) {}

  // True if the picture changes by it.
  bool OnTick(HWND table);
  void Hide();

 private:
  TableModel& model_;
  POINT mouse_{};  // at the last tick
  int moves_ = 0;  // over the table, counted by ticks
};

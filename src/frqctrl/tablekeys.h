// TableKeys: the selection of frames by keys, while the table has the focus: a caret that goes from column to column
// and takes the selection along, or, with Shift, stretches it.
//
//   Left, Right           a column; with Ctrl, to the next vertical line
//   Page Up, Page Down    as far as the plot is wide
//   Home, End             the ends of the map
//   Up, Down              scroll by a semitone
#pragma once

#include <windows.h>

#include "frqctrl/tablehost.h"
#include "frqctrl/tablemodel.h"
#include "frqctrl/tableviewport.h"

class TableKeys {
 public:
  TableKeys(TableModel& model, TableViewport& viewport, TableHost& host)
      : model_(model), viewport_(viewport), host_(host) {}

  // The caret is seen while the table has the focus, once that has come by Tab or a key was used. It begins at the
  // first selected column in view, or else at the first one in view.
  void OnFocus(bool has);
  // To be called with another map: the caret begins anew.
  void Forget();
  // True if the key is one of those above.
  bool OnKey(WPARAM key, bool isShift, bool isControl);

 private:
  void ShowCaret();
  SampleCount Target(WPARAM key, bool isControl) const;
  void MoveTo(SampleCount column, bool extend);
  SampleCount StartColumn() const;

  TableModel& model_;
  TableViewport& viewport_;
  TableHost& host_;
  SampleCount anchor_ = -1;  // of a selection that Shift stretches
};

// TableViewport: which part of the table is seen: its scroll bars, the mouse wheel and the zoom.
//
// The numbers are in the model; here they meet the bars of the window. A view that is to be moved by anything else (a
// key, a fit to the map) is moved here.
#pragma once

#include <windows.h>

#include "frqctrl/tablehost.h"
#include "frqctrl/tablemodel.h"

class TableViewport {
 public:
  TableViewport(TableModel& model, TableHost& host) : model_(model), host_(host) {}

  // Sets the bars up for a map, or a spectrum, of so many columns, shown from the first one on.
  void SetUpBars(SampleCount columns);

  void SetScrollColumn(SampleCount column);
  // The zoom is limited. Stepping tells the parent, setting does not.
  void SetZoom(int zoom);
  void StepZoom(bool down);

  // A scroll code of one of the window's bars, SB_HORZ or SB_VERT.
  void OnScroll(int bar, UINT code);
  void OnWheel(WPARAM keys, int delta);

  // Scrolls both ways so that the curve of these frames is seen, and repaints, if it is not.
  void ShowFrames(SampleCount first, SampleCount last);
  // Shows the view that the model makes for the curve, and the bars follow. Fit and step tell the parent of the zoom.
  void Fit();
  void Centre();
  void ZoomInPlace(bool down);
  // Scrolls to a column at the edge of the plot, or beyond it. Repaint is the caller's.
  void EnsureColumnVisible(SampleCount column);

 private:
  void SetBarPosition(int bar, int position);
  void ShowPlace();

  TableModel& model_;
  TableHost& host_;
};

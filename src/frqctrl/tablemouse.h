// TableMouse: what the mouse does in the table: it draws, erases, drags the average and selects, and its cursor tells
// which of these it would do.
//
// A drag runs from its press to the release of either button and belongs to the map on which it began. Drawing, erasing
// and the average are strokes of MapEditing: begun with the first write, ended with the drag. Each write may find its
// stroke ended from outside, and each notification may make the parent take the map away; the drag is over then.
//
// A new tool goes into three places: the begin of a press (PressLeft), the work of a move (Follow), and the cursor that
// tells of it (CursorAt). A pencil gives the model's FrequencyAtY at a point, and with Shift down what TablePitches
// makes of it.
#pragma once

#include <windows.h>

#include "frqctrl/tablehost.h"
#include "frqctrl/tablemodel.h"
#include "frqctrl/tablepitches.h"
#include "frqctrl/tableviewport.h"
#include "frqmap/mapediting.h"

class TableMouse {
 public:
  TableMouse(TableModel& model, TableViewport& viewport, TablePitches& pitches, TableHost& host)
      : model_(model), viewport_(viewport), pitches_(pitches), host_(host) {}

  // Points are in client coordinates.
  void PressLeft(POINT point);
  void PressRight(POINT point);
  void Move(POINT point, bool pressed);
  void DoubleClick(POINT point);

  bool IsDragging() const { return mode_ != DragNone; }
  // Ends a drag, if there is one: a release, another map, another editing, the end of the window.
  void EndDrag();
  // The capture has gone to a window, or to none (null).
  void OnCaptureChanged(HWND owner);

  // Shows what the pointer can do where it stands. The window class has no cursor of its own.
  void UpdateCursor() const;

 private:
  enum DragMode { DragNone, DragDraw, DragAverage, DragSelect, DragErase };

  // The model's answers, with the map held.
  TableSpot SpotAt(POINT point) const;
  SampleCount NearestColumn(int x) const;
  bool IsReachable(SampleCount column) const;
  bool IsKeyDerived() const;
  SampleCount ColumnCount() const;
  double FrequencyAtY(int y) const;
  double PencilAt(SampleCount column, int y) const;

  void BeginLeftDrag(POINT point);
  void Capture(DragMode mode);
  void Follow(POINT point);
  void Forget();

  // The writes. False once the drag is over, with nothing told that was not written.
  bool WriteFrame(SampleCount column, double hz, StrokeKind kind, bool repaint);
  void WriteStroke(POINT from, POINT to, StrokeKind kind);
  void WriteKey(int y);
  void OpenStroke(StrokeKind kind);

  void BeginSelecting(SampleCount column);
  void ExtendSelection(int x);
  void TellSelection();
  HCURSOR CursorAt(POINT screen) const;

  TableModel& model_;
  TableViewport& viewport_;
  TablePitches& pitches_;
  TableHost& host_;
  DragMode mode_ = DragNone;      // with the capture, unless DragNone
  bool StrokeOpen = false;        // by this drag
  SampleCount SelectAnchor = -1;  // column where a drag of the selection began
  POINT last_{};                  // of the last move or left press
};

// TablePitches: what the recording offers to the pencil while Shift is down: the pitches that it bears out, as dots
// over the columns in view, and the one that a stroke snaps to.
//
// It looks at the key when the mouse moves and with each tick of the table's timer, and seeks pitches then and in
// strokes, never in a paint. Without a recording that the map can be of there are no dots and the pencil is the plain
// one.
#pragma once

#include <windows.h>

#include "base/sample.h"
#include "frqctrl/tablehost.h"
#include "frqctrl/tablemodel.h"

class SoundPitches;
class WavePitches;

class TablePitches {
 public:
  TablePitches(const TableModel& model, TableHost& host) : model_(model), host_(host) {}

  // Not owned; null for none.
  void SetSource(WavePitches* source);

  // Looks at the key and readies what is in view, and paints the table if there is something else to show. `atWork`:
  // the pencil is down, wherever the mouse stands.
  void Follow(bool atWork);

  // The frequency that a stroke writes into a column where the plain pencil gives `hz`.
  double Snapped(SampleCount column, double hz);

  // Draws the dots in the colours of the view. The map is held.
  void Draw(HDC dc) const;

 private:
  bool IsWanted(bool atWork) const;
  // The pitches for the map at hand; null for none.
  SoundPitches* Sound() const;
  bool PrepareView() const;

  const TableModel& model_;
  TableHost& host_;
  WavePitches* source_ = nullptr;
  bool shown_ = false;  // as Follow has found it
};

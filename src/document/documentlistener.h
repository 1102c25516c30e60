// What a document tells its windows, once for each change, in terms of itself.
//
// It is told on the thread that made the change, when the document has let go of its lock: a listener may ask the
// document anything, and send to its window.
#pragma once

#include <vector>

#include "base/sample.h"
#include "document/gesture.h"

struct EntryChange {
  enum Fact : unsigned {
    Replaced = 1,  // the map is another one, or none
    Frames = 2,    // frames were set
    Key = 4,       // the average was set
    Marks = 8,     // the marks of the check, of which the list tells
    Edited = 16,   // the entry is edited now, or no longer
    HasMap = 32,   // there is a map now, or no longer
    Saved = 64,    // SavedMap is another one
    Touched = 128  // edited, saved or read again, whether or not anything differs
  };

  int Index = -1;
  unsigned Facts = 0;
  std::vector<int> Rows = {};  // the frames that were set, in ascending order, if Frames is among the facts
  bool InStroke = false;       // one of many changes under the mouse
  bool OneOfMany = false;      // of a gesture or a run over all syllables, which ends with OnManyChanged
  bool FromHistory = false;    // a step was undone or done again
};

class DocumentListener {
 public:
  virtual ~DocumentListener() = default;

  virtual void OnEntryChanged(const EntryChange& change) = 0;
  // The last entry of a change over many has been told.
  virtual void OnManyChanged() {}
  // What can be undone or done again is something else now.
  virtual void OnHistoryChanged() {}
};

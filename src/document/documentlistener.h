// DocumentListener: a document tells its windows, in terms of itself and once for each call, all that it has changed.
//
// It tells them on the thread that made the change, when it has let go of its lock: a listener may ask the document
// anything, and send to its window.
#pragma once

#include <vector>

#include "base/sample.h"
#include "document/gesture.h"

struct EntryChange {
  enum Fact : unsigned {
    Replaced = 1,    // the map is another one, or none
    Frames = 2,      // frames were set
    Key = 4,         // the average was set
    Marks = 8,       // the marks of the check, of which the list tells
    Edited = 16,     // the entry is edited now, or no longer
    HasMap = 32,     // there is a map now, or no longer
    Saved = 64,      // SavedMap is another one
    Touched = 128,   // edited, saved or read again, whether or not anything differs
    Readable = 256  // its map turned out to be unreadable, or readable after all
  };

  int Index = -1;
  unsigned Facts = 0;
  std::vector<int> Rows = {};  // the frames that were set, in ascending order, if Frames is among the facts
  bool InStroke = false;       // one of many changes under the mouse
  bool OneOfMany = false;      // part of a gesture or a run over all syllables
  bool FromHistory = false;    // a step was undone or done again
};

struct DocumentChanges {
  std::vector<EntryChange> Entries = {};
  bool OfMany = false;   // the end of a gesture or a run over all syllables is among them
  bool History = false;  // other steps can be undone or done again now
};

class DocumentListener {
 public:
  virtual ~DocumentListener() = default;
  virtual void OnChanged(const DocumentChanges& changes) = 0;
};

// FileGuard stands between the program and the maps of its user: it is told before a map is changed or deleted, so that
// the old bytes can be brought back, and a change that was broken off be completed.
//
// A guard never forbids a save: a map must be saved even where the guard has no room left. A map that is only about to
// be made anew is left alone then. Any thread calls it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/bytes.h"

// A change of a file in place: pieces of it, and its length.
struct FileChange {
  struct Piece {
    std::int64_t At = 0;
    Bytes Before;  // shorter than After where the file ended
    Bytes After;   // shorter than Before where the file will end
  };

  std::wstring Path;              // in full
  std::int64_t SizeBefore = 0;
  std::int64_t SizeAfter = 0;
  std::vector<Piece> Pieces;      // none overlaps another
  // An outside library writes the file, all of it: what it makes of it is not known, and After is empty. Such a change
  // can only be taken back.
  bool AfterIsUnknown = false;
};

class FileGuard {
 public:
  virtual ~FileGuard() = default;

  // Begin: a change is about to be made. End: it has been made in full, or taken back in full. In pairs, on one thread.
  // A change that had a `Begin` and no `End` is completed or taken back when the program starts the next time.
  //
  // No `End` comes where the old bytes could not be put back either (a drive that has gone). The program runs on, and
  // the next `Begin` of the thread opens a pair of its own.
  virtual void Begin(const FileChange& change) = 0;
  virtual void End() = 0;

  // The file is about to be opened for a change, on any thread. A change of it that this very process has left
  // unfinished is to be taken back now and ended: the next start would else bring bytes back over a newer save.
  virtual void Mend(const std::wstring& path) { static_cast<void>(path); }

  // Whether the map of that name is still to be kept: it is kept once in a run, and ahead of each command that makes or
  // removes many. `mapPath` is the map's file, of an entry of desc.mrq the name that it would have as a file of its own
  // (a.mrq).
  virtual bool Wants(const std::wstring& mapPath) = 0;
  // Keeps the map's bytes as they are, before they are overwritten or deleted for the first time; of an entry of
  // desc.mrq, the entry with its head. False if there was no room for them.
  virtual bool Keep(const std::wstring& mapPath, ByteSpan bytes) = 0;
};

// The guard of the process; one that does nothing until another one is set. It is set before a second thread runs.
FileGuard& PresentGuard();
// Null sets the guard that does nothing.
void SetPresentGuard(FileGuard* guard);

// What stands between the program and the maps of its user: it is told before one is changed or deleted, so that what
// was there can be brought back, and a change that was broken off be completed.
//
// A guard never forbids anything: a map must be saved even where the guard has no room left. Any thread calls it.
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
    Bytes After;
  };

  std::wstring Path;              // in full
  std::int64_t SizeBefore = 0;
  std::int64_t SizeAfter = 0;
  std::vector<Piece> Pieces;      // none overlaps another
  bool AfterIsUnknown = false;    // somebody else writes: only what was there can be brought back
};

class FileGuard {
 public:
  virtual ~FileGuard() = default;

  // A change is about to be made; it has been made in full, or taken back in full. In pairs, on one thread. What a
  // `Begin` without its `End` tells is completed or taken back when the program starts the next time.
  virtual void Begin(const FileChange& change) = 0;
  virtual void End() = 0;

  // Whether the map of that name is still to be kept: it is kept once in a run. `mapPath` is the map's file, of an
  // entry of desc.mrq the name that it would have as a file of its own (a.mrq).
  virtual bool Wants(const std::wstring& mapPath) = 0;
  // Its bytes as they are, before they are overwritten or deleted for the first time. Of an entry of desc.mrq: the entry
  // with its head.
  virtual void Keep(const std::wstring& mapPath, ByteSpan bytes) = 0;
};

// The guard of the process; one that does nothing until another one is set. It is set before a second thread runs.
FileGuard& PresentGuard();
// Null for the one that does nothing.
void SetPresentGuard(FileGuard* guard);

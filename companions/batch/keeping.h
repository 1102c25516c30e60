// Keeping: maps that a run overwrites are kept in a folder of the program's own, beside that of the windows, and a
// write that is cut off is put right by the next run, as in the windows.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "recovery/recovery.h"

class Keeping {
 public:
  enum Use {
    Old,      // maps that are overwritten are kept
    Nothing,  // they are not kept, but a write that is cut off is put right all the same
    Unused,   // nothing will be written; maps that runs have kept can be read
  };
  // A Keeping is the guard of the process for as long as it is there, unless its use is Unused.
  explicit Keeping(Use use);
  ~Keeping();
  Keeping(const Keeping&) = delete;
  Keeping& operator=(const Keeping&) = delete;

  // Whether old maps can be kept.
  bool HasRoom();

  struct Run {
    std::int64_t Time = 0;     // [s since 1970] of its first map
    std::int64_t Written = 0;  // of that map's copy, in the system's finer units: runs may share a second
    std::vector<KeptMap> Maps;
  };
  // The runs that have kept maps below a folder, with these, the latest first.
  std::vector<Run> RunsBelow(const std::wstring& folder);

  Recovery& Safety() { return safety_; }

 private:
  Recovery safety_;
  std::unique_ptr<FileGuard> withoutOld_;
};

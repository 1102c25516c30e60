// What a run overwrites is kept in a folder of the program's own, beside that of the windows, and a write that is cut
// off is put right by the next run, as in the windows.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "recovery/recovery.h"

class Keeping {
 public:
  enum Use {
    Old,      // what is overwritten is kept
    Nothing,  // it is not, but a write that is cut off is put right all the same
    Unused,   // nothing will be written; what runs have kept can be read
  };
  // Is the guard of the process for as long as it is there.
  explicit Keeping(Use use);
  ~Keeping();
  Keeping(const Keeping&) = delete;
  Keeping& operator=(const Keeping&) = delete;

  // Whether old maps can be kept.
  bool HasRoom();

  struct Run {
    std::int64_t Time = 0;  // [s since 1970] of its first map
    std::vector<KeptMap> Maps;
  };
  // What the runs have kept of maps below a folder, the latest first.
  std::vector<Run> RunsBelow(const std::wstring& folder);

  Recovery& Safety() { return safety_; }

 private:
  Recovery safety_;
  std::unique_ptr<FileGuard> withoutOld_;
};

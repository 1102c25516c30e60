// What a store does to files, as an interface: the store itself knows no system, and its tests keep their files in
// memory.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "frqmap/mrqfile.h"

enum class MrqMode {
  Read,    // a file that is there
  Create,  // makes sure of a file, which then may be of 0 bytes: the header comes with the first Patch
  Patch,   // reads and writes; makes the file with its header if need be
};

class MrqAccess {
 public:
  virtual ~MrqAccess() = default;
  // The file is open as long as the stream is there. None if it cannot be opened in that mode.
  virtual std::unique_ptr<MrqStream> Open(const std::wstring& path, MrqMode mode) = 0;
  // A file that cannot be deleted stays.
  virtual void Delete(const std::wstring& path) = 0;
};

// The files of the machine, which say in GetLastError why something failed. There are none in the native build.
MrqAccess& MrqDisk();

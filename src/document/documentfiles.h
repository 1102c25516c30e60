// DocumentFiles: the files from which a document reads its maps and to which it saves them.
//
// The document calls this under its lock: an implementation sends nothing to a window and waits for no other thread.
#pragma once

#include <cstdint>
#include <string>

#include "frqmap/frqmap.h"

class DocumentFiles {
 public:
  virtual ~DocumentFiles() = default;

  // Reads the map of a wave. 0, or nonzero with the map cleared. May throw std::bad_alloc.
  virtual int Load(FrqMap& map, const std::wstring& wavePath) = 0;

  // Writes the map of a wave. 0, or nonzero with the system's code in `error`, which is 0 where no file was touched.
  // May throw std::bad_alloc while no file was touched.
  virtual int Save(FrqMap& map, const std::wstring& wavePath, std::uint32_t& error) = 0;

  // Deletes the map with all that belongs to it. False if the map itself stayed. May throw std::bad_alloc while it is
  // there.
  virtual bool Delete(const std::wstring& wavePath) = 0;

  // A value that is another one once the map's file has been written; 0 where there is none. It outlives the process.
  virtual std::uint64_t Stamp(const std::wstring& wavePath) = 0;

  // Deletes the resampler's analysis beside the wave, which is out of date with a saved map. May throw std::bad_alloc.
  virtual void DeleteAnalysis(const std::wstring& wavePath) = 0;
};

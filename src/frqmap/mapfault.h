// Why a map that is there cannot be read: the file is looked at anew when somebody wants to know, so that the codecs,
// which decode thousands, have one answer for all that is no map.
#pragma once

#include <cstdint>
#include <string>

#include "base/filesystem.h"
#include "frqmap/frqtype.h"

struct MapFault {
  enum Reason {
    None,          // nothing is wrong with the file, or there is none for the wave
    Refused,       // the system does not open or read it, and Error says why
    CutShort,      // it ends too early
    Foreign,       // what is in it is no map of its kind
    NoLibrary,     // its kind is read by a library that is not there
    NoNarrowPath,  // that library takes names of one code page, which has no room for this one
  };

  Reason Why = None;
  std::uint32_t Error = 0;  // the system's code

  bool operator==(const MapFault&) const = default;
};

// The map of a path, which for .mrq is an entry of the desc.mrq in its folder. Of a project for the library there is
// only told whether it can be opened and holds anything.
MapFault FindMapFault(FileSystem& files, const std::wstring& mapPath, FrqType kind);

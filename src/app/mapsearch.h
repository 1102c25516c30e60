// Finding out about a wave's map from what its folder holds, without reading it.
#pragma once

#include <cstdint>
#include <string>

#include "frqmap/frqtype.h"
#include "frqmap/mrqstore.h"
#include "voicebank/folderlisting.h"

struct FoundMap {
  bool Exists = false;
  std::uint32_t FrameEstimate = 0;  // frames, told from a file's size; 0 without a map
};

// Gives what MapFileExists would, without a call of the file system for each wave.
FoundMap FindMap(const std::wstring& wavePath, FrqType kind, ListedFolders& listed, const MrqStore& store);

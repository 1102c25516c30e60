// SyllableEntry: one wave with its map, as the document holds them.
#pragma once

#include <cstdint>
#include <string>

#include "document/knownfile.h"
#include "frqmap/frqmap.h"

// HasMap false implies that both maps are empty, without marks, and that the entry is not Edited.
struct SyllableEntry {
  std::wstring Path;                // full path of the wave
  FrqMap Map;                       // the one that the user sees and edits; empty until first needed
  FrqMap SavedMap;                  // Map as it was last loaded or saved; its only source is Map.CopyTo
  std::uint32_t FrameEstimate = 0;  // frames of the map, known without loading it; 0 without a map
  bool HasMap = false;              // a map of the working kind exists for the wave
  bool Unreadable = false;          // there is a map, and it could not be read when somebody tried last
  bool Edited = false;              // Map has changes that no file holds; Map.Modified does not count for this
  KnownFile File;                   // of the map
};

// The facts of a syllable as a pass through its folder finds them.
struct FoundSyllable {
  std::wstring Path;
  bool HasMap = false;
  std::uint32_t FrameEstimate = 0;
};

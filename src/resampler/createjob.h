// A job of making maps, as the commands of the editor ask for it, and the parts of it that need no window.
#pragma once

#include <cstdint>
#include <string>

#include "frqmap/frqtype.h"
#include "resampler/noterange.h"

enum class CreateMode : std::uint32_t {
  All = 0,         // every syllable: its map is deleted and made anew
  Missing = 1,     // every syllable without a map
  Current = 2,     // the current syllable
  ConvertAll = 3,  // every syllable that has a map of the source kind
  ConvertOne = 4,  // the current syllable
};

struct CreateFrqJob {
  CreateMode Mode = CreateMode::All;
  FrqType Source = FrqTypeFrq;  // of a conversion
  FrqType Target = FrqTypeFrq;  // likewise
  NoteRange Vs4uRange{};        // that a vs4ufrq is analysed in
  bool UseFrq = true;           // a .frq replaces the analysis of a vs4ufrq
  bool InitBoth = true;         // false: of a map in desc.mrq the entry stays, and the analysis beside it goes
};

// One wave to be worked on.
struct WorkItem {
  std::wstring WavePath;
  int ListIndex = 0;  // index of the syllable in the list
};

constexpr bool IsConversion(CreateMode mode) {
  return mode == CreateMode::ConvertAll || mode == CreateMode::ConvertOne;
}

// True if the job is for the syllable that is shown, not for the list.
constexpr bool IsForOne(CreateMode mode) {
  return mode == CreateMode::Current || mode == CreateMode::ConvertOne;
}

// Whether a mode that goes over the list works on a syllable. `hasMap`: the syllable has a map of the kind that is
// made, or of a conversion's source.
constexpr bool IsWanted(CreateMode mode, bool hasMap) {
  if (mode == CreateMode::Missing) return !hasMap;
  return mode != CreateMode::ConvertAll || hasMap;
}

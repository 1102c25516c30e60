// The search for the next run of marked frames, through the maps of all syllables.
#pragma once

#include <optional>
#include <span>

#include "base/sample.h"

class FrqMap;

struct MarkPosition {
  int Index = -1;           // of the map; negative: the first one in the direction
  SampleCount Sample = -1;  // in a run of marks; negative: before or behind all of the map's, by the direction
};

// The run of marks that comes after a position, past the end on to the other one. Of the map that the search begins in
// only what lies in the direction counts, also when it comes round to it: users know that the last run of the only map
// with marks has no next one.
std::optional<MarkPosition> FindMarkedRun(std::span<const FrqMap* const> maps, MarkPosition from, bool forward);

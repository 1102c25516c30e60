// The runs of marked frames of all maps, in numbers: the user goes through them after a check.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/sample.h"

class FrqMap;

// Neighbouring frames with a mark, as Modify and Ignore take them.
struct MarkedRun {
  int Index = -1;                   // of the map
  SampleCount First = 0, Last = 0;  // frames
  std::int32_t Mark = 0;            // of most of the frames
  double From = 0.0;                // [Hz] geometric mean of their pitches; 0 without one
  double To = 0.0;                  // [Hz] of the suggestions: FrqNoPitch to take the pitch away, 0 without any

  bool Changes() const { return To != 0.0; }
};

// The runs in the order of the maps; a null stands for no map.
std::vector<MarkedRun> MarkedRunsOf(std::span<const FrqMap* const> maps);

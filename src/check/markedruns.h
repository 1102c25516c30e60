// The runs of marked frames of all maps: what the user goes through after a check, in numbers.
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
  std::int32_t Mark = 0;            // the one that most of them have
  double From = 0.0;                // [Hz] geometric mean of their pitches; 0 without one
  double To = 0.0;                  // [Hz] of what is suggested: FrqNoPitch to take the pitch away, 0 where nothing is

  bool Changes() const { return To != 0.0; }
};

// In the order of the maps; null for none.
std::vector<MarkedRun> MarkedRunsOf(std::span<const FrqMap* const> maps);

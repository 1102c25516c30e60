// CurveTone: the curve of a map as a tone, so that its pitch can be heard without any resampler. It knows nothing of
// playing, so that its sound can be measured natively.
#pragma once

#include <vector>

#include "frqmap/frqmap.h"

// A stretch of a map: `count` frames from `first` on.
struct FrameRange {
  SampleCount First = 0;
  SampleCount Count = 0;
};

// The tone of these frames in units of 16-bit samples, `hop` samples a frame and ten minutes at most; empty where no
// frame has a pitch, and for a hop of 0 or less. `rate` is the wave's [samples per second].
//
// Pitch and level stand at the beginning of their frame and go on to the next in a straight line. The tone is as loud
// as the map's levels say (root mean square); all of it is lowered where that would not fit into 16 bits, and a map
// without levels has the one of a calm voice throughout. Between voiced stretches it is silent, and its phase goes on.
std::vector<float> CurveTone(const FrqMap& map, FrameRange frames, double rate);

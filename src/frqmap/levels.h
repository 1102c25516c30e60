// The levels of a wave, hop by hop, which stand in for those of maps whose files hold none.
#pragma once

#include <vector>

#include "base/bytes.h"
#include "frqmap/frqmap.h"

// The level (root mean square) of each hop of the first channel, in units of 16-bit samples. `samples` are interleaved
// 16-bit ones as they lie in a wave; a last hop that is not full counts by the samples it has. Empty without channels,
// and for a hop of 0 or less.
std::vector<double> LevelsOfSamples(ByteSpan samples, int channels, SampleCount hop);

// Gives each frame the level of its hop; a frame beyond the levels keeps what it has.
void SetLevels(FrqMap& map, const std::vector<double>& levels);

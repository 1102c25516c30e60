// The levels and the number of samples of a wave file, which a map takes whose own file holds no levels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/sample.h"

// The level of each hop of a wave, see LevelsOfSamples. 0, or -1 with an empty list if the wave cannot be read, is
// not one of 16 bits, or has more levels than memory holds.
int ReadWaveLevels(const std::wstring& wavePath, std::vector<double>& levels, SampleCount hop);

// The number of samples in one channel by the header; 0 if it cannot be read or tells of no channels or bits. Wraps for
// data over 512 MiB.
std::uint32_t ReadSamplesPerChannel(const std::wstring& wavePath);

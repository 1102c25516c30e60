// The rules by which the check library that comes along marks frames where it has the recording: by what is heard at
// each frame. A contour alone cannot tell an octave that was sung from one that an analysis made.
#pragma once

#include <cstdint>
#include <span>

#include "check/checkrecords.h"

// As CheckMap, for the map of a recording: one channel of any scale. A recording that the map cannot be of, as it has
// another length, and a hop that is no number of samples leave the map to CheckMap.
std::int32_t CheckMapBySound(const CheckFrqSettings* settings, CheckFrameRecord* frames,
                             const CheckRegionRecord* regions, std::span<const float> samples,
                             double sampleRate) noexcept;

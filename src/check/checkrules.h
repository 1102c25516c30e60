// The rules by which the check library that comes along marks frames. They look at the three records and at nothing
// else, write the out fields alone, and keep nothing.
#pragma once

#include <cstdint>

#include "check/checkrecords.h"

// Why a frame is marked. The program asks only whether it is.
enum CheckMark : std::int32_t {
  CheckMarkNone = 0,
  CheckMarkFactor = 1,  // pitch by an octave, a twelfth or a fifth off; the right one is suggested
  CheckMarkNoise = 2,   // noise or silence taken for pitch: the pitch around it, or none, is suggested
  CheckMarkGap = 3,     // no pitch within a steady tone; that of its ends is suggested
  CheckMarkFar = 4,     // too far from the pitch of the map for the settings; nothing is suggested
};

// Marks the frames of one map. The number of marked frames, or -1 for a record that is missing or not what it claims to
// be, and without memory; then nothing is written. `regions` may be null.
std::int32_t CheckMap(const CheckFrqSettings* settings, CheckFrameRecord* frames,
                      const CheckRegionRecord* regions) noexcept;

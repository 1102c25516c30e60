// The rules by which the check library that comes along marks frames. They look at the three records and at nothing
// else, write the out fields alone, and keep nothing.
#pragma once

#include <cstdint>

#include "check/checkrecords.h"
#include "frqmap/checkmark.h"

// Marks the frames of one map. Gives the number of marked frames, or -1 for a record that is missing or not what it
// claims to be, and without memory; then nothing is written. `regions` may be null.
std::int32_t CheckMap(const CheckFrqSettings* settings, CheckFrameRecord* frames,
                      const CheckRegionRecord* regions) noexcept;

// Whether the records are what they claim to be, so far as that can be seen.
bool AreCheckRecords(const CheckFrqSettings* settings, const CheckFrameRecord* frames,
                     const CheckRegionRecord* regions) noexcept;

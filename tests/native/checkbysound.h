// The check of a map beside its recording, as the library makes it for the maps of a folder, for one map and samples in
// memory. Tests and ./bench voices ask it.
#pragma once

#include <cstdint>
#include <span>

#include "check/checkrules.h"
#include "check/soundrules.h"
#include "pitch/soundpitches.h"

// The number of marks. A recording that the map cannot be of leaves it to the rules for a map alone.
inline std::int32_t CheckMapBySound(const CheckFrqSettings& settings, CheckFrameRecord& frames,
                                    const CheckRegionRecord* regions, std::span<const float> samples,
                                    double sampleRate) {
  if (!IsMapOf(frames, {frames.Hop, sampleRate, std::ssize(samples), {}})) return CheckMap(&settings, &frames, regions);
  const PitchSearch search(samples, sampleRate);
  const Hearing hearing = HearingOf(search, samples.size(), sampleRate, frames.Hop);
  return MarkBySound(frames, hearing, [&] { return &search; }).value_or(-1);
}

// The hearing of a recording, frame by frame: all that the check asks of the sound whatever the map. It costs nearly
// all of a check's time, which is why it is a thing of its own that can be made ahead and kept.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/sample.h"
#include "pitch/pitchanalysis.h"

// A pitch counts as borne out by a repetition that is so near [cents].
inline constexpr double kSupportReach = 50.0;

// Longer recordings are not listened to [s].
inline constexpr double kMostSecondsHeard = 120.0;

struct HeardFrame {
  float Hz;               // FrqNoPitch where there is no voice
  float Support;          // how well the sound repeats itself after that period, -1 to 1; 0 without a voice
  std::int32_t IsSilent;  // too silent for any voice

  bool operator==(const HeardFrame&) const = default;
};

struct Hearing {
  SampleCount Hop = 0;       // [samples] from frame to frame
  double Rate = 0.0;         // [Hz] of the recording
  std::int64_t Samples = 0;  // its length
  std::vector<HeardFrame> Frames;

  // The frame of that number; a silent one beyond the end of the recording.
  HeardFrame At(SampleCount frame) const;

  bool operator==(const Hearing&) const = default;
};

// The hearing of a recording, of which `search` was made, with so many `samples`. `hop` is positive.
Hearing HearingOf(const PitchSearch& search, std::size_t samples, double rate, SampleCount hop);

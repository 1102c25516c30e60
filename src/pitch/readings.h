// What a recording says of some frames when it is asked more than once: the likeliest pitch first, then what an
// analysis takes for it when it errs.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "pitch/soundpitches.h"

// In the order in which they are offered, and of their names in the string table.
enum class Reading : std::uint8_t {
  Likeliest,
  OctaveBelow,
  OctaveAbove,
  Another,  // the likeliest that keeps three semitones away from the first
};

struct OfferedReading {
  Reading which;
  std::vector<double> hz;  // [Hz], FrqNoPitch for none, of each frame that was asked for

  bool HasVoice() const;
};

// The reading that comes after `last`: behind the last one, and after none, the likeliest. One without any pitch is
// passed over. `frames` are in ascending order and not empty.
OfferedReading NextReading(SoundPitches& sound, std::span<const int> frames, std::optional<Reading> last);

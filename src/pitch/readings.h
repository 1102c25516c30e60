// Readings of the pitch of some frames from their recording, when it is asked more than once: the likeliest pitch
// first, then those that it may be where the analysis errs.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "pitch/soundpitches.h"

// Readings in the order in which they are offered, which is that of their names in the string table.
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

// The reading that comes after `last`; the likeliest comes after the last one and after none. A reading without any
// pitch is passed over. `frames` are in ascending order and not empty.
OfferedReading NextReading(SoundPitches& sound, std::span<const int> frames, std::optional<Reading> last);

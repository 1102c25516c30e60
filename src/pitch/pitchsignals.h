// A recording prepared for the search of its pitch: the two signals that candidates are sought and weighed in.
#pragma once

#include <span>

#include "pitch/repetition.h"

// The range that is searched [Hz].
inline constexpr double kLowestVoiceHz = 60.0;
inline constexpr double kHighestVoiceHz = 1200.0;

struct PitchSignals {
  // `samples` are one channel of any scale, not empty; `rate` is at least 4 kHz.
  PitchSignals(std::span<const float> samples, double rate);

  Repetition fine, coarse;
  double loudest;  // power of the coarse one

 private:
  struct Voice {
    Signal samples;
    double rate;
  };
  static Voice VoiceOf(std::span<const float> samples, double rate);
  explicit PitchSignals(const Voice& voice);
};

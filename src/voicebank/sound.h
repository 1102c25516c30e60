// A recording as one channel of numbers: what pitch is looked for in, and what a note is rendered from.
#pragma once

#include <optional>
#include <vector>

#include "base/bytes.h"
#include "voicebank/wavefile.h"

struct Sound {
  std::vector<float> samples;  // in units of 16-bit samples, whatever the file had
  int rate = 44100;            // per second
};

// The first channel of a wave, which is the one that the levels of a map are taken from. Integers of 8, 16, 24 and 32
// bits, and floats of 32. None for any other form, for no samples, and for a rate under 4 or over 400 kHz.
std::optional<Sound> SoundOfWave(const WaveFormat& format, ByteSpan samples);

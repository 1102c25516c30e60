// A recording as one channel of numbers, and the wave file that a rendered note becomes.
#pragma once

#include <optional>
#include <span>
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

// The samples as integers, those that are too loud cut off at the limits.
std::vector<std::int16_t> To16Bits(std::span<const float> samples);

// A RIFF file of one channel.
Bytes EncodeWaveFile(std::span<const std::int16_t> samples, int rate);

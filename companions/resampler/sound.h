// The wave file that a rendered note becomes.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/bytes.h"
#include "voicebank/sound.h"

// As integers, with all that is too loud cut off.
std::vector<std::int16_t> To16Bits(std::span<const float> samples);

// A RIFF file of one channel.
Bytes EncodeWaveFile(std::span<const std::int16_t> samples, int rate);

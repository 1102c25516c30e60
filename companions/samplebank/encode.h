// The file formats of a voicebank, as bytes.
//
// The map is written here field by field and not with the program's own codec, so that a test that loads the sample
// voicebank holds two writers of the format against each other.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/bytes.h"

// A RIFF file of 16-bit samples at FrqSampleRate. `samples` holds the channels in turn.
Bytes EncodeWave(std::span<const std::int16_t> samples, std::int16_t channels);

// A .frq map: one frame per pair of entries of `pitch` [Hz] and `levels` [16-bit units], which are of one size, and in
// the header the mean of the pitched frames.
Bytes EncodeMap(std::int32_t hopSamples, std::span<const double> pitch, std::span<const double> levels);

// Text in code page 932, which voicebanks are written in by custom. It knows ASCII and the few characters of the sample
// voicebank; any other becomes "?".
std::string EncodeCp932(std::u8string_view text);

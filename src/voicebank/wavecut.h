// A wave as a file of its own: the whole of one, or a part that is cut out. Apart from wavefile.h, which only reads.
#pragma once

#include <optional>

#include "voicebank/wavefile.h"

// The samples from `first` up to `end` of each channel, as they are and in their own format; what is beyond the wave
// is left out, so that the part may be empty. None for a format in which samples have no places of their own, such as
// a compressed one.
std::optional<DecodedWave> CutWave(const DecodedWave& wave, std::int64_t first, std::int64_t end);

// The format of 16-bit samples.
WaveFormat PlainFormat(int channels, int rate);

// A RIFF file. `extension` is the bytes of the format behind the fields of WaveFormat.
Bytes EncodeWave(const WaveFormat& format, ByteSpan extension, ByteSpan samples);

// The .dio format: a list of times and frequencies, without amplitudes and without an average.
//
// Little-endian, without padding: "wrld-dio", samples in one channel of the wave (i32), a rate (i32), frame count
// (i32), and for each frame its time [s] and its frequency (f64 each, 0.0 where there is no pitch). The rate is what
// the times are counted in, 44100 for a hop of 256, and the only place that tells the hop.
#pragma once

#include <cstdint>
#include <optional>

#include "base/bytes.h"
#include "frqmap/frqmap.h"

// The map in a file: Magic, Hop, FrameCount, Frames without amplitudes. None if the file is no such map
// or ends too early. Times are not looked at, nor is what follows the last frame.
std::optional<FrqMap> DecodeDio(ByteSpan file);

// The file of a map; none for a hop that no rate can tell.
std::optional<Bytes> EncodeDio(const FrqMap& map, std::uint32_t samplesPerChannel);

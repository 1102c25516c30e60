// The FREQ0003 format: files of the kinds .frq and .frc, which differ in one header field only.
//
// Little-endian, without padding: "FREQ0003", hop (i32), average [Hz] (f64), a 16-byte field, frame count (i32), and
// for each frame its frequency [Hz] and its amplitude (f64 each).
#pragma once

#include <optional>

#include "base/bytes.h"
#include "frqmap/frqmap.h"

// The map in a file: Magic, Hop, Average, Tag, FrameCount and Frames; the rest is that of a new map. None if the file
// is no such map or ends too early. Bytes behind the last frame are passed over.
std::optional<FrqMap> DecodeFreq0003(ByteSpan file);

// The file of a map. `kind`, FrqTypeFrq or FrqTypeFrc, decides the 16-byte field; the map's own Magic, Tag and Kind
// do not count.
Bytes EncodeFreq0003(const FrqMap& map, FrqType kind);

// The content of the 16-byte field in a file of a kind.
std::array<char, 16> Freq0003Tag(FrqType kind);

// The first bytes of a file of ours.
inline constexpr std::array<char, 8> Freq0003Magic = {'F', 'R', 'E', 'Q', '0', '0', '0', '3'};

// The .pmk format: the pitch periods of a wave, one record each, without amplitudes.
//
// Little-endian, without padding: 0x13 0x00, mean period [samples at 44100 Hz] (f64, 0.0 for none), record count (i32),
// and for each record the sample position at which its period ends and the period [samples] (i32 each). A period under
// 50 stands for no pitch. Periods keep no grid: the frames of a map are laid over them on reading, and each frame is
// cut into whole periods on writing, so that a round trip may lengthen the map.
#pragma once

#include <cstdint>
#include <optional>

#include "base/bytes.h"
#include "frqmap/frqmap.h"

// The map in a file: the first two bytes of Magic, Average, a Hop of 256, FrameCount, and Frames without amplitudes.
// None if the file is no such map, ends too early, has no record, or if its last record tells no sensible length: one
// that neither the records nor the wave beside it, of so many bytes, can reach. `framesWithRecord`, unless null: how
// many frames a record reaches; those behind the last record have no level either.
std::optional<FrqMap> DecodePmk(ByteSpan file, std::int64_t waveBytes, SampleCount* framesWithRecord = nullptr);

// Whether as many records follow the head as it says, whatever they hold.
bool HoldsAllRecords(ByteSpan file);

// The file of a map; none for a hop of 0 or less, and for a map that outgrows positions of 32 bits or some four million
// records.
std::optional<Bytes> EncodePmk(const FrqMap& map);

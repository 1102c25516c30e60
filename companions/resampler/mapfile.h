// The map beside a wave: read, or made where there is none. Its file is of the kind that the family of a resampler
// keeps.
#pragma once

#include <optional>
#include <string>

#include "base/bytes.h"
#include "frqmap/frqmap.h"

// The map of a wave; none if there is no map, or none that can be read. `wavePath` is a full path.
std::optional<FrqMap> ReadMapOf(const std::wstring& wavePath, FrqType kind);

// Whether there is a map: a file, good or bad, or an entry of desc.mrq that can be read.
bool HasMap(const std::wstring& wavePath, FrqType kind);

// Writes the map whole or not at all, and an entry of desc.mrq while no other process of ours is at the file. False if
// it cannot be written, or the kind cannot be made.
bool WriteMapOf(const std::wstring& wavePath, FrqType kind, const FrqMap& map, std::uint32_t waveSamples);

// Writes a file under a name of its own first, so that nobody ever finds half of it. False, with nothing left behind,
// if that fails.
bool WriteFileAtOnce(const std::wstring& path, ByteSpan bytes);

// The facts of a wave and its maps, read once for a list and for a report.
#pragma once

#include <optional>

#include "batch/context.h"
#include "batch/facts.h"

// The facts of the map of one kind; none without a map. `map` is filled where the map can be read.
std::optional<MapFacts> LookAtMap(Bank& bank, const std::wstring& wave, FrqType kind, FrqMap& map);

// Reads the map of one kind. False where there is none, and where it cannot be read, which becomes a fault of the
// outcome.
bool ReadMap(const WaveTask& task, FrqType kind, FrqMap& map, Outcome& outcome);

// The facts of a wave with all its maps, or with that of one kind.
SyllableFacts LookAtSyllable(Bank& bank, const std::wstring& wave, std::optional<FrqType> kind);
// The facts of a wave with all its maps, and the map of one kind in `shownMap` where it can be read.
SyllableFacts LookAtSyllable(Bank& bank, const std::wstring& wave, FrqType shown, FrqMap& shownMap);

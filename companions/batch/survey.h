// What is known of a wave and its maps: read once, for a list and for a report.
#pragma once

#include <optional>

#include "batch/context.h"
#include "batch/facts.h"

// Of the map of one kind; none without a map. `map` is filled where the map can be read.
std::optional<MapFacts> LookAtMap(Bank& bank, const std::wstring& wave, FrqType kind, FrqMap& map);

// The same for who needs the map: false where there is none, and where it cannot be read, which is a fault of the
// outcome.
bool ReadMap(const WaveTask& task, FrqType kind, FrqMap& map, Outcome& outcome);

// Of all maps that are there, or of one kind.
SyllableFacts LookAtSyllable(Bank& bank, const std::wstring& wave, std::optional<FrqType> kind);
// Of all of them, with the map of one kind in `shownMap` where it can be read.
SyllableFacts LookAtSyllable(Bank& bank, const std::wstring& wave, FrqType shown, FrqMap& shownMap);

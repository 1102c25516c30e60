// The common part of the commands that write maps: reading one, writing it back, and telling of either.
#pragma once

#include <functional>
#include <string>

#include "batch/context.h"
#include "frqmap/frqmap.h"

// A line that tells what was done to a map, or would be without a dry run.
std::string LineOfChange(const Context& context, const WaveTask& task, FrqType kind, const std::string& what);

std::string WriteFault(const WaveTask& task, FrqType kind);

// Reads the maps of a wave, one kind or all, has each changed and writes it. `change` gives what it did, in words for
// the line; nothing where it left the map as it is. A map that cannot be read or written is a fault of the outcome.
using MapChange = std::function<std::string(FrqMap& map, FrqType kind)>;
Outcome ChangeMaps(const Context& context, const WaveTask& task, const MapChange& change);

// The sum of a command that writes maps: `done`, as in "made".
void SayChanges(Context& context, const std::string& done);

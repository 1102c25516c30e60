// The journeys by their names.
#pragma once

#include <memory>
#include <vector>

#include "driver/journey.h"

struct NamedJourney {
  const char* Name;
  std::unique_ptr<Journey> (*Make)();
};
const std::vector<NamedJourney>& Journeys();
std::unique_ptr<Journey> MakeConversion();

// The main job as a newcomer would do it: an octave error goes, missing maps are made, the other windows are visited.
// With a path of the user's own that is opened and shown, and nothing is done to it.
std::unique_ptr<Journey> MakeTour(const std::filesystem::path& path);

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

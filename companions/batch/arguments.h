// The command line, read by CLI11.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch/order.h"

// The order that the arguments give, or none: then `text` is what is to be shown, and `isHelp` tells whether somebody
// has asked for it. The name of the program is not among the arguments.
struct ReadArguments {
  std::optional<Order> Call;
  std::string Text;
  bool IsHelp = false;
};
ReadArguments ReadCommandLine(const std::vector<std::string>& arguments);

// The measuring of a row: its work and its yardstick in turn within one run, so that whatever else the machine does
// weighs on both alike.
#pragma once

#include <chrono>

#include "rows.h"

struct Measurement {
  double value;      // median of the measured work, in the row's unit
  double yardstick;  // median of the yardstick, likewise
  double ratio;      // median of the ratios of neighbours, which is steadier than the ratio of the medians
  double spread;     // of these ratios: half of the way from their first quartile to the third, as part of the median
};

Measurement Measure(const Row& row);

// Ends the process with a message unless `held`: the time of work that failed says nothing.
void Require(bool held, const char* what);

template <typename Function>
double MillisecondsOf(Function&& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

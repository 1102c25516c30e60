#include "measuring.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

// Pairs are taken for a while, so that short work, which is easily disturbed, is measured more often.
constexpr double kMeasuringMs = 3000.0;
constexpr std::size_t kFewestPairs = 9;
constexpr std::size_t kMostPairs = 2000;

double MedianOf(std::vector<double> numbers) {
  const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
  std::ranges::nth_element(numbers, middle);
  return *middle;
}

}  // namespace

Measurement Measure(const Row& row) {
  const std::unique_ptr<Work> work = row.setUp();
  // Once for nothing: caches fill, and the system starts what it starts late.
  work->Measured();
  work->Yardstick();

  std::vector<double> values;
  std::vector<double> yardsticks;
  std::vector<double> ratios;
  double spentMs = 0.0;
  while (ratios.size() < kFewestPairs || (spentMs < kMeasuringMs && ratios.size() < kMostPairs)) {
    spentMs += MillisecondsOf([&] {
      values.push_back(work->Measured());
      yardsticks.push_back(work->Yardstick());
    });
    ratios.push_back(values.back() / yardsticks.back());
  }
  return {MedianOf(values), MedianOf(yardsticks), MedianOf(ratios)};
}

void Require(bool held, const char* what) {
  if (held) return;
  std::fprintf(stderr, "marlit_bench: %s\n", what);
  std::fflush(stderr);
  // At once: windows of other threads may be in the middle of anything.
  std::_Exit(1);
}

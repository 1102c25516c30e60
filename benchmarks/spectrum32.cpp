// spectrum32 PATH: prints the time [ms] of the spectrum of a minute on one thread, by the path of that number, for the
// native benchmark to compare with.
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "spectrumwave.h"

int main(int count, char** arguments) {
  Require(count == 2, "usage: spectrum32 PATH");
  const auto path = static_cast<FftPath>(std::atoi(arguments[1]));
  Require(static_cast<bool>(TransformOf(path)), "no such path here");
  SpectrumOfAMinute minute;
  minute.Milliseconds(path, 1);
  double least = minute.Milliseconds(path, 1);
  for (int i = 1; i < kSpectrumRepeats; ++i) least = std::min(least, minute.Milliseconds(path, 1));
  std::printf("%.4f\n", least);
  return 0;
}

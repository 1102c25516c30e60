// pitch_of_waves: the pitch of each wave whose path stands on a line of the standard input, as `./bench voices` weighs
// it against other analyses. It is a program of its own so that the analysis alone is timed, and so that somebody who
// works on it need not build the rest.
//
// A line comes out for each: the path, the seconds of processor time that the analysis took, the distance of its
// frames [s], and their pitches [Hz], 0 for none.
#include <cmath>
#include <cstdio>
#include <ctime>
#include <iostream>
#include <optional>
#include <string>

#include "frqmap/frqtype.h"
#include "pitch/pitchanalysis.h"
#include "readsound.h"

namespace {

void PrintPitch(const std::string& path, const Sound& sound) {
  // The frames are as far apart as those of a map at the usual rate.
  const auto hop = static_cast<SampleCount>(std::lround(256.0 * sound.rate / 44100.0));
  const std::clock_t start = std::clock();
  const std::vector<double> pitch = AnalysePitch(sound.samples, sound.rate, hop);
  const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  std::printf("%s\t%.6f\t%.9f\t", path.c_str(), seconds, static_cast<double>(hop) / sound.rate);
  for (const double hz : pitch) std::printf("%.3f ", hz > FrqNoPitch ? hz : 0.0);
  std::printf("\n");
}

}  // namespace

int main() {
  for (std::string path; std::getline(std::cin, path);) {
    const std::optional<Sound> sound = ReadSound(path);
    if (!sound) {
      std::fprintf(stderr, "pitch_of_waves: cannot read %s\n", path.c_str());
      return 1;
    }
    PrintPitch(path, *sound);
  }
  return 0;
}

// The pitch of waves that hold none. How well it is found in voices, ./bench measures.
#include "resampler/pitchanalysis.h"

#include <gtest/gtest.h>

#include "frqmap/frqtype.h"

namespace {

TEST(PitchAnalysis, GivesAFrameForEachBegunHopOfAnything) {
  const std::tuple<std::size_t, double, std::size_t> cases[] = {
      {0, 44100, 0}, {256, 44100, 1}, {257, 8000, 2}, {900, 1e6, 4}};
  for (const auto& [samples, rate, frames] : cases) {
    // A constant repeats itself at every lag.
    const std::vector<double> found = AnalysePitch(std::vector<float>(samples, 9000.0f), rate, 256);
    EXPECT_EQ(found, std::vector<double>(frames, FrqNoPitch)) << samples;
  }
}

}  // namespace

// Maps are made from this analysis: what it gets wrong, the user draws anew by hand. ./bench measures it closely.
#include "resampler/pitchanalysis.h"

#include <gtest/gtest.h>

#include <cmath>

#include "frqmap/frqtype.h"
#include "samplebank/voice.h"

namespace {

// With everything that a mouth does: jitter, breath, hiss, hums, bursts and fades.
TEST(PitchAnalysis, FindsThePitchOfSungSyllables) {
  int frames = 0, voiced = 0, misheard = 0, gross = 0;
  Noise noise(1);
  for (const double note : {41.0, 52.0, 66.0, 80.0}) {
    for (int i = 0; i < 5; ++i) {
      const int vowel = (i + static_cast<int>(note)) % 5;
      const SungSyllable sung =
          Sing({static_cast<Consonant>(i), static_cast<Vowel>(vowel), static_cast<Ornament>(i % 3), note, 0.8}, noise);
      const std::vector<float> samples(sung.samples.begin(), sung.samples.end());
      const std::vector<double> found = AnalysePitch(samples, FrqSampleRate, 256);
      for (std::size_t frame = 0; frame < found.size(); ++frame, ++frames) {
        const double known = sung.pitch[frame * 256];
        const bool isVoiced = known > FrqNoPitch, isFound = found[frame] > FrqNoPitch;
        voiced += isVoiced;
        misheard += isVoiced != isFound;
        gross += isVoiced && isFound && std::abs(found[frame] / known - 1.0) > 0.2;
      }
    }
  }
  EXPECT_LT(gross, voiced / 100);
  EXPECT_LT(misheard, frames / 20);
}

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

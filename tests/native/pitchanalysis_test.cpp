// Maps are made from this analysis: what it gets wrong, the user draws anew by hand. The aims are those of the table
// that ./bench prints.
#include "resampler/pitchanalysis.h"

#include <gtest/gtest.h>

#include "native/knownvoices.h"
#include "samplebank/voice.h"

namespace {

constexpr double kMostGrossPercent = 1.0;
constexpr double kMostVoicingPercent = 5.0;

TEST(PitchAnalysis, FindsTheKnownPitchOfVoices) {
  for (const voices::KnownVoice& voice : voices::All()) {
    SCOPED_TRACE(voice.name);
    voices::Errors errors;
    const std::vector<double> found = AnalysePitch(voices::Sound(voice), voice.sampleRate, voices::kHop);
    voices::Count(
        found, [&](double t) { return voices::PitchAt(voice, t); }, voice.sampleRate, errors);
    EXPECT_LT(errors.GrossPercent(), kMostGrossPercent);
    EXPECT_LT(errors.VoicingPercent(), kMostVoicingPercent);
    const std::size_t middle = found.size() / 2;
    const double known = voices::PitchAt(voice, static_cast<double>(middle) * voices::kHop / voice.sampleRate);
    if (known > 0.0) {
      EXPECT_NEAR(1200.0 * std::log2(found[middle] / known), 0.0, 5.0) << "cents";
    }
  }
}

// With everything that a mouth does besides: jitter, breath, hiss, hums, bursts and fades.
TEST(PitchAnalysis, FindsThePitchOfSungSyllables) {
  voices::Errors errors;
  Noise noise(1);
  for (const double note : {41.0, 52.0, 66.0, 80.0}) {
    for (int i = 0; i < 5; ++i) {
      const int vowel = (i + static_cast<int>(note)) % 5;
      SungSyllable sung =
          Sing({static_cast<Consonant>(i), static_cast<Vowel>(vowel), static_cast<Ornament>(i % 3), note, 0.8}, noise);
      const auto known = [&](double t) {
        const double hz = sung.pitch[static_cast<std::size_t>(std::lround(t * FrqSampleRate))];
        return hz > FrqNoPitch ? hz : 0.0;
      };
      const std::vector<float> samples(sung.samples.begin(), sung.samples.end());
      voices::Count(AnalysePitch(samples, FrqSampleRate, voices::kHop), known, FrqSampleRate, errors);
    }
  }
  EXPECT_LT(errors.GrossPercent(), kMostGrossPercent);
  EXPECT_LT(errors.VoicingPercent(), kMostVoicingPercent);
}

TEST(PitchAnalysis, GivesAFrameForEachBegunHopOfAnything) {
  struct Case {
    std::size_t samples;
    double rate;
    std::size_t frames;
  };
  const Case cases[] = {{0, 44100, 0}, {1, 44100, 1}, {256, 44100, 1}, {257, 8000, 2}, {3000, 3000, 12}, {900, 1e6, 4}};
  for (const Case& test : cases) {
    // A constant repeats itself at every lag.
    const std::vector<double> found = AnalysePitch(std::vector<float>(test.samples, 9000.0f), test.rate, 256);
    EXPECT_EQ(found, std::vector<double>(test.frames, FrqNoPitch)) << test.samples;
  }
}

}  // namespace

// The pitch of voices that are hard to hear: what their frames may be, and how that is weighed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <span>
#include <vector>

#include "pitch/candidatescore.h"
#include "pitch/pitchanalysis.h"
#include "pitch/realfft.h"

namespace {

#include "pitch/candidateweights.inc"

constexpr double kRate = 44100.0;

// Half a second of harmonics of those levels [dB], and noise of a level below 5 kHz or so.
std::vector<float> VoiceOf(double hz, std::span<const double> levels, double noise) {
  std::mt19937 chance(7);
  std::normal_distribution<double> hiss;
  std::vector<float> samples(22050);
  double breath = 0.0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    breath += 0.5 * (hiss(chance) - breath);
    double sum = breath * std::pow(10.0, noise / 20.0);
    for (std::size_t k = 0; k < levels.size(); ++k) {
      const double phase = 2.0 * std::numbers::pi * hz * static_cast<double>((k + 1) * i) / kRate;
      sum += std::pow(10.0, levels[k] / 20.0) * std::sin(phase + static_cast<double>(k * k));
    }
    samples[i] = static_cast<float>(3000.0 * sum);
  }
  return samples;
}

TEST(PitchOfHardVoices, KeepsItsOctave) {
  const struct {
    const char* what;
    double hz;
    std::vector<double> levels;
    double noise;
  } cases[] = {
      {"breath over a high voice", 520.0, {0, -6, -14, -20}, 3.0},
      {"breath over a higher one", 700.0, {0, -8, -16}, 3.0},
      {"a scream in its second harmonic", 290.0, {-18, 0, -16, -8, -18, -12}, -40.0},
      {"a low voice without its first harmonic", 110.0, {-40, -6, 0, -3, -6, -10, -12, -14}, -40.0},
  };
  for (const auto& [what, hz, levels, noise] : cases) {
    const std::vector<double> heard = AnalysePitch(VoiceOf(hz, levels, noise), kRate, 256);
    const auto isRight = [hz](double one) { return std::abs(std::log2(one / hz)) < 0.1; };
    const auto inner = std::span(heard).subspan(8, heard.size() - 16);
    EXPECT_GE(std::ranges::count_if(inner, isRight), std::ssize(inner) * 9 / 10) << what;
  }
}

TEST(PitchOfHardVoices, IsWeighedAsLearned) {
  Traits traits;
  for (std::size_t i = 0; i < traits.size(); ++i) traits[i] = 0.1f * (static_cast<float>(i * 7 % 11) - 5.0f);
  EXPECT_NEAR(ScoreOf(traits), kExampleScore, 1e-3);
}

TEST(PitchOfHardVoices, IsSoughtInATrueSpectrum) {
  std::mt19937 chance(3);
  std::vector<float> input(kFftLength), re(kFftLength / 2), im(kFftLength / 2);
  for (float& one : input) one = static_cast<float>(chance() % 2001) / 1000.0f - 1.0f;
  RealFft().Transform(std::span<const float, kFftLength>(input), re, im);
  for (std::size_t k = 0; k < re.size(); k += 37) {
    double sumRe = 0.0, sumIm = 0.0;
    for (std::size_t i = 0; i < kFftLength; ++i) {
      const double angle = 2.0 * std::numbers::pi * static_cast<double>(k * i % kFftLength) / kFftLength;
      sumRe += input[i] * std::cos(angle);
      sumIm -= input[i] * std::sin(angle);
    }
    EXPECT_NEAR(re[k], sumRe, 1e-3) << k;
    EXPECT_NEAR(im[k], sumIm, 1e-3) << k;
  }
}

}  // namespace

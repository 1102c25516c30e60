#include "pitch/candidatescore.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace {

#include "pitch/candidateweights.inc"

// The figures below are those with which the open recordings and known voices of benchmarks/voices had the fewest gross
// errors together, of some hundred tried.
constexpr double kPerScore = 0.06;
constexpr double kLowestScore = -12.0, kHighestScore = 8.0;  // beyond, a score says no more about there being a voice
// The scores alone take 2.2 % of the unvoiced frames of recordings for voiced where they miss 1 % of the voiced; with
// this much of the best candidate's correlation it is 1.4 %.
constexpr double kPerCorrelation = 0.3;
constexpr double kUsualCorrelation = 0.7;
// A shout may put so much into the second or third harmonic that the scores take that for the pitch. The correlation
// tells the right one in a clean sound, and nothing in breath: the difference of two candidates' correlations counts
// the more, the higher the highest is. It must be able to make up for the scores, so that these set a candidate back by
// a limited amount only.
constexpr double kMostBehind = 2.2;
constexpr double kPerDifference = 1.2;
constexpr double kUnclear = 0.65, kClear = 0.95;

constexpr std::size_t kFirst = std::size(kFirstOffsets), kSecond = std::size(kSecondOffsets);
static_assert(std::size(kFirstWeights) == kTraits * kFirst && std::size(kSecondWeights) == kFirst * kSecond &&
              std::size(kLastWeights) == kSecond);

// Adds `values` times a matrix of weights, a row for each value, to `sums`. Four rows at a time, so that a sum is
// loaded and stored a quarter as often.
template <std::size_t kInputs, std::size_t kOutputs>
void AddWeighed(const float* values, const float* __restrict weights, float* __restrict sums) {
  static_assert(kInputs % 4 == 0);
  for (std::size_t i = 0; i < kInputs; i += 4, weights += 4 * kOutputs) {
    const float a = values[i], b = values[i + 1], c = values[i + 2], d = values[i + 3];
    for (std::size_t k = 0; k < kOutputs; ++k) {
      sums[k] += (a * weights[k] + b * weights[k + kOutputs]) +
                 (c * weights[k + 2 * kOutputs] + d * weights[k + 3 * kOutputs]);
    }
  }
}

template <std::size_t kInputs, std::size_t kOutputs>
std::array<float, kOutputs> Layer(const std::array<float, kInputs>& inputs, const float* weights,
                                  const float (&offsets)[kOutputs]) {
  std::array<float, kOutputs> outputs;
  std::copy(offsets, offsets + kOutputs, outputs.begin());
  AddWeighed<kInputs, kOutputs>(inputs.data(), weights, outputs.data());
  for (float& one : outputs) one = std::max(one, 0.0f);
  return outputs;
}

}  // namespace

float ScoreOf(const Traits& traits) {
  const auto first = Layer(traits, kFirstWeights, kFirstOffsets);
  const auto second = Layer(first, kSecondWeights, kSecondOffsets);
  float score = kLastOffsets[0];
  for (std::size_t i = 0; i < kSecond; ++i) score += second[i] * kLastWeights[i];
  return score;
}

std::vector<double> StrengthsOf(std::span<const FoundPitch> pitches) {
  std::vector<double> strengths;
  if (pitches.empty()) return strengths;
  for (const FoundPitch& one : pitches) strengths.push_back(ScoreOf(one.traits));
  const auto top = std::ranges::max_element(strengths);
  const double topScore = *top;
  const double correlation = pitches[static_cast<std::size_t>(top - strengths.begin())].correlation;
  const double highest = std::ranges::max_element(pitches, {}, &FoundPitch::correlation)->correlation;
  const double clear = std::clamp((highest - kUnclear) / (kClear - kUnclear), 0.0, 1.0);

  const double ofVoice = kVoiceless + kPerScore * std::clamp(topScore, kLowestScore, kHighestScore) +
                         kPerCorrelation * (correlation - kUsualCorrelation);
  for (std::size_t i = 0; i < pitches.size(); ++i) {
    strengths[i] = ofVoice - kPerScore * std::min(topScore - strengths[i], kMostBehind) +
                   kPerDifference * clear * (pitches[i].correlation - correlation);
  }
  return strengths;
}

#include "pitch/pitchanalysis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <utility>

#include "frqmap/frqtype.h"
#include "pitch/candidatescore.h"

namespace {

constexpr double kLeastRate = 4000.0;
constexpr double kSilent = 1.0 + kVoiceless;  // strength of no pitch where no voice can be stronger
constexpr double kJumpCost = 0.6;             // per octave from frame to frame, for frames 10 ms apart
constexpr double kVoicingCost = 0.14;         // per change between voice and none, likewise
constexpr double kCostSeconds = 0.010;
// A pitch is the mean over its frame and those within this time. One period of a rough voice differs from the next: a
// quarter of the errors of over 50 cents in recordings were that (1.3 % without, 1.0 with, 1.2 over twice the time).
constexpr double kSmoothSeconds = 0.006;
constexpr double kSmoothStep = 0.2;  // [octaves] from frame to frame, beyond which a voice has jumped

struct Candidate {
  double logHz;     // octaves; of no meaning for none
  double strength;  // how much speaks for it
  bool isVoice;
};

// The candidates of a frame; the first always stands for no pitch.
using Candidates = std::vector<Candidate>;

double CostOfStep(const Candidate& from, const Candidate& to, double scale) {
  if (from.isVoice != to.isVoice) return kVoicingCost * scale;
  return from.isVoice ? kJumpCost * scale * std::abs(from.logHz - to.logHz) : 0.0;
}

// The candidate of each frame on the best path (Viterbi 1967). `scale` is that of the costs, which frames of another
// distance than kCostSeconds need.
std::vector<std::size_t> BestPath(const std::vector<Candidates>& frames, double scale) {
  std::vector<std::array<std::uint8_t, kMostCandidates + 1>> cameFrom(frames.size());
  std::vector<double> scores(1, 0.0), next;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    next.clear();
    for (std::size_t k = 0; k < frames[i].size(); ++k) {
      double best = -std::numeric_limits<double>::infinity();
      for (std::size_t from = 0; from < scores.size(); ++from) {
        const double step = i == 0 ? 0.0 : CostOfStep(frames[i - 1][from], frames[i][k], scale);
        if (scores[from] - step <= best) continue;
        best = scores[from] - step;
        cameFrom[i][k] = static_cast<std::uint8_t>(from);
      }
      next.push_back(best + frames[i][k].strength);
    }
    std::swap(scores, next);
  }
  std::vector<std::size_t> path(frames.size());
  std::size_t at = static_cast<std::size_t>(std::ranges::max_element(scores) - scores.begin());
  for (std::size_t i = frames.size(); i-- > 0; at = cameFrom[i][at]) path[i] = at;
  return path;
}

// The mean of each pitch and its neighbours on both sides, the nearer the more, in octaves. Where a voice begins, ends
// or jumps it is over as many frames as there are on the shorter side, so that no end is drawn to the middle.
void Smooth(std::vector<double>& pitch, std::ptrdiff_t most) {
  constexpr double kNone = -100.0;  // an octave that nothing is near to
  std::vector<double> octaves(pitch.size(), kNone);
  for (std::size_t i = 0; i < pitch.size(); ++i) {
    if (pitch[i] > FrqNoPitch) octaves[i] = std::log2(pitch[i]);
  }
  const auto count = std::ssize(pitch);
  const auto at = [&](std::ptrdiff_t i) { return i >= 0 && i < count ? octaves[static_cast<std::size_t>(i)] : kNone; };
  const auto isJoined = [&](std::ptrdiff_t a, std::ptrdiff_t b) { return std::abs(at(a) - at(b)) <= kSmoothStep; };
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    if (at(i) == kNone) continue;
    double sum = at(i) * static_cast<double>(most + 1), weights = static_cast<double>(most + 1);
    for (std::ptrdiff_t k = 1; k <= most && isJoined(i - k + 1, i - k) && isJoined(i + k - 1, i + k); ++k) {
      const auto weight = static_cast<double>(most + 1 - k);
      sum += weight * (at(i - k) + at(i + k));
      weights += 2.0 * weight;
    }
    if (weights > static_cast<double>(most + 1)) pitch[static_cast<std::size_t>(i)] = std::exp2(sum / weights);
  }
}

// The range that is searched at a frame. Where none is asked for it is all that the lags hold, a little beyond the
// range of voices at either end.
LogRange RangeOf(const PitchConstraint& constraint, std::size_t frame) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  LogRange range{-kInfinity, kInfinity};
  if (constraint.lowestHz > kLowestVoiceHz) range.lowest = std::log2(constraint.lowestHz);
  if (constraint.highestHz < kHighestVoiceHz) range.highest = std::log2(constraint.highestHz);
  if (constraint.line.empty()) return range;
  if (!(constraint.line[frame] > FrqNoPitch)) return {kInfinity, -kInfinity};
  const double middle = std::log2(constraint.line[frame]), reach = constraint.cents / 1200.0;
  return {std::max(range.lowest, middle - reach), std::min(range.highest, middle + reach)};
}

}  // namespace

PitchSearch::PitchSearch(std::span<const float> samples, double sampleRate) : rate_(sampleRate) {
  if (samples.empty() || !(sampleRate >= kLeastRate)) return;
  signals_ = std::make_unique<const PitchSignals>(samples, sampleRate);
}

PitchSearch::~PitchSearch() = default;

std::vector<PitchFrame> PitchSearch::Candidates(SampleCount hop, SampleCount first, SampleCount count,
                                                const PitchConstraint& constraint) const {
  std::vector<PitchFrame> frames(static_cast<std::size_t>(count));
  if (!signals_) return frames;
  CandidateSearch search(*signals_);
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const double seconds = (first + static_cast<double>(i)) * hop / rate_;
    const bool isSilent = search.LevelAt(seconds) < kSilentLevel;
    frames[i].voiceless = isSilent ? kSilent : kVoiceless;
    if (isSilent) continue;
    const LogRange range = RangeOf(constraint, i);
    const std::vector<FoundPitch>& found = search.At(seconds, range);
    const std::vector<double> strengths = StrengthsOf(found);
    std::vector<PitchCandidate>& pitches = frames[i].pitches;
    pitches.reserve(found.size());
    for (std::size_t k = 0; k < found.size(); ++k) {
      if (!range.Holds(found[k].logHz)) continue;
      const auto place = std::ranges::upper_bound(pitches, strengths[k], std::greater(), &PitchCandidate::strength);
      pitches.insert(place, {found[k].logHz, strengths[k]});
    }
  }
  return frames;
}

double PitchSearch::SupportAt(SampleCount sample, double hz, double cents) const {
  if (!signals_ || !(hz >= kLowestVoiceHz && hz <= kHighestVoiceHz)) return 0.0;
  const Repetition& fine = signals_->fine;
  const double lag = fine.Rate() / hz, share = std::exp2(cents / 1200.0);
  const auto centre = static_cast<std::ptrdiff_t>(sample / rate_ * fine.Rate());
  const std::ptrdiff_t first = std::lround(lag / share), last = std::lround(lag * share);
  std::vector<double> correlations(static_cast<std::size_t>(last - first + 1));
  fine.AtEach(centre, first, correlations);
  return std::ranges::max(correlations);
}

double RoundedHz(double hz) {
  constexpr double kSteps = 1 << 20;
  return std::round(hz * kSteps) / kSteps;
}

std::vector<double> BestPitchPath(std::span<const PitchFrame> frames, double seconds) {
  std::vector<double> pitch(frames.size(), FrqNoPitch);
  if (frames.empty()) return pitch;
  std::vector<Candidates> candidates;
  candidates.reserve(frames.size());
  for (const PitchFrame& frame : frames) {
    const std::size_t count = std::min(frame.pitches.size(), kMostCandidates);
    Candidates& own = candidates.emplace_back();
    own.reserve(count + 1);
    own.push_back({0.0, frame.voiceless, false});
    for (const PitchCandidate& one : std::span(frame.pitches).first(count)) {
      own.push_back({one.logHz, one.strength, true});
    }
  }
  const std::vector<std::size_t> path = BestPath(candidates, kCostSeconds / seconds);
  for (std::size_t i = 0; i < pitch.size(); ++i) {
    const Candidate& taken = candidates[i][path[i]];
    if (taken.isVoice) pitch[i] = std::exp2(taken.logHz);
  }
  Smooth(pitch, std::lround(kSmoothSeconds / seconds));
  for (double& hz : pitch) hz = RoundedHz(hz);
  return pitch;
}

std::vector<double> AnalysePitch(std::span<const float> samples, double sampleRate, SampleCount hop) {
  const auto count =
      static_cast<SampleCount>((samples.size() + static_cast<std::size_t>(hop) - 1) / static_cast<std::size_t>(hop));
  return BestPitchPath(PitchSearch(samples, sampleRate).Candidates(hop, 0, count), hop / sampleRate);
}

#include "pitch/pitchanalysis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <numbers>
#include <span>
#include <utility>

#include "frqmap/frqtype.h"

namespace {

constexpr double kLeastRate = 4000.0;
constexpr double kCoarseRate = 11025.0;    // candidates are sought at about this rate, in a sixteenth of the work,
constexpr double kFineRate = 22050.0;      // and weighed at this one, which leaves the noise above 6 kHz out
constexpr double kRumbleHz = 45.0;         // what is below is no voice, but would correlate with itself at any lag
constexpr double kLeastWindow = 0.010;     // [s]; a lower pitch is compared over one whole period
constexpr double kSilence = 0.03;          // level, as part of the loudest one, that is hardly a voice any more
constexpr double kNoiseFloor = 0.003;      // level, likewise, whose correlation counts half
constexpr double kVoicing = 0.42;          // strength that a voice must have
constexpr double kLeastCorrelation = 0.3;  // of a candidate
constexpr double kOctaveCost = 0.01;       // per octave downwards: a sound of period T repeats itself in 2 T as well,
constexpr double kNoisyOctaveCost = 0.15;  // and by chance better, the less anything repeats itself: for noise alone
constexpr double kRoughOctaveCost = 0.05;  // while candidates are sought, lest multiples of the period take all places
constexpr double kJumpCost = 0.6;          // per octave from frame to frame, for frames 10 ms apart
constexpr double kVoicingCost = 0.14;      // per change between voice and none, likewise
constexpr double kCostSeconds = 0.010;
constexpr std::size_t kMostCandidates = 7;
constexpr std::ptrdiff_t kMostReach = 4;     // [samples] around a candidate
constexpr std::ptrdiff_t kLoudestStep = 64;  // [samples] at the coarse rate

using Signal = std::vector<float>;

// Butterworth high-pass of second order (bilinear transform).
Signal WithoutRumble(std::span<const float> samples, double rate) {
  const double k = std::tan(std::numbers::pi * kRumbleHz / rate);
  const double scale = 1.0 / (1.0 + std::numbers::sqrt2 * k + k * k);
  const double a1 = 2.0 * (k * k - 1.0) * scale;
  const double a2 = (1.0 - std::numbers::sqrt2 * k + k * k) * scale;
  Signal out(samples.size());
  // A constant offset is taken as one that has always been there.
  double x1 = samples.empty() ? 0.0 : samples.front(), x2 = x1, y1 = 0.0, y2 = 0.0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double x = samples[i];
    double y = scale * (x - 2.0 * x1 + x2) - a1 * y1 - a2 * y2;
    // What rings on into a silence would end in denormal numbers, which are many times slower.
    if (std::abs(y) < 1e-9) y = 0.0;
    x2 = x1, x1 = x, y2 = y1, y1 = y;
    out[i] = static_cast<float>(y);
  }
  return out;
}

// In four sums, so that an addition need not wait for the one before.
float DotProduct(const float* a, const float* b, std::ptrdiff_t count) {
  float sums[4] = {};
  std::ptrdiff_t i = 0;
  for (; i + 4 <= count; i += 4) {
    for (std::ptrdiff_t k = 0; k < 4; ++k) sums[k] += a[i + k] * b[i + k];
  }
  for (; i < count; ++i) sums[0] += a[i] * b[i];
  return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

// A low-pass of a windowed sinc, taken at every `factor`-th sample. It ends at half of what the new rate can hold, so
// that the peaks of a correlation are wide enough to be seen between two lags.
Signal Decimated(const Signal& signal, std::ptrdiff_t factor) {
  constexpr double kPassband = 0.55;
  const std::ptrdiff_t half = 8 * factor;
  std::vector<float> taps;
  for (std::ptrdiff_t i = -half; i <= half; ++i) {
    const double x = kPassband * std::numbers::pi * static_cast<double>(i) / static_cast<double>(factor);
    const double hann = 0.5 + 0.5 * std::cos(std::numbers::pi * static_cast<double>(i) / static_cast<double>(half + 1));
    taps.push_back(
        static_cast<float>(kPassband / static_cast<double>(factor) * hann * (i == 0 ? 1.0 : std::sin(x) / x)));
  }
  Signal padded(static_cast<std::size_t>(half));
  padded.insert(padded.end(), signal.begin(), signal.end());
  padded.resize(padded.size() + static_cast<std::size_t>(half));
  Signal out;
  for (std::ptrdiff_t first = 0; first < std::ssize(signal); first += factor) {
    out.push_back(DotProduct(padded.data() + first, taps.data(), std::ssize(taps)));
  }
  return out;
}

// A signal, and how well it repeats itself.
class Repetition {
 public:
  Repetition(Signal signal, double rate) : signal_(std::move(signal)), rate_(rate) {
    squares_.reserve(signal_.size() + 1);
    for (const float x : signal_) squares_.push_back(squares_.back() + static_cast<double>(x) * x);
  }

  double Rate() const { return rate_; }
  std::ptrdiff_t Size() const { return std::ssize(signal_); }

  // Mean square of the kLeastWindow around a sample.
  double PowerAt(std::ptrdiff_t centre) const {
    const std::ptrdiff_t half = LeastWindow() / 2;
    const std::ptrdiff_t first = std::clamp<std::ptrdiff_t>(centre - half, 0, Size());
    const std::ptrdiff_t last = std::clamp<std::ptrdiff_t>(centre + half, first, Size());
    return last > first ? Energy(first, last) / static_cast<double>(last - first) : 0.0;
  }
  void SetNoisePower(double power) { noisePower_ = power; }

  // The correlation of two windows that lie `lag` apart and on both sides of a sample; -1 to 1. Near the ends of the
  // signal they are moved inside.
  double At(std::ptrdiff_t centre, std::ptrdiff_t lag) const {
    const std::ptrdiff_t window = std::max(LeastWindow(), lag);
    const std::ptrdiff_t room = Size() - lag - window;
    if (room < 0) return 0.0;
    const std::ptrdiff_t first = std::clamp<std::ptrdiff_t>(centre - (lag + window) / 2, 0, room);
    const double noise = noisePower_ * static_cast<double>(window);
    const double energies =
        (Energy(first, first + window) + noise) * (Energy(first + lag, first + lag + window) + noise);
    if (!(energies > 0.0)) return 0.0;
    return DotProduct(&signal_[static_cast<std::size_t>(first)], &signal_[static_cast<std::size_t>(first + lag)],
                      window) /
           std::sqrt(energies);
  }

 private:
  std::ptrdiff_t LeastWindow() const { return static_cast<std::ptrdiff_t>(kLeastWindow * rate_); }
  double Energy(std::ptrdiff_t first, std::ptrdiff_t last) const {
    return squares_[static_cast<std::size_t>(last)] - squares_[static_cast<std::size_t>(first)];
  }

  Signal signal_;
  double rate_;
  std::vector<double> squares_ = {0.0};  // summed from the start
  double noisePower_ = 0.0;
};

struct Peak {
  double offset;  // from the middle one of three neighbours, -0.5 to 0.5
  double height;
};

// Of the parabola through three values, the middle one being the greatest.
Peak PeakOf(double before, double middle, double after) {
  const double bend = before - 2.0 * middle + after;
  const double offset = bend < 0.0 ? std::clamp(0.5 * (before - after) / bend, -0.5, 0.5) : 0.0;
  return {offset, middle - 0.25 * (before - after) * offset};
}

struct Repeat {
  double lag;
  double correlation;
};

// The greatest correlation near a lag.
Repeat BestNear(const Repetition& signal, std::ptrdiff_t centre, double nearLag, std::ptrdiff_t reach) {
  const std::ptrdiff_t first = std::lround(nearLag) - reach - 1;
  std::array<double, 2 * kMostReach + 3> around;
  const auto end = around.begin() + 2 * reach + 3;
  for (auto at = around.begin(); at != end; ++at) *at = signal.At(centre, first + (at - around.begin()));
  const auto top = std::max_element(around.begin() + 1, end - 1);
  const Peak peak = PeakOf(top[-1], top[0], top[1]);
  return {static_cast<double>(first + (top - around.begin())) + peak.offset, peak.height};
}

struct Candidate {
  double logHz;     // octaves; of no meaning for none
  double strength;  // how much speaks for it
  bool isVoice;
};

// The first candidate of a frame is always that it has no pitch.
using Candidates = std::vector<Candidate>;

// [octaves over 1 Hz]
struct LogRange {
  double lowest, highest;
};

// Candidates are sought in a coarse signal and weighed in the whole one: between two lags of the coarse one the true
// height of a peak cannot be told, and a period of 26.5 samples would lose against twice its length.
class CandidateSearch {
 public:
  CandidateSearch(const Repetition& coarse, const Repetition& fine, double loudestPower)
      : coarse_(coarse),
        fine_(fine),
        loudest_(loudestPower),
        shortest_(static_cast<std::ptrdiff_t>(coarse.Rate() / kHighestVoiceHz)),
        correlation_(static_cast<std::size_t>(std::ceil(coarse.Rate() / kLowestVoiceHz) + 2.0) -
                     static_cast<std::size_t>(shortest_)) {}

  Candidates At(double seconds, const LogRange& range) {
    const double ratio = fine_.Rate() / coarse_.Rate();
    const auto centre = static_cast<std::ptrdiff_t>(seconds * fine_.Rate());
    const auto coarseCentre = static_cast<std::ptrdiff_t>(seconds * coarse_.Rate());
    const double level = loudest_ > 0.0 ? std::sqrt(coarse_.PowerAt(coarseCentre) / loudest_) : 0.0;
    const double silence = std::max(0.0, 2.0 - level * (1.0 + kVoicing) / kSilence);
    Candidates found = {{0.0, kVoicing + silence, false}};
    // No voice can be stronger.
    if (kVoicing + silence > 1.0 + kVoicing) return found;

    std::vector<Repeat> repeats = RoughRepeats(coarseCentre, range);
    double best = 0.0;
    for (Repeat& repeat : repeats) {
      repeat = BestNear(fine_, centre, repeat.lag * ratio, Reach());
      best = std::max(best, repeat.correlation);
    }
    const double octaveCost = kOctaveCost + kNoisyOctaveCost * std::max(0.0, 1.0 - best);
    for (const Repeat& repeat : repeats) {
      const double octavesDown = std::log2(repeat.lag * kHighestVoiceHz / fine_.Rate());
      found.push_back({std::log2(kHighestVoiceHz) - octavesDown, repeat.correlation - octaveCost * octavesDown, true});
    }
    return found;
  }

 private:
  std::ptrdiff_t Reach() const {
    return std::clamp<std::ptrdiff_t>(std::lround(0.75 * fine_.Rate() / coarse_.Rate()), 1, kMostReach);
  }

  // The highest peaks within a range.
  std::vector<Repeat> RoughRepeats(std::ptrdiff_t centre, const LogRange& range) {
    for (std::size_t i = 0; i < correlation_.size(); ++i) {
      correlation_[i] = coarse_.At(centre, shortest_ + static_cast<std::ptrdiff_t>(i));
    }
    std::vector<Repeat> found;
    for (std::size_t i = 1; i + 1 < correlation_.size(); ++i) {
      const double here = correlation_[i];
      if (here < kLeastCorrelation || here < correlation_[i - 1] || here <= correlation_[i + 1]) continue;
      const Peak peak = PeakOf(correlation_[i - 1], here, correlation_[i + 1]);
      const double lag = static_cast<double>(shortest_) + static_cast<double>(i) + peak.offset;
      const double logHz = std::log2(coarse_.Rate() / lag);
      if (logHz >= range.lowest && logHz <= range.highest) found.push_back({lag, peak.height});
    }
    const std::size_t most = std::min(found.size(), kMostCandidates - 1);
    std::ranges::partial_sort(
        found, found.begin() + static_cast<std::ptrdiff_t>(most), std::greater(),
        [&](const Repeat& repeat) { return repeat.correlation - kRoughOctaveCost * std::log2(repeat.lag); });
    found.resize(most);
    return found;
  }

  const Repetition& coarse_;
  const Repetition& fine_;
  double loudest_;
  std::ptrdiff_t shortest_;          // lag
  std::vector<double> correlation_;  // at the shortest lag and on
};

double CostOfStep(const Candidate& from, const Candidate& to, double scale) {
  if (from.isVoice != to.isVoice) return kVoicingCost * scale;
  return from.isVoice ? kJumpCost * scale * std::abs(from.logHz - to.logHz) : 0.0;
}

// The candidate of each frame on the best path (Viterbi 1967). `scale`: of the costs, as frames of another distance
// than kCostSeconds need it.
std::vector<std::size_t> BestPath(const std::vector<Candidates>& frames, double scale) {
  std::vector<std::array<std::uint8_t, kMostCandidates>> cameFrom(frames.size());
  std::vector<double> scores(1, 0.0);
  for (std::size_t i = 0; i < frames.size(); ++i) {
    std::vector<double> next;
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
    scores = std::move(next);
  }
  std::vector<std::size_t> path(frames.size());
  std::size_t at = static_cast<std::size_t>(std::ranges::max_element(scores) - scores.begin());
  for (std::size_t i = frames.size(); i-- > 0; at = cameFrom[i][at]) path[i] = at;
  return path;
}

// About a rate, or at that of the voice if it is lower.
Repetition RepetitionAt(double rate, const Signal& voice, double voiceRate) {
  const auto factor = std::max<std::ptrdiff_t>(1, std::lround(voiceRate / rate));
  return Repetition(Decimated(voice, factor), voiceRate / static_cast<double>(factor));
}

double LoudestPower(const Repetition& signal, std::ptrdiff_t step) {
  double loudest = 0.0;
  for (std::ptrdiff_t i = 0; i < signal.Size(); i += step) loudest = std::max(loudest, signal.PowerAt(i));
  return loudest;
}

// What is searched where nothing is asked for: all that the lags hold, a little beyond the range at either end.
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

struct PitchSearch::Signals {
  Signals(const Signal& voice, double rate)
      : fine(RepetitionAt(kFineRate, voice, rate)),
        coarse(RepetitionAt(kCoarseRate, voice, rate)),
        loudest(LoudestPower(coarse, kLoudestStep)) {
    fine.SetNoisePower(loudest * kNoiseFloor * kNoiseFloor);
    coarse.SetNoisePower(loudest * kNoiseFloor * kNoiseFloor);
  }

  Repetition fine, coarse;
  double loudest;
};

PitchSearch::PitchSearch(std::span<const float> samples, double sampleRate) : rate_(sampleRate) {
  if (samples.empty() || !(sampleRate >= kLeastRate)) return;
  signals_ = std::make_unique<const Signals>(WithoutRumble(samples, sampleRate), sampleRate);
}

PitchSearch::~PitchSearch() = default;

std::vector<PitchFrame> PitchSearch::Candidates(SampleCount hop, SampleCount first, SampleCount count,
                                                const PitchConstraint& constraint) const {
  std::vector<PitchFrame> frames(static_cast<std::size_t>(count));
  if (!signals_) return frames;
  CandidateSearch search(signals_->coarse, signals_->fine, signals_->loudest);
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const double seconds = (first + static_cast<double>(i)) * hop / rate_;
    const auto found = search.At(seconds, RangeOf(constraint, i));
    frames[i].voiceless = found[0].strength;
    for (const Candidate& pitch : std::span(found).subspan(1)) {
      frames[i].pitches.push_back({pitch.logHz, pitch.strength});
    }
    std::ranges::stable_sort(frames[i].pitches, std::greater(), &PitchCandidate::strength);
  }
  return frames;
}

double PitchSearch::SupportAt(SampleCount sample, double hz, double cents) const {
  if (!signals_ || !(hz >= kLowestVoiceHz && hz <= kHighestVoiceHz)) return 0.0;
  const Repetition& fine = signals_->fine;
  const double lag = fine.Rate() / hz, share = std::exp2(cents / 1200.0);
  const auto centre = static_cast<std::ptrdiff_t>(sample / rate_ * fine.Rate());
  double best = -1.0;
  for (std::ptrdiff_t at = std::lround(lag / share); at <= std::lround(lag * share); ++at) {
    best = std::max(best, fine.At(centre, at));
  }
  return best;
}

std::vector<double> BestPitchPath(std::span<const PitchFrame> frames, double seconds) {
  std::vector<double> pitch(frames.size(), FrqNoPitch);
  if (frames.empty()) return pitch;
  std::vector<Candidates> candidates;
  candidates.reserve(frames.size());
  for (const PitchFrame& frame : frames) {
    Candidates& own = candidates.emplace_back(1, Candidate{0.0, frame.voiceless, false});
    const std::size_t count = std::min(frame.pitches.size(), kMostCandidates - 1);
    for (const PitchCandidate& one : std::span(frame.pitches).first(count)) {
      own.push_back({one.logHz, one.strength, true});
    }
  }
  const std::vector<std::size_t> path = BestPath(candidates, kCostSeconds / seconds);
  for (std::size_t i = 0; i < pitch.size(); ++i) {
    const Candidate& taken = candidates[i][path[i]];
    if (taken.isVoice) pitch[i] = std::exp2(taken.logHz);
  }
  return pitch;
}

std::vector<double> AnalysePitch(std::span<const float> samples, double sampleRate, SampleCount hop) {
  const auto count =
      static_cast<SampleCount>((samples.size() + static_cast<std::size_t>(hop) - 1) / static_cast<std::size_t>(hop));
  return BestPitchPath(PitchSearch(samples, sampleRate).Candidates(hop, 0, count), hop / sampleRate);
}

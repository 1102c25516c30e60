#include "pitchmarks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace {

constexpr double kSlack = 0.1;  // a mark may lie off its period by this part of it

class Marker {
 public:
  Marker(const std::vector<float>& samples, int rate, const SourcePitch& pitch)
      : samples_(samples), rate_(rate), pitch_(pitch) {}

  // Sets marks from the loudest place of the stretch in both directions.
  void MarkStretch(std::ptrdiff_t first, std::ptrdiff_t last, std::vector<double>& marks) const {
    const auto begin = samples_.begin();
    const auto loudest =
        std::max_element(begin + first, begin + last, [](float a, float b) { return std::abs(a) < std::abs(b); });
    const auto anchor = static_cast<double>(loudest - begin);
    std::vector<double> before;
    for (auto mark = Next(anchor, -1); mark && *mark >= static_cast<double>(first); mark = Next(*mark, -1)) {
      before.push_back(*mark);
    }
    marks.insert(marks.end(), before.rbegin(), before.rend());
    for (std::optional mark = anchor; mark && *mark < static_cast<double>(last); mark = Next(*mark, 1)) {
      marks.push_back(*mark);
    }
  }

 private:
  // The next mark, about one period on, where the sound is most like that at this mark. None where the stretch has
  // ended.
  std::optional<double> Next(double mark, int direction) const {
    const double hz = pitch_.HzAt(mark);
    if (hz == 0.0) return std::nullopt;
    const auto here = static_cast<std::ptrdiff_t>(std::lround(mark));
    const auto period = static_cast<std::ptrdiff_t>(std::lround(rate_ / hz));
    const auto slack = static_cast<std::ptrdiff_t>(kSlack * static_cast<double>(period)) + 1;
    const std::ptrdiff_t expected = here + direction * period;
    std::ptrdiff_t best = expected;
    double bestLikeness = Likeness(here, expected, period);
    for (std::ptrdiff_t at = expected - slack; at <= expected + slack; ++at) {
      const double likeness = Likeness(here, at, period);
      if (likeness <= bestLikeness) continue;
      best = at;
      bestLikeness = likeness;
    }
    // Marks on whole samples would put every period of the note off by up to half a sample: 9 cents at 440 Hz.
    const double next = mark + static_cast<double>(best - here) +
                        PeakBetween(Likeness(here, best - 1, period), bestLikeness, Likeness(here, best + 1, period));
    const bool isInside = next >= 0.0 && next <= static_cast<double>(samples_.size() - 1);
    return isInside ? std::optional(next) : std::nullopt;
  }

  // The peak of the parabola through three neighbours, from the middle one on: half a step away at most.
  static double PeakBetween(double before, double peak, double after) {
    const double bend = 2.0 * peak - before - after;
    return bend > 0.0 && peak >= before && peak >= after ? 0.5 * (after - before) / bend : 0.0;
  }

  // The correlation of two periods; 0 beyond the ends.
  double Likeness(std::ptrdiff_t a, std::ptrdiff_t b, std::ptrdiff_t period) const {
    const std::ptrdiff_t half = period / 2;
    if (std::min(a, b) < half || std::max(a, b) + half >= std::ssize(samples_)) return 0.0;
    const float* const here = &samples_[static_cast<std::size_t>(a - half)];
    const float* const there = &samples_[static_cast<std::size_t>(b - half)];
    double cross = 0.0, energy = 1.0;
    for (std::ptrdiff_t i = 0; i < 2 * half; ++i) {
      cross += static_cast<double>(here[i]) * there[i];
      energy += static_cast<double>(there[i]) * there[i];
    }
    return cross / std::sqrt(energy);
  }

  const std::vector<float>& samples_;
  double rate_;
  const SourcePitch& pitch_;
};

}  // namespace

PitchMarks::PitchMarks(const std::vector<float>& samples, int rate, const SourcePitch& pitch) {
  const Marker marker(samples, rate, pitch);
  const auto size = std::ssize(samples);
  constexpr std::ptrdiff_t kStep = 32;
  for (std::ptrdiff_t first = 0; first < size; first += kStep) {
    if (pitch.HzAt(static_cast<double>(first)) == 0.0) continue;
    std::ptrdiff_t last = first;
    while (last < size && pitch.HzAt(static_cast<double>(last)) > 0.0) last += kStep;
    marker.MarkStretch(first, std::min(last, size), marks_);
    first = last;
  }
}

double PitchMarks::Nearest(double sample) const {
  const auto above = std::ranges::lower_bound(marks_, sample);
  if (above == marks_.end()) return marks_.empty() ? sample : marks_.back();
  if (above == marks_.begin()) return *above;
  return *above - sample < sample - above[-1] ? *above : above[-1];
}

#include "grains.h"

#include <algorithm>
#include <cmath>
#include <random>

#include "pitchmarks.h"
#include "render.h"
#include "sourcepitch.h"

namespace {

constexpr double kBendsPerBeat = 96.0;

// The parts of the recording that become the note, in source samples, and how the note's time runs through them.
class TimeMap {
 public:
  TimeMap(double size, int rate, const NoteToRender& note) {
    const double perMs = rate / 1000.0;
    const double offset = note.offsetMs * perMs;
    const double cutoff = note.cutoffMs * perMs;
    begin_ = std::clamp(offset, 0.0, size);
    end_ = std::clamp(cutoff < 0.0 ? offset - cutoff : size - cutoff, begin_, size);
    consonant_ = std::clamp(note.consonantMs * perMs, 0.0, end_ - begin_);
    consonantStretch_ = std::exp2(1.0 - note.velocity / 100.0);
    const double vowel = end_ - begin_ - consonant_;
    const double wanted = note.lengthMs * perMs - consonant_ * consonantStretch_;
    // A vowel that is too long is cut short, not pressed.
    vowelStretch_ = vowel > 0.0 ? std::max(1.0, wanted / vowel) : 1.0;
  }

  // `time` in source samples from the start of the note; behind the end of the recording's part where that is used up.
  double SourceAt(double time) const {
    const double consonantEnd = consonant_ * consonantStretch_;
    return time < consonantEnd ? begin_ + time / consonantStretch_
                               : begin_ + consonant_ + (time - consonantEnd) / vowelStretch_;
  }
  // The factor by which the recording runs slower at a time.
  double StretchAt(double time) const {
    return time < consonant_ * consonantStretch_ ? consonantStretch_ : vowelStretch_;
  }
  double End() const { return end_; }

 private:
  double begin_ = 0.0, end_ = 0.0;
  double consonant_ = 0.0;
  double consonantStretch_ = 1.0, vowelStretch_ = 1.0;
};

// The departure of a grain of noise from the part of the recording that it stands for.
struct Scatter {
  double seconds = kUnvoicedSeconds;  // to the next one
  double shift = 0.0;                 // of its place in the recording [s]
  double sign = 1.0;
  bool isReversed = false;
};

// Noise that is stretched repeats itself, and in grains of one length it sounds like a tone. So the grains are
// scattered like those of a cloud (Roads 1988, "Introduction to granular synthesis"), half of them run backwards
// (Moulines and Laroche 1995, "Non-parametric techniques for pitch-scale and time-scale modification of speech"), and
// half are turned over, since noise has no phase of its own (Macon and Clements 1997, "Sinusoidal modeling and
// modification of unvoiced speech"). A cloud is the same on every run: hosts keep notes that they have rendered.
class Cloud {
 public:
  // `stretch` is above 1. The smaller it is, the less of the noise repeats itself, and the nearer the grains stay to
  // their places.
  Scatter Next(double stretch) {
    constexpr double kFarthest = 0.015;  // [s]; farther off, bursts and the edges of the noise would be torn
    Scatter scatter;
    scatter.seconds *= 0.7 + 0.8 * Chance();
    const double repeated = 1.0 - 1.0 / stretch;
    scatter.shift = kFarthest * repeated * repeated * (2.0 * Chance() - 1.0);
    scatter.sign = Chance() < 0.5 ? -1.0 : 1.0;
    scatter.isReversed = Chance() < 0.5;
    return scatter;
  }

 private:
  double Chance() { return static_cast<double>(generator_()) / static_cast<double>(std::minstd_rand::max()); }

  std::minstd_rand generator_;
};

class Layout {
 public:
  Layout(const std::vector<float>& samples, int rate, const FrqMap& map, const NoteToRender& note)
      : rate_(rate),
        note_(note),
        time_(static_cast<double>(samples.size()), rate, note),
        pitch_(map, rate),
        marks_(samples, rate, pitch_) {}

  std::vector<Grain> Grains() {
    const double end = note_.lengthMs / 1000.0;
    std::vector<Grain> grains;
    for (double at = 0.0; at < end;) {
      const double source = time_.SourceAt(at * rate_);
      if (source >= time_.End()) break;
      const double hz = pitch_.HzAt(source);
      at += hz > 0.0 ? AddVoiced(grains, at, source, hz) : AddNoise(grains, at, source);
    }
    return grains;
  }

 private:
  // Both functions add a grain and give the time to the next one [s].
  double AddVoiced(std::vector<Grain>& grains, double at, double source, double hz) const {
    const double seconds = SecondsOfPeriod(at, hz);
    // Closer grains add up to more: the note is kept as loud as the recording. A lower one is left a little softer, or
    // recordings that use their whole range would be cut off.
    const double gain = note_.volume / 100.0 * std::sqrt(std::min(seconds * hz, 1.0));
    grains.push_back({at * kRenderedRate, marks_.Nearest(source), kRenderedRate / hz, gain, false});
    return seconds;
  }
  double AddNoise(std::vector<Grain>& grains, double at, double source) {
    const double stretch = time_.StretchAt(at * rate_);
    Scatter scatter = stretch > 1.0 ? cloud_.Next(stretch) : Scatter();
    if (!IsNoiseAround(source + scatter.shift * rate_)) scatter = Scatter();
    const double centre = at * kRenderedRate;
    // The grain stands on whole samples of the recording: between them the interpolation would take the noise its
    // brightness.
    const double turned = scatter.isReversed ? -centre : centre;
    const double place = turned + std::round(source + scatter.shift * rate_ - turned);
    grains.push_back({centre, place, 0.0, note_.volume / 100.0 * scatter.sign, scatter.isReversed});
    return scatter.seconds;
  }

  // A voice that begins or ends within a grain must stay where it is, also where the map's frames are late to see it.
  bool IsNoiseAround(double source) const {
    const double reach = 2.0 * kUnvoicedSeconds * rate_;
    const double before = std::max(source - reach, 0.0), behind = source + reach;
    return pitch_.HzAt(before) == 0.0 && pitch_.HzAt(behind) == 0.0 && behind < time_.End();
  }

  // The pitch in the middle of the period counts: the one at its start would have every slide lag by half a period,
  // which is 9 cents for a vibrato of 60 at 110 Hz.
  double SecondsOfPeriod(double at, double hz) const {
    const double half = 0.5 / TargetHz(hz, at);
    const double middle = pitch_.HzAt(time_.SourceAt((at + half) * rate_));
    return 1.0 / TargetHz(middle > 0.0 ? middle : hz, at + half);
  }

  double TargetHz(double sourceHz, double seconds) const {
    constexpr double kLowest = 20.0;
    constexpr double kHighest = kRenderedRate / 4.0;
    const double sung = std::pow(sourceHz / pitch_.Average(), note_.modulation / 100.0);
    return std::clamp(note_.hz * sung * std::exp2(BendAt(seconds) / 1200.0), kLowest, kHighest);
  }

  // The pitch bend [cents]: between two values on a straight line, and the last value behind it.
  double BendAt(double seconds) const {
    const auto last = static_cast<double>(note_.pitchBend.size() - 1);
    const double place = std::clamp(seconds * note_.tempo / 60.0 * kBendsPerBeat, 0.0, last);
    const auto index = static_cast<std::size_t>(place);
    const double next = note_.pitchBend[std::min(index + 1, note_.pitchBend.size() - 1)];
    return std::lerp(note_.pitchBend[index], next, place - std::floor(place));
  }

  const double rate_;
  const NoteToRender& note_;
  const TimeMap time_;
  const SourcePitch pitch_;
  const PitchMarks marks_;
  Cloud cloud_;
};

}  // namespace

std::vector<Grain> LayOutGrains(const std::vector<float>& samples, int rate, const FrqMap& map,
                                const NoteToRender& note) {
  return Layout(samples, rate, map, note).Grains();
}

#include "render.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "frqmap/levels.h"
#include "resampler/pitchanalysis.h"

namespace {

constexpr double kUnvoicedSeconds = 0.005;  // distance of the grains where there is no pitch
constexpr double kMarkSlack = 0.1;          // a mark may lie off its period by this part of it
constexpr double kBendsPerBeat = 96.0;

// The parts of the recording that become the note, in source samples, and how the note's time runs through them.
class TimeMap {
 public:
  TimeMap(const Sound& sound, const NoteToRender& note) {
    const double perMs = sound.rate / 1000.0;
    const auto size = static_cast<double>(sound.samples.size());
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
  double End() const { return end_; }

 private:
  double begin_ = 0.0, end_ = 0.0;
  double consonant_ = 0.0;
  double consonantStretch_ = 1.0, vowelStretch_ = 1.0;
};

// The pitch of the recording as the map has it.
class SourcePitch {
 public:
  SourcePitch(const FrqMap& map, int rate) : map_(map), highest_(rate / 4.0), average_(map.ShownAverage()) {
    // A damaged file may say anything.
    if (!IsPitch(average_)) average_ = map.ComputeAverage(2);
  }

  // 0 where there is none. A frequency that no recording of this rate can hold is none either.
  double HzAt(double sample) const {
    const double hz = map_.FrequencyAt(static_cast<SampleCount>(sample));
    return IsPitch(hz) ? hz : 0.0;
  }
  double Average() const { return average_; }

 private:
  bool IsPitch(double hz) const { return hz > FrqNoPitch && hz < highest_; }

  const FrqMap& map_;
  double highest_;
  double average_;
};

// Where the periods of the voiced stretches lie: marks at the same moment of each. They follow the map, and within it
// the sound, because the map's frames are coarser than a period.
class PitchMarks {
 public:
  PitchMarks(const Sound& sound, const SourcePitch& pitch) : samples_(sound.samples), rate_(sound.rate), pitch_(pitch) {
    const auto size = std::ssize(samples_);
    constexpr std::ptrdiff_t kStep = 32;
    for (std::ptrdiff_t first = 0; first < size; first += kStep) {
      if (pitch_.HzAt(static_cast<double>(first)) == 0.0) continue;
      std::ptrdiff_t last = first;
      while (last < size && pitch_.HzAt(static_cast<double>(last)) > 0.0) last += kStep;
      MarkStretch(first, std::min(last, size));
      first = last;
    }
  }

  // The nearest mark to a place; that place itself if there are no marks.
  double Nearest(double sample) const {
    const auto above = std::ranges::lower_bound(marks_, sample);
    if (above == marks_.end()) return marks_.empty() ? sample : marks_.back();
    if (above == marks_.begin()) return *above;
    return *above - sample < sample - above[-1] ? *above : above[-1];
  }

 private:
  // From the loudest place of the stretch in both directions.
  void MarkStretch(std::ptrdiff_t first, std::ptrdiff_t last) {
    const auto begin = samples_.begin();
    const auto loudest =
        std::max_element(begin + first, begin + last, [](float a, float b) { return std::abs(a) < std::abs(b); });
    const std::ptrdiff_t anchor = loudest - begin;
    std::vector<double> before;
    for (std::ptrdiff_t mark = anchor; (mark = Next(mark, -1)) >= first;) before.push_back(static_cast<double>(mark));
    marks_.insert(marks_.end(), before.rbegin(), before.rend());
    for (std::ptrdiff_t mark = anchor; mark < last; mark = Next(mark, 1)) marks_.push_back(static_cast<double>(mark));
  }

  // One period on, where the sound is most like that at the mark. -1 or the size where the stretch has ended.
  std::ptrdiff_t Next(std::ptrdiff_t mark, int direction) const {
    const std::ptrdiff_t outside = direction > 0 ? std::ssize(samples_) : -1;
    const double hz = pitch_.HzAt(static_cast<double>(mark));
    if (hz == 0.0) return outside;
    const auto period = static_cast<std::ptrdiff_t>(std::lround(rate_ / hz));
    const auto slack = static_cast<std::ptrdiff_t>(kMarkSlack * static_cast<double>(period));
    const std::ptrdiff_t expected = mark + direction * period;
    std::ptrdiff_t best = expected;
    double bestLikeness = Likeness(mark, expected, period);
    for (std::ptrdiff_t at = expected - slack; at <= expected + slack; ++at) {
      const double likeness = Likeness(mark, at, period);
      if (likeness <= bestLikeness) continue;
      best = at;
      bestLikeness = likeness;
    }
    return best >= 0 && best < std::ssize(samples_) ? best : outside;
  }

  // Correlation of two periods, and none beyond the ends.
  double Likeness(std::ptrdiff_t a, std::ptrdiff_t b, std::ptrdiff_t period) const {
    const std::ptrdiff_t half = period / 2;
    if (std::min(a, b) < half || std::max(a, b) + half >= std::ssize(samples_)) return 0.0;
    double cross = 0.0, energy = 1.0;
    for (std::ptrdiff_t i = -half; i < half; ++i) {
      const double there = samples_[static_cast<std::size_t>(b + i)];
      cross += samples_[static_cast<std::size_t>(a + i)] * there;
      energy += there * there;
    }
    return cross / std::sqrt(energy);
  }

  const std::vector<float>& samples_;
  double rate_;
  const SourcePitch& pitch_;
  std::vector<double> marks_;  // ascending
};

struct Grain {
  double source;  // its middle in the recording, in source samples
  double half;    // half its length, likewise
  double gain;
  bool isReversed;
};

class Renderer {
 public:
  Renderer(const Sound& sound, const FrqMap& map, const NoteToRender& note)
      : samples_(sound.samples),
        rate_(sound.rate),
        note_(note),
        time_(sound, note),
        pitch_(map, sound.rate),
        marks_(sound, pitch_),
        out_(static_cast<std::size_t>(std::lround(note.lengthMs / 1000.0 * kRenderedRate))) {}

  std::vector<float> Render() {
    const double ratio = rate_ / kRenderedRate;
    const double end = static_cast<double>(out_.size()) * ratio;
    bool isReversed = false;
    // In source samples since the start of the note.
    for (double at = 0.0; at < end;) {
      const double source = time_.SourceAt(at);
      if (source >= time_.End()) break;
      const double hz = pitch_.HzAt(source);
      const double period = rate_ / (hz > 0.0 ? hz : 1.0 / kUnvoicedSeconds);
      const double step = hz > 0.0 ? rate_ / TargetHz(hz, at / rate_) : period;
      // Noise that is stretched repeats itself; turning every other grain around keeps it from sounding like a tone.
      isReversed = hz == 0.0 && IsStretched(at, period) && !isReversed;
      // Closer grains add up to more: the note is kept as loud as the recording. A lower one is left a little softer,
      // or recordings that use their whole range would be cut off.
      const double gain = note_.volume / 100.0 * std::sqrt(std::min(step / period, 1.0));
      Add({hz > 0.0 ? marks_.Nearest(source) : source, period, gain, isReversed}, at / ratio);
      at += step;
    }
    return std::move(out_);
  }

 private:
  bool IsStretched(double at, double step) const { return time_.SourceAt(at + step) - time_.SourceAt(at) < 0.8 * step; }

  double TargetHz(double sourceHz, double seconds) const {
    constexpr double kLowest = 20.0;
    constexpr double kHighest = kRenderedRate / 4.0;
    const double sung = std::pow(sourceHz / pitch_.Average(), note_.modulation / 100.0);
    return std::clamp(note_.hz * sung * std::exp2(BendAt(seconds) / 1200.0), kLowest, kHighest);
  }

  // [cents]; between two values on a straight line, behind the last one it stays.
  double BendAt(double seconds) const {
    const auto last = static_cast<double>(note_.pitchBend.size() - 1);
    const double place = std::clamp(seconds * note_.tempo / 60.0 * kBendsPerBeat, 0.0, last);
    const auto index = static_cast<std::size_t>(place);
    const double next = note_.pitchBend[std::min(index + 1, note_.pitchBend.size() - 1)];
    return std::lerp(note_.pitchBend[index], next, place - std::floor(place));
  }

  // Under a Hann window; `centre` in rendered samples, between two of them as a rule.
  void Add(const Grain& grain, double centre) {
    const double ratio = rate_ / kRenderedRate;
    const double half = grain.half / ratio;
    const auto first = std::max<std::ptrdiff_t>(0, static_cast<std::ptrdiff_t>(std::ceil(centre - half)));
    const auto last = std::min<std::ptrdiff_t>(std::ssize(out_), static_cast<std::ptrdiff_t>(centre + half) + 1);
    for (std::ptrdiff_t i = first; i < last; ++i) {
      const double off = static_cast<double>(i) - centre;
      const double window = 0.5 + 0.5 * std::cos(std::numbers::pi * off / half);
      const double place = grain.source + (grain.isReversed ? -off : off) * ratio;
      out_[static_cast<std::size_t>(i)] += static_cast<float>(grain.gain * window * SampleAt(place));
    }
  }

  // Between samples by the cubic of Catmull and Rom (1974); silence outside.
  double SampleAt(double place) const {
    const double whole = std::floor(place);
    const auto index = static_cast<std::ptrdiff_t>(whole);
    if (index < 1 || index + 2 >= std::ssize(samples_)) return 0.0;
    const float* const s = &samples_[static_cast<std::size_t>(index)];
    const double t = place - whole;
    return s[0] + 0.5 * t *
                      (s[1] - s[-1] +
                       t * (2.0 * s[-1] - 5.0 * s[0] + 4.0 * s[1] - s[2] + t * (3.0 * (s[0] - s[1]) + s[2] - s[-1])));
  }

  const std::vector<float>& samples_;
  const double rate_;
  const NoteToRender& note_;
  const TimeMap time_;
  const SourcePitch pitch_;
  const PitchMarks marks_;
  std::vector<float> out_;
};

}  // namespace

FrqMap MakeMap(const Sound& sound) {
  FrqMap map;
  map.Create(0, FrqTypeFrq);
  const std::vector<double> pitch = AnalysePitch(sound.samples, sound.rate, map.Hop);
  map.Create(static_cast<SampleCount>(pitch.size()), FrqTypeFrq);
  for (std::size_t i = 0; i < pitch.size(); ++i) {
    map.Frames[i].Frequency = pitch[i];
    map.Frames[i].Voiced = pitch[i] > FrqNoPitch;
  }
  const std::vector<std::int16_t> samples = To16Bits(sound.samples);
  SetLevels(map,
            LevelsOfSamples({reinterpret_cast<const std::uint8_t*>(samples.data()), 2 * samples.size()}, 1, map.Hop));
  // Not of all frames: the scoop into a note, and its end, are not what it was sung at.
  map.Average = map.ComputeAverage(2);
  return map;
}

std::vector<float> RenderNote(const Sound& sound, const FrqMap& map, const NoteToRender& note) {
  return Renderer(sound, map, note).Render();
}

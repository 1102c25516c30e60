#include "render.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

#include "frqmap/levels.h"
#include "grains.h"
#include "pitch/pitchanalysis.h"

namespace {

// One side of a grain, over which it rises from nothing or falls to it.
struct Side {
  double length;  // in rendered samples
  // Two sounds that belong together add up to one under a Hann window. Two that have nothing to do with each other keep
  // their power, as sound does, under its root.
  bool isRoot;
};

// Ramps up the beginning and down the end: a sound that begins or ends at once is heard as a click.
void RampEnds(std::span<float> samples, int rate) {
  constexpr double kSeconds = 0.003;
  const std::size_t length = std::min(static_cast<std::size_t>(kSeconds * rate), samples.size() / 2);
  for (std::size_t i = 0; i < length; ++i) {
    const double place = static_cast<double>(i) / static_cast<double>(length);
    const auto gain = static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * place));
    samples[i] *= gain;
    samples[samples.size() - 1 - i] *= gain;
  }
}

// The samples of a recording with ramps at its ends, because it may be cut out of a sound, and grains reach over the
// ends.
std::vector<float> RampedSamples(const Sound& sound) {
  std::vector<float> samples = sound.samples;
  RampEnds(samples, sound.rate);
  return samples;
}

class Renderer {
 public:
  Renderer(const Sound& sound, const FrqMap& map, const NoteToRender& note)
      : samples_(RampedSamples(sound)),
        ratio_(static_cast<double>(sound.rate) / kRenderedRate),
        grains_(LayOutGrains(samples_, sound.rate, map, note)),
        out_(static_cast<std::size_t>(std::lround(note.lengthMs / 1000.0 * kRenderedRate))) {}

  std::vector<float> Render() {
    if (grains_.empty()) return std::move(out_);
    for (std::size_t i = 0; i < grains_.size(); ++i) {
      const Grain& grain = grains_[i];
      AddSide(grain, i > 0 ? SideTowards(grain, grains_[i - 1]) : OuterSide(grain), -1);
      AddSide(grain, i + 1 < grains_.size() ? SideTowards(grain, grains_[i + 1]) : OuterSide(grain), 1);
    }
    const double end = grains_.back().centre + OuterSide(grains_.back()).length;
    RampEnds(std::span(out_).first(std::min(out_.size(), static_cast<std::size_t>(end))), kRenderedRate);
    return std::move(out_);
  }

 private:
  static Side OuterSide(const Grain& grain) {
    return {grain.period > 0.0 ? grain.period : kUnvoicedSeconds * kRenderedRate, false};
  }

  // Between two periods a grain keeps its own length whatever the distance. Any other reaches just to the neighbour, so
  // that the two are as loud together as each of them.
  Side SideTowards(const Grain& grain, const Grain& neighbour) const {
    if (grain.period > 0.0 && neighbour.period > 0.0) return {grain.period, false};
    const double distance = neighbour.centre - grain.centre;
    const bool isOneSound = grain.period == neighbour.period && !grain.isReversed && !neighbour.isReversed &&
                            grain.gain == neighbour.gain &&
                            std::abs((neighbour.source - grain.source) / ratio_ - distance) < 1.0;
    return {std::abs(distance), !isOneSound};
  }

  // The middle of the grain belongs to the side behind it. A cosine is the root of a Hann window, and follows from the
  // two before it: cos(a + d) = 2 cos(d) cos(a) - cos(a - d).
  void AddSide(const Grain& grain, const Side& side, int direction) {
    const double centre = grain.centre;
    auto at = static_cast<std::ptrdiff_t>(direction > 0 ? std::ceil(centre) : std::ceil(centre) - 1.0);
    const double sourceStep = (grain.isReversed ? -1.0 : 1.0) * ratio_;
    const double angle = std::numbers::pi / 2.0 / side.length;
    const double twice = 2.0 * std::cos(angle);
    double off = std::abs(static_cast<double>(at) - centre);
    double window = std::cos(angle * off), last = std::cos(angle * (off - 1.0));
    for (; off < side.length; ++off, at += direction) {
      if (at >= 0 && at < std::ssize(out_)) {
        const double sound = SampleAt(grain.source + (static_cast<double>(at) - centre) * sourceStep);
        const double weight = side.isRoot ? window : window * window;
        out_[static_cast<std::size_t>(at)] += static_cast<float>(grain.gain * weight * sound);
      }
      const double next = twice * window - last;
      last = window;
      window = next;
    }
  }

  // The sample at a place, between samples by the cubic of Catmull and Rom (1974); silence outside.
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

  const std::vector<float> samples_;
  const double ratio_;  // source samples in a rendered one
  const std::vector<Grain> grains_;
  std::vector<float> out_;
};

}  // namespace

FrqMap MakeMap(const Sound& sound) {
  FrqMap map;
  map.Create(0, FrqTypeFrq);
  const std::vector<double> pitch = AnalysePitch(sound.samples, sound.rate, map.Hop);
  map.Create(static_cast<SampleCount>(pitch.size()), FrqTypeFrq);
  for (std::size_t i = 0; i < pitch.size(); ++i) {
    map.Frames.Own()[i].Frequency = pitch[i];
    map.Frames.Own()[i].Voiced = pitch[i] > FrqNoPitch;
  }
  const std::vector<std::int16_t> samples = To16Bits(sound.samples);
  SetLevels(map,
            LevelsOfSamples({reinterpret_cast<const std::uint8_t*>(samples.data()), 2 * samples.size()}, 1, map.Hop));
  // The key is not the mean of all frames: the scoop into a note, and its end, are not at the pitch that was sung.
  map.Average = RoundedHz(map.ComputeAverage(2));
  return map;
}

std::vector<float> RenderNote(const Sound& sound, const FrqMap& map, const NoteToRender& note) {
  return Renderer(sound, map, note).Render();
}

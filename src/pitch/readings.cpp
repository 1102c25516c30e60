#include "pitch/readings.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "frqmap/frqtype.h"

namespace {

constexpr SampleCount kContext = 20;  // frames on both sides, since the likeliest pitch hangs on them
constexpr double kAway = 3.0 / 12.0;  // [octaves]
constexpr double kLineCents = 100.0;  // around an octave

// The frames that are asked for, with those around them.
struct Stretch {
  SampleCount first, count;
};

std::vector<double> PathOf(const SoundPitches& sound, std::span<const PitchFrame> frames) {
  return BestPitchPath(frames, sound.Hop() / sound.SampleRate());
}

std::vector<PitchFrame> CandidatesOf(SoundPitches& sound, const Stretch& stretch) {
  std::vector<PitchFrame> frames;
  frames.reserve(static_cast<std::size_t>(stretch.count));
  for (SampleCount i = 0; i < stretch.count; ++i) frames.push_back(sound.At(stretch.first + i));
  return frames;
}

// The pitches near an octave of a line; where the sound bears none out, the octave itself.
std::vector<double> OctaveOf(SoundPitches& sound, const Stretch& stretch, std::vector<double> line, double factor) {
  for (double& hz : line) {
    const double moved = hz * factor;
    hz = hz > FrqNoPitch && moved >= kLowestVoiceHz && moved <= kHighestVoiceHz ? moved : FrqNoPitch;
  }
  const PitchConstraint near{.line = line, .cents = kLineCents};
  std::vector<double> path = PathOf(sound, sound.Candidates(stretch.first, stretch.count, near));
  std::ranges::transform(path, line, path.begin(), [](double hz, double own) { return hz > FrqNoPitch ? hz : own; });
  return path;
}

std::vector<double> AnotherThan(const SoundPitches& sound, std::vector<PitchFrame> frames,
                                std::span<const double> first) {
  for (std::size_t i = 0; i < frames.size(); ++i) {
    if (!(first[i] > FrqNoPitch)) continue;
    const double logHz = std::log2(first[i]);
    std::erase_if(frames[i].pitches, [&](const auto& one) { return std::fabs(one.logHz - logHz) < kAway; });
  }
  return PathOf(sound, frames);
}

std::vector<double> Read(SoundPitches& sound, const Stretch& stretch, Reading which) {
  std::vector<PitchFrame> frames = CandidatesOf(sound, stretch);
  std::vector<double> first = PathOf(sound, frames);
  switch (which) {
    case Reading::OctaveBelow: return OctaveOf(sound, stretch, std::move(first), 0.5);
    case Reading::OctaveAbove: return OctaveOf(sound, stretch, std::move(first), 2.0);
    case Reading::Another: return AnotherThan(sound, std::move(frames), first);
    default: return first;
  }
}

Reading After(std::optional<Reading> last) {
  if (!last || *last == Reading::Another) return Reading::Likeliest;
  return static_cast<Reading>(static_cast<int>(*last) + 1);
}

}  // namespace

bool OfferedReading::HasVoice() const {
  return std::ranges::any_of(hz, [](double one) { return one > FrqNoPitch; });
}

OfferedReading NextReading(SoundPitches& sound, std::span<const int> frames, std::optional<Reading> last) {
  const SampleCount first = std::max(frames.front() - kContext, 0);
  const Stretch stretch{first, frames.back() + kContext + 1 - first};
  for (;;) {
    OfferedReading reading{After(last), {}};
    const std::vector<double> all = Read(sound, stretch, reading.which);
    for (const int frame : frames) reading.hz.push_back(all[static_cast<std::size_t>(frame - first)]);
    if (reading.which == Reading::Likeliest || reading.HasVoice()) return reading;
    last = reading.which;
  }
}

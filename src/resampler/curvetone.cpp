#include "resampler/curvetone.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr int kHarmonics = 6;
constexpr double kRampSeconds = 0.003;  // at the ends of a voiced stretch, which would click
constexpr double kMostSeconds = 600.0;
constexpr double kUsualLevel = 3000.0;
constexpr double kHighestLevel = 32767.0;
constexpr float kHighestPeak = 32000.0f;
// Shares of the rate: a harmonic fades out between the two, and no pitch is above the first.
constexpr double kFadeFrom = 0.4, kFadeTo = 0.45;

// A file may hold any number.
double CleanLevel(double level) {
  return std::isfinite(level) ? std::clamp(level, 0.0, kHighestLevel) : 0.0;
}

bool HasPitch(const FrqFrame& frame) {
  return std::isfinite(frame.Frequency) && frame.Frequency > FrqNoPitch;
}

class ToneGenerator {
 public:
  explicit ToneGenerator(double rate) : rate_(rate), rampStep_(1.0 / std::max(1.0, kRampSeconds * rate)) {}

  // Sets what sounds from the next sample on. While the tone fades out it keeps what it has: a voice that begins
  // meanwhile would begin with a step.
  void Set(double hz, double level) {
    if (isFading_) return;
    hz_ = std::min(hz, kFadeFrom * rate_);
    level_ = level;
  }
  float Next(bool isVoiced) {
    isFading_ = ramp_ > 0.0 && (isFading_ || !isVoiced);
    ramp_ = std::clamp(ramp_ + (isVoiced && !isFading_ ? rampStep_ : -rampStep_), 0.0, 1.0);
    phase_ = std::fmod(phase_ + 2.0 * std::numbers::pi * hz_ / rate_, 2.0 * std::numbers::pi);
    if (ramp_ == 0.0) return 0.0f;
    const double gain = 0.5 - 0.5 * std::cos(std::numbers::pi * ramp_);
    return static_cast<float>(gain * level_ * Shape());
  }

 private:
  // The sum of the harmonics that the rate has room for, of equal power whatever their number.
  double Shape() const {
    const double twiceCosine = 2.0 * std::cos(phase_);
    double before = 0.0, sine = std::sin(phase_), sum = 0.0, power = 0.0;
    for (int k = 1; k <= kHarmonics; ++k) {
      const double room = (kFadeTo * rate_ - k * hz_) / ((kFadeTo - kFadeFrom) * rate_);
      const double weight = std::clamp(room, 0.0, 1.0) / k;
      sum += weight * sine;
      power += weight * weight / 2.0;
      const double next = twiceCosine * sine - before;  // sin((k + 1) x) from sin(k x) and sin((k - 1) x)
      before = sine;
      sine = next;
    }
    return sum / std::sqrt(power);
  }

  const double rate_, rampStep_;
  double hz_ = 0.0, level_ = 0.0, phase_ = 0.0, ramp_ = 0.0;
  bool isFading_ = false;
};

// Pitch and level between the frames of a map.
class Curve {
 public:
  Curve(const FrqMap& map, FrameRange range) : hop_(map.Hop) {
    const auto size = static_cast<SampleCount>(map.Frames.size());
    const SampleCount first = std::clamp<SampleCount>(range.First, 0, size);
    const SampleCount count = std::clamp<SampleCount>(range.Count, 0, size - first);
    frames_.assign(map.Frames.begin() + first, map.Frames.begin() + first + count);
    const bool hasLevels = std::ranges::any_of(
        frames_, [](const FrqFrame& frame) { return HasPitch(frame) && CleanLevel(frame.Amplitude) > 0.0; });
    for (FrqFrame& frame : frames_) frame.Amplitude = hasLevels ? CleanLevel(frame.Amplitude) : kUsualLevel;
  }

  bool IsSilent() const { return hop_ <= 0 || std::ranges::none_of(frames_, HasPitch); }
  std::size_t SamplesUpTo(double most) const {
    return static_cast<std::size_t>(std::min(static_cast<double>(frames_.size()) * hop_, most));
  }
  bool IsVoiced(std::size_t sample) const { return HasPitch(frames_[FrameAt(sample)]); }
  // The sample has to be voiced.
  void SetAt(std::size_t sample, ToneGenerator& tone) const {
    const std::size_t at = FrameAt(sample);
    const FrqFrame& frame = frames_[at];
    const FrqFrame& next = at + 1 < frames_.size() && HasPitch(frames_[at + 1]) ? frames_[at + 1] : frame;
    const double share = static_cast<double>(sample % static_cast<std::size_t>(hop_)) / hop_;
    tone.Set(std::lerp(frame.Frequency, next.Frequency, share), std::lerp(frame.Amplitude, next.Amplitude, share));
  }

 private:
  std::size_t FrameAt(std::size_t sample) const { return sample / static_cast<std::size_t>(hop_); }

  const SampleCount hop_;
  std::vector<FrqFrame> frames_;
};

}  // namespace

std::vector<float> CurveTone(const FrqMap& map, FrameRange frames, double rate) {
  const Curve curve(map, frames);
  if (curve.IsSilent() || !(rate > 0.0)) return {};
  std::vector<float> samples(curve.SamplesUpTo(kMostSeconds * rate));
  const auto rampSamples = static_cast<std::size_t>(kRampSeconds * rate) + 1;
  ToneGenerator tone(rate);
  float peak = 0.0f;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const bool isVoiced = curve.IsVoiced(i);
    if (isVoiced) curve.SetAt(i, tone);
    samples[i] = tone.Next(isVoiced && i + rampSamples < samples.size());
    peak = std::max(peak, std::abs(samples[i]));
  }
  if (peak > kHighestPeak) {
    for (float& sample : samples) sample *= kHighestPeak / peak;
  }
  return samples;
}

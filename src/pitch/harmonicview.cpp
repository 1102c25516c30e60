#include "pitch/harmonicview.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace {

constexpr double kWindow = 0.060;  // [s]
constexpr double kStep = 0.010;    // [s]
constexpr double kTopHz = 2800.0;  // breath is louder than the voice above
constexpr float kFaintest = -16.0f, kScale = 0.125f;

// The logarithm to the base 2 of a positive number, to 0.009: exponent and a parabola over the fraction. That of the
// standard library takes longer than all else here.
float RoughLog2(float x) {
  const auto bits = std::bit_cast<std::int32_t>(x);
  const float exponent = static_cast<float>((bits >> 23) - 128);
  const float fraction = std::bit_cast<float>((bits & 0x7FFFFF) | 0x3F800000);
  return exponent + (-0.33333333f * fraction + 2.0f) * fraction - 0.66666667f;
}

}  // namespace

HarmonicViews::HarmonicViews(const Repetition& signal)
    : signal_(signal),
      binsPerHz_(static_cast<double>(kFftLength) / signal.Rate()),
      top_(std::min(static_cast<std::size_t>(kTopHz * binsPerHz_), kViewBins - 1)),
      window_(std::min(static_cast<std::size_t>(kWindow * signal.Rate()), kFftLength)),
      slots_(2 * kMostSteps + 2) {
  for (std::size_t i = 0; i < window_.size(); ++i) {
    const double place = (static_cast<double>(i) + 0.5) / static_cast<double>(window_.size());
    window_[i] = static_cast<float>(0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * place));
  }
}

const HarmonicView& HarmonicViews::Near(double seconds, std::ptrdiff_t steps) {
  const std::ptrdiff_t step = std::max<std::ptrdiff_t>(std::lround(seconds / kStep) + steps, 0);
  Slot& slot = slots_[static_cast<std::size_t>(step) % slots_.size()];
  if (slot.step != step) Look(step, slot.view);
  slot.step = step;
  return slot.view;
}

float HarmonicViews::LevelAt(const HarmonicView& view, double hz) const {
  const auto place = static_cast<float>(hz * binsPerHz_);
  const auto bin = static_cast<std::size_t>(place);
  if (bin + 1 >= top_) return 0.0f;
  const float part = place - static_cast<float>(bin);
  return view.levels[bin] + part * (view.levels[bin + 1] - view.levels[bin]);
}

float HarmonicViews::RegularityAt(const HarmonicView& view, double lag) const {
  const auto place = static_cast<float>(lag * signal_.Rate());
  const auto before = static_cast<std::size_t>(place);
  if (before + 1 >= kViewBins) return 0.0f;
  const float part = place - static_cast<float>(before);
  return view.regularity[before] + part * (view.regularity[before + 1] - view.regularity[before]);
}

void HarmonicViews::Look(std::ptrdiff_t step, HarmonicView& view) {
  const auto length = std::ssize(window_);
  const std::ptrdiff_t first = std::lround(static_cast<double>(step) * kStep * signal_.Rate()) - length / 2;
  const std::ptrdiff_t from = std::clamp<std::ptrdiff_t>(-first, 0, length);
  const std::ptrdiff_t to = std::clamp<std::ptrdiff_t>(signal_.Size() - first, from, length);
  input_.fill(0.0f);
  const float* samples = signal_.Samples().data() + first;
  for (std::ptrdiff_t i = from; i < to; ++i) {
    input_[static_cast<std::size_t>(i)] = samples[i] * window_[static_cast<std::size_t>(i)];
  }
  fft_.Transform(input_, re_, im_);

  float sum = 0.0f;
  for (std::size_t i = 0; i < top_; ++i) {
    re_[i] = re_[i] * re_[i] + im_[i] * im_[i];
    sum += re_[i];
  }
  const float scale = 1.0f / (sum / static_cast<float>(top_) + 1e-9f);
  for (std::size_t i = 0; i < top_; ++i) {
    const float power = re_[i] * scale + 1e-9f;
    view.levels[i] = std::max(RoughLog2(power), kFaintest) * kScale;
    im_[i] = std::sqrt(std::sqrt(power));
  }
  input_.fill(0.0f);
  input_[0] = im_[0];
  for (std::size_t i = 1; i < top_; ++i) input_[i] = input_[kFftLength - i] = im_[i];
  fft_.Transform(input_, view.regularity, im_);
  const float whole = 1.0f / std::max(view.regularity[0], 1e-9f);
  for (float& one : view.regularity) one *= whole;
}

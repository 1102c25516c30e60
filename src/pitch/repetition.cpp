#include "pitch/repetition.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace {

constexpr double kRumbleHz = 45.0;
constexpr double kLeastWindow = 0.010;  // [s]; a lower pitch is compared over one whole period

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

}  // namespace

// By the bilinear transform.
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

// By a windowed sinc.
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

Repetition::Repetition(Signal signal, double rate) : signal_(std::move(signal)), rate_(rate) {
  squares_.reserve(signal_.size() + 1);
  for (const float x : signal_) squares_.push_back(squares_.back() + static_cast<double>(x) * x);
}

std::ptrdiff_t Repetition::LeastWindow() const {
  return static_cast<std::ptrdiff_t>(kLeastWindow * rate_);
}

double Repetition::PowerAt(std::ptrdiff_t centre) const {
  const std::ptrdiff_t half = LeastWindow() / 2;
  const std::ptrdiff_t first = std::clamp<std::ptrdiff_t>(centre - half, 0, Size());
  const std::ptrdiff_t last = std::clamp<std::ptrdiff_t>(centre + half, first, Size());
  return last > first ? Energy(first, last) / static_cast<double>(last - first) : 0.0;
}

double Repetition::LoudestPower(std::ptrdiff_t step) const {
  double loudest = 0.0;
  for (std::ptrdiff_t i = 0; i < Size(); i += step) loudest = std::max(loudest, PowerAt(i));
  return loudest;
}

double Repetition::At(std::ptrdiff_t centre, std::ptrdiff_t lag) const {
  const std::ptrdiff_t window = std::max(LeastWindow(), lag);
  const std::ptrdiff_t room = Size() - lag - window;
  if (room < 0) return 0.0;
  const std::ptrdiff_t first = std::clamp<std::ptrdiff_t>(centre - (lag + window) / 2, 0, room);
  const double noise = noisePower_ * static_cast<double>(window);
  const double energies = (Energy(first, first + window) + noise) * (Energy(first + lag, first + lag + window) + noise);
  if (!(energies > 0.0)) return 0.0;
  return DotProduct(&signal_[static_cast<std::size_t>(first)], &signal_[static_cast<std::size_t>(first + lag)],
                    window) /
         std::sqrt(energies);
}

Peak PeakOf(double before, double middle, double after) {
  const double bend = before - 2.0 * middle + after;
  const double offset = bend < 0.0 ? std::clamp(0.5 * (before - after) / bend, -0.5, 0.5) : 0.0;
  return {offset, middle - 0.25 * (before - after) * offset};
}

Repeat BestNear(const Repetition& signal, std::ptrdiff_t centre, double nearLag, std::ptrdiff_t reach) {
  const std::ptrdiff_t first = std::lround(nearLag) - reach - 1;
  std::array<double, 2 * kMostReach + 3> around{};
  const auto end = around.begin() + 2 * reach + 3;
  for (auto at = around.begin(); at != end; ++at) *at = signal.At(centre, first + (at - around.begin()));
  const auto top = std::max_element(around.begin() + 1, end - 1);
  const Peak peak = PeakOf(top[-1], top[0], top[1]);
  return {static_cast<double>(first + (top - around.begin())) + peak.offset, peak.height};
}

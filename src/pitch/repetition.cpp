#include "pitch/repetition.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>
#include <span>
#include <utility>

namespace {

constexpr double kRumbleHz = 45.0;
constexpr double kLeastWindow = 0.010;  // [s]; a lower pitch is compared over one whole period

constexpr std::size_t kTogether = 4;

// A stretch of a signal and one that it is held against.
struct Pair {
  const float* a;
  const float* b;
  std::ptrdiff_t count;
};

using Four [[gnu::vector_size(16)]] = float;

Four FourAt(const float* from) {
  Four four;
  std::memcpy(&four, from, sizeof(four));
  return four;
}

// The sums of products of some pairs. Each is taken in four partial sums, and four pairs side by side, so that an
// addition need not wait for the one before.
void DotProducts(const Pair (&pairs)[kTogether], float (&products)[kTogether]) {
  const auto& [p, q, r, s] = pairs;
  const std::ptrdiff_t common = std::min({p.count, q.count, r.count, s.count});
  Four sums[kTogether] = {};
  std::ptrdiff_t i = 0;
  for (; i + 4 <= common; i += 4) {
    sums[0] += FourAt(p.a + i) * FourAt(p.b + i);
    sums[1] += FourAt(q.a + i) * FourAt(q.b + i);
    sums[2] += FourAt(r.a + i) * FourAt(r.b + i);
    sums[3] += FourAt(s.a + i) * FourAt(s.b + i);
  }
  for (std::size_t pair = 0; pair < kTogether; ++pair) {
    const auto& [a, b, count] = pairs[pair];
    Four own = sums[pair];
    std::ptrdiff_t rest = i;
    for (; rest + 4 <= count; rest += 4) own += FourAt(a + rest) * FourAt(b + rest);
    for (; rest < count; ++rest) own[0] += a[rest] * b[rest];
    products[pair] = (own[0] + own[1]) + (own[2] + own[3]);
  }
}

// A windowed sinc that ends at a `part` of the highest frequency that every `factor`-th sample can hold.
Signal LowPass(double part, std::ptrdiff_t factor) {
  const std::ptrdiff_t half = 8 * factor;
  Signal taps;
  for (std::ptrdiff_t i = -half; i <= half; ++i) {
    const double x = part * std::numbers::pi * static_cast<double>(i) / static_cast<double>(factor);
    const double hann = 0.5 + 0.5 * std::cos(std::numbers::pi * static_cast<double>(i) / static_cast<double>(half + 1));
    taps.push_back(static_cast<float>(part / static_cast<double>(factor) * hann * (i == 0 ? 1.0 : std::sin(x) / x)));
  }
  return taps;
}

// Every `step`-th sample of a filtered signal.
Signal Filtered(const Signal& signal, const Signal& taps, std::ptrdiff_t step) {
  const std::ptrdiff_t half = std::ssize(taps) / 2;
  Signal padded(signal.size() + 2 * static_cast<std::size_t>(half));
  std::ranges::copy(signal, padded.begin() + half);
  const std::ptrdiff_t count = (std::ssize(signal) + step - 1) / step;
  Signal out(static_cast<std::size_t>(count));
  for (std::ptrdiff_t at = 0; at < count; at += kTogether) {
    Pair pairs[kTogether];
    for (std::size_t k = 0; k < kTogether; ++k) {
      const std::ptrdiff_t own = std::min(at + static_cast<std::ptrdiff_t>(k), count - 1);
      pairs[k] = {padded.data() + own * step, taps.data(), std::ssize(taps)};
    }
    float products[kTogether];
    DotProducts(pairs, products);
    std::copy_n(products, std::min<std::ptrdiff_t>(kTogether, count - at), out.begin() + at);
  }
  return out;
}

}  // namespace

// The filter comes from the analogue one by the bilinear transform.
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
    // A filter that rings on into a silence would end in denormal numbers, which are many times slower.
    if (std::abs(y) < 1e-9) y = 0.0;
    x2 = x1, x1 = x, y2 = y1, y1 = y;
    out[i] = static_cast<float>(y);
  }
  return out;
}

Signal Decimated(const Signal& signal, std::ptrdiff_t factor) {
  constexpr double kPassband = 0.55;
  return Filtered(signal, LowPass(kPassband, factor), factor);
}

Signal Raised(const Signal& signal, std::ptrdiff_t factor) {
  constexpr double kPassband = 0.9;
  Signal apart(signal.size() * static_cast<std::size_t>(factor));
  for (std::ptrdiff_t i = 0; i < std::ssize(signal); ++i) {
    apart[static_cast<std::size_t>(i * factor)] = signal[static_cast<std::size_t>(i)] * static_cast<float>(factor);
  }
  return Filtered(apart, LowPass(kPassband, factor), 1);
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

Repetition::Windows Repetition::WindowsOf(std::ptrdiff_t centre, std::ptrdiff_t lag) const {
  const std::ptrdiff_t length = std::max(LeastWindow(), lag);
  const std::ptrdiff_t room = Size() - lag - length;
  if (room < 0) return {0, 0, 0.0};
  const std::ptrdiff_t first = std::clamp<std::ptrdiff_t>(centre - (lag + length) / 2, 0, room);
  const double noise = noisePower_ * static_cast<double>(length);
  return {first, length,
          (Energy(first, first + length) + noise) * (Energy(first + lag, first + lag + length) + noise)};
}

void Repetition::AtEach(std::ptrdiff_t centre, std::ptrdiff_t lag, std::span<double> correlations) const {
  const float* const samples = signal_.data();
  while (!correlations.empty()) {
    const std::size_t count = std::min(correlations.size(), kTogether);
    Pair pairs[kTogether] = {};
    double energies[kTogether] = {};
    for (std::size_t k = 0; k < count; ++k, ++lag) {
      const Windows windows = WindowsOf(centre, lag);
      pairs[k] = {samples + windows.first, samples + windows.first + lag, windows.length};
      energies[k] = windows.energies;
    }
    std::fill(pairs + count, pairs + kTogether, pairs[0]);
    float products[kTogether];
    DotProducts(pairs, products);
    for (std::size_t k = 0; k < count; ++k) {
      correlations[k] = energies[k] > 0.0 ? products[k] / std::sqrt(energies[k]) : 0.0;
    }
    correlations = correlations.subspan(count);
  }
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
  signal.AtEach(centre, first, {around.begin(), end});
  const auto top = std::max_element(around.begin() + 1, end - 1);
  const Peak peak = PeakOf(top[-1], top[0], top[1]);
  return {static_cast<double>(first + (top - around.begin())) + peak.offset, peak.height};
}

// A recording whose pitch is known, and how loud one is.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <span>
#include <vector>

// A second of it, as loud as a voice between two moments [s] and silent outside.
inline std::vector<float> SecondOfTone(const std::function<double(double)>& hz, double from, double to,
                                       int rate = 44100) {
  std::vector<float> samples(static_cast<std::size_t>(rate));
  double phase = 0.0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double t = static_cast<double>(i) / rate;
    phase += 2.0 * std::numbers::pi * hz(t) / rate;
    if (t <= from || t >= to) continue;
    for (int k = 1; k <= 12; ++k) samples[i] += static_cast<float>(5000.0 / k * std::sin(k * phase));
  }
  return samples;
}

// The root of the mean square.
inline double LevelOf(std::span<const float> samples) {
  double squares = 0.0;
  for (const float x : samples) squares += double{x} * x;
  return std::sqrt(squares / static_cast<double>(std::max<std::size_t>(samples.size(), 1)));
}

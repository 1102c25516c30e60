// Figures for what the ear minds in a rendered note: its distance from the pitch that was asked for, clicks, and noise
// that has become a tone. The tests hold the renderer to the same figures that the benchmark shows.
//
// Our own analysis of pitch finds none of it: the curve that was asked for is known, and the sound is held against it.
#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <numbers>
#include <span>
#include <utility>
#include <vector>

namespace hearing {

inline double MedianOf(std::vector<double> numbers) {
  if (numbers.empty()) return 0.0;
  const auto middle = numbers.begin() + std::ssize(numbers) / 2;
  std::ranges::nth_element(numbers, middle);
  return *middle;
}

// Cents between the sound and the curve `hz`, every 5 ms, without the first and the last 50 ms, where a note is faded.
// The sound is turned back by the phase of the curve, so that its fundamental stands still; what it turns nevertheless
// is the error. Four periods of a Hann window keep the other harmonics out of it.
inline std::vector<double> CentsOff(std::span<const float> sound, int rate, const std::function<double(double)>& hz) {
  std::vector<double> phase(sound.size());
  for (std::size_t i = 1; i < sound.size(); ++i) {
    phase[i] = phase[i - 1] + 2.0 * std::numbers::pi * hz(static_cast<double>(i) / rate) / rate;
  }
  const auto fundamentalAt = [&](std::ptrdiff_t middle) {
    const double half = std::max(0.015, 2.0 / hz(static_cast<double>(middle) / rate)) * rate;
    std::complex<double> sum;
    for (auto i = static_cast<std::ptrdiff_t>(-half); i <= static_cast<std::ptrdiff_t>(half); ++i) {
      const std::ptrdiff_t at = middle + i;
      if (at < 0 || at >= std::ssize(sound)) continue;
      const double window = 0.5 + 0.5 * std::cos(std::numbers::pi * static_cast<double>(i) / half);
      const auto index = static_cast<std::size_t>(at);
      sum += window * sound[index] * std::polar(1.0, -phase[index]);
    }
    return sum;
  };
  std::vector<double> cents;
  const std::ptrdiff_t step = rate / 200;
  for (std::ptrdiff_t at = rate / 20; at + step < std::ssize(sound) - rate / 20; at += step) {
    const double turned = std::arg(fundamentalAt(at + step) * std::conj(fundamentalAt(at))) / (2.0 * std::numbers::pi);
    const double asked = hz((static_cast<double>(at) + static_cast<double>(step) / 2.0) / rate);
    cents.push_back(1200.0 * std::log2(std::max(1.0 + turned * rate / static_cast<double>(step) / asked, 0.01)));
  }
  return cents;
}

// The first or the last sample as a part of the loudest one: what a speaker jumps by from and to silence.
inline double EdgeOf(std::span<const float> sound) {
  float peak = 1.0f;
  for (const float x : sound) peak = std::max(peak, std::abs(x));
  return std::max(std::abs(sound.front()), std::abs(sound.back())) / peak;
}

// The largest step from one sample to the next, with silence around the sound, over the largest one that is farther
// than 2 ms and nearer than 20 ms to it. A voice jumps once a period, and a little farther than before where it rises;
// a click has nothing like it around. Steps under a thousandth of the peak are nothing.
inline double LoneliestStep(std::span<const float> sound, int rate) {
  std::vector<double> steps;
  float last = 0.0f, peak = 0.0f;
  for (const float x : sound) {
    steps.push_back(std::abs(x - std::exchange(last, x)));
    peak = std::max(peak, std::abs(x));
  }
  steps.push_back(std::abs(last));
  const std::ptrdiff_t near = rate / 500, far = rate / 50;
  const auto largest = [&](std::ptrdiff_t from, std::ptrdiff_t to) {
    from = std::clamp<std::ptrdiff_t>(from, 0, std::ssize(steps));
    to = std::clamp<std::ptrdiff_t>(to, from, std::ssize(steps));
    double most = peak / 1000.0;
    for (std::ptrdiff_t i = from; i < to; ++i) most = std::max(most, steps[static_cast<std::size_t>(i)]);
    return most;
  };
  double loneliest = 0.0;
  for (std::ptrdiff_t block = 0; block < std::ssize(steps); block += near) {
    const double here = largest(block, block + near);
    const double around = std::max(largest(block - far, block - near), largest(block + 2 * near, block + near + far));
    loneliest = std::max(loneliest, here / around);
  }
  return loneliest;
}

// How far the numbers repeat themselves after 2 to 20 ms: their largest normalised correlation with themselves.
inline double RepetitionOf(std::span<const double> numbers, int rate) {
  double mean = 0.0, energy = 1e-9, most = 0.0;
  for (const double x : numbers) mean += x / static_cast<double>(numbers.size());
  for (const double x : numbers) energy += (x - mean) * (x - mean);
  for (std::size_t lag = static_cast<std::size_t>(rate) / 500; lag <= static_cast<std::size_t>(rate) / 50; ++lag) {
    double sum = 0.0;
    for (std::size_t i = lag; i < numbers.size(); ++i) sum += (numbers[i] - mean) * (numbers[i - lag] - mean);
    most = std::max(most, sum / energy);
  }
  return most;
}

// How much of a tone noise has become: the repetition of a fifth of a second of it, in the mean, or that of its power
// over all of it, which beats once a grain where grains are of one length; the larger. White noise has about 0.04.
inline double BuzzOf(std::span<const float> sound, int rate) {
  std::vector<double> samples(sound.begin(), sound.end()), powers;
  for (const double x : samples) powers.push_back(x * x);
  const std::size_t piece = static_cast<std::size_t>(rate) / 5;
  double sum = 0.0, pieces = 0.0;
  for (std::size_t at = piece; at + 2 * piece <= samples.size(); at += piece, ++pieces) {
    sum += RepetitionOf(std::span(samples).subspan(at, piece), rate);
  }
  return std::max(sum / std::max(pieces, 1.0), RepetitionOf(powers, rate));
}

}  // namespace hearing

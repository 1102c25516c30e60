// The wave that the spectrum is measured on, and one measurement of its analysis.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "frqctrl/spectrum.h"
#include "measuring.h"

// The goes of which a process of its own takes the least: nothing else can be measured in turn with it.
inline constexpr int kSpectrumRepeats = 25;

// 60 s of noise at 44,100 Hz, mono, and the table that it goes into. The table's memory is there from the first
// measurement on, so that only the arithmetic is weighed.
class SpectrumOfAMinute {
 public:
  SpectrumOfAMinute() {
    std::mt19937 random(1);
    for (std::int16_t& sample : samples_) sample = static_cast<std::int16_t>(random());
  }

  double Milliseconds(FftPath path, unsigned threads) {
    const SpectrumWave wave{1, 16, {reinterpret_cast<const std::uint8_t*>(samples_.data()), samples_.size() * 2}};
    return MillisecondsOf([&] { Require(AnalyzeWave(table_, wave, {path, threads}) == 0, "a wave is not analysed"); });
  }

  const std::vector<std::int16_t>& Samples() const { return samples_; }
  SpectrumTable& Table() { return table_; }

 private:
  std::vector<std::int16_t> samples_ = std::vector<std::int16_t>(60 * 44100);
  SpectrumTable table_;
};

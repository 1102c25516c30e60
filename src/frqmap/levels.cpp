#include "frqmap/levels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr std::size_t kSampleBytes = sizeof(std::int16_t);

// The squares are summed in order and in doubles, so that the same wave gives the same digits everywhere.
double LevelOf(const std::uint8_t* sample, std::size_t count, std::size_t stride) {
  double squares = 0.0;
  for (std::size_t i = 0; i < count; ++i) {
    std::int16_t value;
    std::memcpy(&value, sample + i * stride, sizeof(value));
    squares += static_cast<double>(value) * value;
  }
  return std::sqrt(squares / static_cast<double>(count));
}

}  // namespace

std::vector<double> LevelsOfSamples(ByteSpan samples, int channels, SampleCount hop) {
  if (channels <= 0 || hop <= 0) return {};
  const std::size_t stride = kSampleBytes * static_cast<std::size_t>(channels);
  const std::size_t count = samples.size() / stride;
  const auto step = static_cast<std::size_t>(hop);
  std::vector<double> levels;
  levels.reserve(count / step + 1);
  for (std::size_t first = 0; first < count; first += std::min(step, count - first)) {
    levels.push_back(LevelOf(samples.data() + first * stride, std::min(step, count - first), stride));
  }
  return levels;
}

void SetLevels(FrqMap& map, const std::vector<double>& levels) {
  const std::size_t count = std::min(map.Frames.size(), levels.size());
  std::vector<FrqFrame>& frames = map.Frames.Own();
  for (std::size_t i = 0; i < count; ++i) frames[i].Amplitude = levels[i];
}

#include "sound.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::uint16_t kIntegers = 1;

}  // namespace

std::vector<std::int16_t> To16Bits(std::span<const float> samples) {
  std::vector<std::int16_t> out(samples.size());
  std::ranges::transform(samples, out.begin(), [](float x) {
    return static_cast<std::int16_t>(std::lround(std::clamp(x, -32768.0f, 32767.0f)));
  });
  return out;
}

Bytes EncodeWaveFile(std::span<const std::int16_t> samples, int rate) {
  using FourCc = std::array<char, 4>;
  constexpr std::uint32_t kHeaderBytes = 44;
  constexpr std::uint16_t kSampleBytes = 2;
  const auto dataBytes = static_cast<std::uint32_t>(samples.size_bytes());
  ByteWriter writer;
  writer.Reserve(kHeaderBytes + dataBytes);
  writer.Write(FourCc{'R', 'I', 'F', 'F'});
  writer.Write(kHeaderBytes - 8 + dataBytes);
  writer.Write(FourCc{'W', 'A', 'V', 'E'});
  writer.Write(FourCc{'f', 'm', 't', ' '});
  writer.Write(std::uint32_t{16});
  writer.Write(std::array<std::uint16_t, 2>{kIntegers, 1});
  writer.Write(static_cast<std::uint32_t>(rate));
  writer.Write(static_cast<std::uint32_t>(rate) * kSampleBytes);
  writer.Write(std::array<std::uint16_t, 2>{kSampleBytes, 8 * kSampleBytes});
  writer.Write(FourCc{'d', 'a', 't', 'a'});
  writer.Write(dataBytes);
  for (const std::int16_t sample : samples) writer.Write(sample);
  return writer.Take();
}

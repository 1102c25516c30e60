#include "voicebank/sound.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "voicebank/wavecut.h"

namespace {

constexpr std::uint16_t kIntegers = 1;
constexpr std::uint16_t kFloats = 3;
constexpr std::uint16_t kExtensible = 0xFFFE;  // what the samples are stands farther behind: integers, by far the most

template <typename T>
T NumberAt(const std::uint8_t* bytes) {
  T value;
  std::memcpy(&value, bytes, sizeof(value));
  return value;
}

using Reader = float (*)(const std::uint8_t*);

Reader ReaderOf(const WaveFormat& format) {
  if (format.formatTag == kFloats && format.bitsPerSample == 32) {
    return [](const std::uint8_t* at) {
      const auto value = NumberAt<float>(at);
      return std::isfinite(value) ? std::clamp(value, -1.0f, 1.0f) * 32768.0f : 0.0f;
    };
  }
  if (format.formatTag != kIntegers && format.formatTag != kExtensible) return nullptr;
  switch (format.bitsPerSample) {
    case 8: return [](const std::uint8_t* at) { return (static_cast<float>(*at) - 128.0f) * 256.0f; };
    case 16: return [](const std::uint8_t* at) { return static_cast<float>(NumberAt<std::int16_t>(at)); };
    case 24:
      return [](const std::uint8_t* at) { return static_cast<float>(NumberAt<std::int16_t>(at + 1)) + at[0] / 256.0f; };
    case 32: return [](const std::uint8_t* at) { return static_cast<float>(NumberAt<std::int32_t>(at)) / 65536.0f; };
    default: return nullptr;
  }
}

}  // namespace

std::optional<Sound> SoundOfWave(const WaveFormat& format, ByteSpan samples) {
  constexpr std::uint32_t kLeastRate = 4000;
  constexpr std::uint32_t kHighestRate = 400'000;
  const Reader read = ReaderOf(format);
  if (!read || format.channels == 0 || format.samplesPerSec < kLeastRate || format.samplesPerSec > kHighestRate) {
    return std::nullopt;
  }
  const std::size_t stride = std::size_t{format.channels} * format.bitsPerSample / 8;
  Sound sound{{}, static_cast<int>(format.samplesPerSec)};
  sound.samples.reserve(samples.size() / stride);
  for (std::size_t at = 0; at + stride <= samples.size(); at += stride) sound.samples.push_back(read(&samples[at]));
  if (sound.samples.empty()) return std::nullopt;
  return sound;
}

std::vector<std::int16_t> To16Bits(std::span<const float> samples) {
  std::vector<std::int16_t> out(samples.size());
  std::ranges::transform(samples, out.begin(), [](float x) {
    return static_cast<std::int16_t>(std::lround(std::clamp(x, -32768.0f, 32767.0f)));
  });
  return out;
}

Bytes EncodeWaveFile(std::span<const std::int16_t> samples, int rate) {
  return EncodeWave(PlainFormat(1, rate), {},
                    {reinterpret_cast<const std::uint8_t*>(samples.data()), samples.size_bytes()});
}

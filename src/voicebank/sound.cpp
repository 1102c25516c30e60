#include "voicebank/sound.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "voicebank/wavecut.h"

namespace {

constexpr std::uint16_t kIntegers = 1;
constexpr std::uint16_t kFloats = 3;
constexpr std::uint16_t kExtensible = 0xFFFE;  // the form of samples stands farther behind: mostly it is integers

template <typename T>
T NumberAt(const std::uint8_t* bytes) {
  T value;
  std::memcpy(&value, bytes, sizeof(value));
  return value;
}

// Each form of the numbers has a loop, and a single channel one of its own, so that the compiler sees all of it.
template <std::size_t size, typename Read>
void ReadAll(ByteSpan bytes, std::size_t stride, std::vector<float>& samples, const Read& read) {
  const std::uint8_t* const at = bytes.data();
  if (stride == size) {
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = read(at + i * size);
  } else {
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = read(at + i * stride);
  }
}

float FromFloat(const std::uint8_t* at) {
  const auto value = NumberAt<float>(at);
  return std::isfinite(value) ? std::clamp(value, -1.0f, 1.0f) * 32768.0f : 0.0f;
}

// Reads the samples by their form; false for one that is not known.
bool ReadAs(const WaveFormat& format, ByteSpan bytes, std::size_t stride, std::vector<float>& samples) {
  using At = const std::uint8_t*;
  const bool isFloat = format.formatTag == kFloats && format.bitsPerSample == 32;
  if (!isFloat && format.formatTag != kIntegers && format.formatTag != kExtensible) return false;
  if (isFloat) {
    ReadAll<4>(bytes, stride, samples, FromFloat);
  } else if (format.bitsPerSample == 8) {
    ReadAll<1>(bytes, stride, samples, [](At at) { return (static_cast<float>(*at) - 128.0f) * 256.0f; });
  } else if (format.bitsPerSample == 16) {
    ReadAll<2>(bytes, stride, samples, [](At at) { return static_cast<float>(NumberAt<std::int16_t>(at)); });
  } else if (format.bitsPerSample == 24) {
    ReadAll<3>(bytes, stride, samples,
               [](At at) { return static_cast<float>(NumberAt<std::int16_t>(at + 1)) + at[0] / 256.0f; });
  } else if (format.bitsPerSample == 32) {
    ReadAll<4>(bytes, stride, samples, [](At at) { return static_cast<float>(NumberAt<std::int32_t>(at)) / 65536.0f; });
  } else {
    return false;
  }
  return true;
}

}  // namespace

std::optional<Sound> SoundOfWave(const WaveFormat& format, ByteSpan samples) {
  constexpr std::uint32_t kLeastRate = 4000;
  constexpr std::uint32_t kHighestRate = 400'000;
  const std::size_t stride = std::size_t{format.channels} * format.bitsPerSample / 8;
  if (stride == 0 || format.samplesPerSec < kLeastRate || format.samplesPerSec > kHighestRate) return std::nullopt;
  Sound sound{std::vector<float>(samples.size() / stride), static_cast<int>(format.samplesPerSec)};
  if (sound.samples.empty() || !ReadAs(format, samples, stride, sound.samples)) return std::nullopt;
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

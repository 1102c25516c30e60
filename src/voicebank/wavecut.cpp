#include "voicebank/wavecut.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::uint16_t kIntegers = 1, kFloats = 3, kExtensible = 0xFFFE;
constexpr std::uint16_t kPlainBits = 16;

using FourCc = std::array<char, 4>;

// Writes the fields that every form has; a form of integers has no more.
void WriteFormat(ByteWriter& writer, const WaveFormat& format) {
  writer.Write(format.formatTag);
  writer.Write(format.channels);
  writer.Write(format.samplesPerSec);
  writer.Write(format.avgBytesPerSec);
  writer.Write(format.blockAlign);
  writer.Write(format.bitsPerSample);
}

void WriteBytes(ByteWriter& writer, ByteSpan bytes) {
  std::ranges::copy(bytes, writer.Append(bytes.size()));
}

}  // namespace

std::optional<DecodedWave> CutWave(const DecodedWave& wave, std::int64_t first, std::int64_t end) {
  const WaveFormat& format = wave.format;
  const bool isPlain =
      format.formatTag == kIntegers || format.formatTag == kFloats || format.formatTag == kExtensible;
  const std::int64_t stride = std::int64_t{format.channels} * format.bitsPerSample / 8;
  if (!isPlain || stride == 0 || format.bitsPerSample % 8 != 0) return std::nullopt;
  const std::int64_t whole = std::ssize(wave.samples) / stride;
  const std::int64_t from = std::clamp<std::int64_t>(first, 0, whole), to = std::clamp(end, from, whole);
  DecodedWave part;
  part.format = format;
  part.extension = wave.extension;
  part.samples.assign(wave.samples.begin() + from * stride, wave.samples.begin() + to * stride);
  part.dataSize = static_cast<std::uint32_t>(part.samples.size());
  return part;
}

WaveFormat PlainFormat(int channels, int rate) {
  WaveFormat format{.formatTag = kIntegers, .bitsPerSample = kPlainBits};
  format.channels = static_cast<std::uint16_t>(channels);
  format.samplesPerSec = static_cast<std::uint32_t>(rate);
  format.blockAlign = static_cast<std::uint16_t>(channels * kPlainBits / 8);
  format.avgBytesPerSec = format.samplesPerSec * format.blockAlign;
  return format;
}

Bytes EncodeWave(const WaveFormat& format, ByteSpan extension, ByteSpan samples) {
  constexpr std::uint32_t kHeadBytes = 12, kChunkHeadBytes = 8, kPlainFormatBytes = 16;
  const bool isPlain = format.formatTag == kIntegers;
  const auto formatBytes = static_cast<std::uint32_t>(kPlainFormatBytes + (isPlain ? 0 : 2 + extension.size()));
  const auto dataBytes = static_cast<std::uint32_t>(samples.size());
  // A chunk of an odd size has a byte of padding.
  const std::uint32_t whole =
      kHeadBytes + 2 * kChunkHeadBytes + formatBytes + formatBytes % 2 + dataBytes + dataBytes % 2;
  ByteWriter writer;
  writer.Reserve(whole);
  writer.Write(FourCc{'R', 'I', 'F', 'F'});
  writer.Write(whole - 8);
  writer.Write(FourCc{'W', 'A', 'V', 'E'});
  writer.Write(FourCc{'f', 'm', 't', ' '});
  writer.Write(formatBytes);
  WriteFormat(writer, format);
  if (!isPlain) {
    writer.Write(static_cast<std::uint16_t>(extension.size()));
    WriteBytes(writer, extension);
  }
  writer.Append(formatBytes % 2);
  writer.Write(FourCc{'d', 'a', 't', 'a'});
  writer.Write(dataBytes);
  WriteBytes(writer, samples);
  writer.Append(dataBytes % 2);
  return writer.Take();
}

// The file formats are written into plain memory: no file is opened here.
#include "encode.h"

#include <algorithm>
#include <array>

#include "frqmap/frqtype.h"

namespace {

using FourCc = std::array<char, 4>;

double MeanPitch(std::span<const double> pitch) {
  double sum = 0.0;
  int pitched = 0;
  for (const double hz : pitch) {
    if (hz <= FrqNoPitch) continue;
    sum += hz;
    ++pitched;
  }
  return pitched > 0 ? sum / pitched : 0.0;
}

}  // namespace

Bytes EncodeWave(std::span<const std::int16_t> samples, std::int16_t channels) {
  constexpr std::int32_t kFormatSize = 16;
  constexpr std::int32_t kHeaderSize = 44;
  constexpr std::int16_t kPcm = 1;
  const auto frameSize = static_cast<std::int16_t>(channels * 2);
  const auto dataSize = static_cast<std::int32_t>(samples.size_bytes());
  ByteWriter writer;
  writer.Reserve(static_cast<std::size_t>(kHeaderSize + dataSize));
  writer.Write(FourCc{'R', 'I', 'F', 'F'});
  writer.Write(kHeaderSize - 8 + dataSize);
  writer.Write(FourCc{'W', 'A', 'V', 'E'});
  writer.Write(FourCc{'f', 'm', 't', ' '});
  writer.Write(kFormatSize);
  writer.Write(kPcm);
  writer.Write(channels);
  writer.Write(FrqSampleRate);
  writer.Write(FrqSampleRate * frameSize);
  writer.Write(frameSize);
  writer.Write(std::int16_t{16});
  writer.Write(FourCc{'d', 'a', 't', 'a'});
  writer.Write(dataSize);
  for (const std::int16_t sample : samples) writer.Write(sample);
  return writer.Take();
}

Bytes EncodeMap(std::int32_t hopSamples, std::span<const double> pitch, std::span<const double> levels) {
  ByteWriter writer;
  writer.Write(std::array<char, 8>{'F', 'R', 'E', 'Q', '0', '0', '0', '3'});
  writer.Write(hopSamples);
  writer.Write(MeanPitch(pitch));
  writer.Write(std::array<char, 16>{});
  writer.Write(static_cast<std::int32_t>(pitch.size()));
  for (std::size_t i = 0; i < pitch.size(); ++i) {
    writer.Write(pitch[i]);
    writer.Write(levels[i]);
  }
  return writer.Take();
}

std::string EncodeCp932(std::u8string_view text) {
  struct Pair {
    std::u8string_view utf8;
    std::string_view cp932;
  };
  static constexpr std::array<Pair, 10> kPairs = {{
      {u8"あ", "\x82\xA0"},
      {u8"い", "\x82\xA2"},
      {u8"う", "\x82\xA4"},
      {u8"え", "\x82\xA6"},
      {u8"お", "\x82\xA8"},
      {u8"か", "\x82\xA9"},
      {u8"さ", "\x82\xB3"},
      {u8"ま", "\x82\xDC"},
      {u8"ら", "\x82\xE7"},
      {u8"強", "\x8B\xAD"},
  }};
  std::string encoded;
  while (!text.empty()) {
    const auto pair = std::ranges::find_if(kPairs, [&](const Pair& known) { return text.starts_with(known.utf8); });
    if (pair != kPairs.end()) {
      encoded += pair->cp932;
      text.remove_prefix(pair->utf8.size());
      continue;
    }
    encoded += text.front() < 0x80 ? static_cast<char>(text.front()) : '?';
    text.remove_prefix(1);
  }
  return encoded;
}

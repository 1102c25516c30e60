#include "frqmap/dio.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::array<char, 8> kMagic = {'w', 'r', 'l', 'd', '-', 'd', 'i', 'o'};
constexpr std::size_t kHeaderBytes = 20;
constexpr std::size_t kFrameBytes = 16;
constexpr std::int32_t kUsualHop = 256;  // samples per frame at a rate of 44100

// The product wraps at 32 bits: a rate out of all range, which a damaged file may hold, gives some hop all the same.
std::int32_t ScaleWrapped(std::int32_t value, std::int32_t factor, std::int32_t divisor) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value) * static_cast<std::uint32_t>(factor)) / divisor;
}

// Odd on purpose: every frame counts as voiced, also one without pitch, and a frequency under the threshold is kept as
// it stands. Users rely on it; the threshold comes in when the map is written.
FrqFrame ReadFrame(ByteReader& reader) {
  reader.Read<double>();
  const auto frequency = reader.Read<double>();
  FrqFrame frame;
  frame.Voiced = true;
  if (frequency != 0.0) frame.Frequency = frequency;
  return frame;
}

}  // namespace

std::optional<FrqMap> DecodeDio(ByteSpan file) {
  ByteReader reader(file);
  FrqMap map;
  map.Magic = reader.Read<std::array<char, 8>>();
  reader.Read<std::uint32_t>();
  const auto rate = reader.Read<std::int32_t>();
  map.FrameCount = reader.Read<SampleCount>();
  if (map.Magic != kMagic || !reader.Holds(map.FrameCount, kFrameBytes)) return std::nullopt;

  map.Hop = ScaleWrapped(rate, kUsualHop, FrqSampleRate);
  std::vector<FrqFrame>& frames = map.Frames.Own();
  frames.reserve(static_cast<std::size_t>(map.FrameCount));
  for (SampleCount i = 0; i < map.FrameCount; ++i) frames.push_back(ReadFrame(reader));
  return map;
}

std::optional<Bytes> EncodeDio(const FrqMap& map, std::uint32_t samplesPerChannel) {
  if (map.Hop <= 0) return std::nullopt;
  const std::int32_t rate = ScaleWrapped(map.Hop, FrqSampleRate, kUsualHop);
  // Some hops beyond any sense wrap to 0, in which no time can be counted.
  if (rate == 0) return std::nullopt;

  ByteWriter writer;
  writer.Reserve(kHeaderBytes + map.Frames.size() * kFrameBytes);
  writer.Write(kMagic);
  writer.Write(samplesPerChannel);
  writer.Write(rate);
  writer.Write(map.FrameCount);
  std::int64_t position = 0;
  for (const FrqFrame& frame : map.Frames) {
    const double time = static_cast<double>(position) / rate;
    writer.Write(std::array{time, frame.Frequency <= FrqNoPitch ? 0.0 : frame.Frequency});
    position += map.Hop;
  }
  return writer.Take();
}

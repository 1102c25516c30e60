#include "frqmap/freq0003.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace {

constexpr std::size_t kHeaderBytes = 40;
constexpr std::size_t kFrameBytes = 16;

// The digits behind the letters are not tested: other writers use their own.
bool IsFreqMagic(const std::array<char, 8>& magic) {
  return std::string_view(magic.data(), 4) == "FREQ";
}

struct FileFrame {
  double Frequency;
  double Amplitude;
};
static_assert(sizeof(FileFrame) == kFrameBytes);

// Other writers put 0.0 where there is no pitch, and a NaN compares false.
FrqFrame FrameOf(const FileFrame& read) {
  const bool voiced = read.Frequency > FrqNoPitch;
  return {.Frequency = voiced ? read.Frequency : FrqNoPitch, .Amplitude = read.Amplitude, .Voiced = voiced};
}

}  // namespace

std::optional<FrqMap> DecodeFreq0003(ByteSpan file) {
  ByteReader reader(file);
  FrqMap map;
  map.Magic = reader.Read<std::array<char, 8>>();
  map.Hop = reader.Read<SampleCount>();
  map.Average = reader.Read<double>();
  map.Tag = reader.Read<std::array<char, 16>>();
  map.FrameCount = reader.Read<SampleCount>();
  if (!IsFreqMagic(map.Magic) || !reader.Holds(map.FrameCount, kFrameBytes)) return std::nullopt;

  const ByteSpan bytes = reader.Take(static_cast<std::size_t>(map.FrameCount) * kFrameBytes);
  std::vector<FrqFrame> frames;
  frames.reserve(static_cast<std::size_t>(map.FrameCount));
  for (std::size_t at = 0; at < bytes.size(); at += kFrameBytes) {
    FileFrame read;
    std::memcpy(&read, bytes.data() + at, kFrameBytes);
    frames.push_back(FrameOf(read));
  }
  map.Frames = FrqFrames(std::move(frames));
  return map;
}

Bytes EncodeFreq0003(const FrqMap& map, FrqType kind) {
  ByteWriter writer;
  const std::size_t frameBytes = map.Frames.size() * kFrameBytes;
  writer.Reserve(kHeaderBytes + frameBytes);
  writer.Write(Freq0003Magic);
  writer.Write(map.Hop);
  writer.Write(map.Average);
  writer.Write(Freq0003Tag(kind));
  writer.Write(map.FrameCount);
  std::uint8_t* place = writer.Append(frameBytes);
  for (const FrqFrame& frame : map.Frames) {
    const FileFrame written = {frame.Frequency, frame.Amplitude};
    std::memcpy(place, &written, kFrameBytes);
    place += kFrameBytes;
  }
  return writer.Take();
}

std::array<char, 16> Freq0003Tag(FrqType kind) {
  std::array<char, 16> tag{};
  if (kind == FrqTypeFrc) std::ranges::copy(std::string_view("m4      "), tag.begin());
  return tag;
}

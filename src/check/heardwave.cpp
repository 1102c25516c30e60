#include "check/heardwave.h"

#include <cstring>
#include <span>
#include <utility>

#include "base/wordhash.h"
#include "frqmap/checkmark.h"

namespace {

// The file holds a head, the waves, and a hash of all before it; a wave is its name, its facts, its hearing, its
// answer.
struct Head {
  std::uint64_t Magic = 0x31646172654868u;
  std::uint64_t Edition;
  std::uint64_t Waves;

  bool operator==(const Head&) const = default;
};

std::uint64_t HashOf(ByteSpan bytes) {
  WordHash hash;
  hash.Add(bytes);
  return hash.Value();
}

template <typename T>
void WriteAll(ByteWriter& writer, const std::vector<T>& values) {
  writer.Write(std::uint64_t{values.size()});
  for (const T& value : values) writer.Write(value);
}

template <typename T>
std::vector<T> ReadAll(ByteReader& reader) {
  const auto count = static_cast<std::int64_t>(reader.Read<std::uint64_t>());
  std::vector<T> values;
  if (!reader.Holds(count, sizeof(T))) {
    reader.Fail();
    return values;
  }
  values.reserve(static_cast<std::size_t>(count));
  for (std::int64_t i = 0; i < count; ++i) values.push_back(reader.Read<T>());
  return values;
}

void WriteWave(ByteWriter& writer, const std::wstring& name, const HeardWave& wave) {
  WriteAll(writer, std::vector<std::uint32_t>(name.begin(), name.end()));
  writer.Write(wave.File.Size);
  writer.Write(wave.File.Written);
  writer.Write(std::int64_t{wave.Heard.Hop});
  writer.Write(wave.Heard.Rate);
  writer.Write(wave.Heard.Samples);
  WriteAll(writer, wave.Heard.Frames);
  writer.Write(wave.Answer ? wave.Answer->Map : std::uint64_t{0});
  WriteAll(writer, wave.Answer ? wave.Answer->Marks : std::vector<KeptAnswer::Marked>());
}

std::pair<std::wstring, HeardWave> ReadWave(ByteReader& reader) {
  const auto name = ReadAll<std::uint32_t>(reader);
  HeardWave wave;
  wave.File.Size = reader.Read<std::int64_t>();
  wave.File.Written = reader.Read<std::int64_t>();
  wave.Heard.Hop = static_cast<SampleCount>(reader.Read<std::int64_t>());
  wave.Heard.Rate = reader.Read<double>();
  wave.Heard.Samples = reader.Read<std::int64_t>();
  wave.Heard.Frames = ReadAll<HeardFrame>(reader);
  const auto map = reader.Read<std::uint64_t>();
  auto marked = ReadAll<KeptAnswer::Marked>(reader);
  if (map != 0) wave.Answer = {map, std::move(marked)};
  return {{name.begin(), name.end()}, std::move(wave)};
}

std::span<const CheckFrame> FramesOf(const CheckFrameRecord& map) {
  return {map.Frames, static_cast<std::size_t>(map.FrameCount)};
}

}  // namespace

std::uint64_t HashOfMap(const CheckFrameRecord& map) {
  WordHash hash(static_cast<std::uint64_t>(map.Hop));
  for (const CheckFrame& frame : FramesOf(map)) hash.Add(frame.Frequency);
  return hash.Value();
}

KeptAnswer AnswerIn(const CheckFrameRecord& map) {
  KeptAnswer answer{HashOfMap(map), {}};
  std::int32_t i = 0;
  for (const CheckFrame& frame : FramesOf(map)) {
    if (frame.Mark != CheckMarkNone) answer.Marks.push_back({i, frame.Mark, frame.SuggestedFrequency});
    ++i;
  }
  return answer;
}

std::int32_t WriteAnswer(const KeptAnswer& answer, CheckFrameRecord& map) {
  for (CheckFrame& frame : std::span(map.Frames, static_cast<std::size_t>(map.FrameCount))) {
    frame.Mark = CheckMarkNone;
    frame.SuggestedFrequency = 0.0;
  }
  std::int32_t count = 0;
  for (const KeptAnswer::Marked& marked : answer.Marks) {
    if (marked.Frame < 0 || marked.Frame >= map.FrameCount) continue;
    map.Frames[marked.Frame].Mark = marked.Mark;
    map.Frames[marked.Frame].SuggestedFrequency = marked.Suggestion;
    ++count;
  }
  return count;
}

Bytes EncodeHeardWaves(const HeardWaves& waves, std::uint64_t edition) {
  ByteWriter writer;
  writer.Write(Head{.Edition = edition, .Waves = waves.size()});
  for (const auto& [name, wave] : waves) WriteWave(writer, name, *wave);
  Bytes bytes = writer.Take();
  const std::uint64_t hash = HashOf(bytes);
  bytes.resize(bytes.size() + sizeof(hash));
  std::memcpy(&bytes[bytes.size() - sizeof(hash)], &hash, sizeof(hash));
  return bytes;
}

HeardWaves DecodeHeardWaves(ByteSpan bytes, std::uint64_t edition) {
  if (bytes.size() < sizeof(std::uint64_t)) return {};
  const ByteSpan hashed = bytes.first(bytes.size() - sizeof(std::uint64_t));
  if (ByteReader(bytes.last(sizeof(std::uint64_t))).Read<std::uint64_t>() != HashOf(hashed)) return {};
  ByteReader reader(hashed);
  const auto head = reader.Read<Head>();
  if (head != Head{.Edition = edition, .Waves = head.Waves}) return {};
  HeardWaves waves;
  for (std::uint64_t i = 0; i < head.Waves && !reader.Failed(); ++i) {
    auto [name, wave] = ReadWave(reader);
    if (!reader.Failed()) waves.insert_or_assign(std::move(name), std::make_shared<const HeardWave>(std::move(wave)));
  }
  return waves;
}

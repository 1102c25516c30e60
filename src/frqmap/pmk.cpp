#include "frqmap/pmk.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace {

constexpr std::array<char, 2> kMagic = {0x13, 0x00};
constexpr std::size_t kHeaderBytes = 14;
constexpr SampleCount kHop = 256;                 // of every map that is read from this kind
constexpr std::int32_t kLeastPeriod = 50;         // a shorter one is no pitch
constexpr double kNoPitchPeriod = 49.0;           // what a stretch without pitch is filled with
constexpr std::size_t kMostRecords = 1 << 22;     // nine minutes of the highest pitch that an edit can set
constexpr std::int64_t kFramesPerRecord = 8;      // a period of 2048 samples, far under any voice
constexpr std::int64_t kWaveBytesPerFrame = 32;   // those of compressed speech; plain sound has some hundred
constexpr std::int64_t kMostOfAWave = 2'000'000;  // three hours
constexpr std::int64_t kFramesOfAnyFile = 256;    // a second and a half

struct Record {
  SampleCount Position;  // end of the period
  std::int32_t Period;   // [samples]
};

// The last record alone tells the length of the map. A few bytes could so ask for any amount of memory, and a bank of
// them for all there is: no map reaches beyond what its records can cover, or else its wave, by more than a moment.
// Records may lie far apart, where another writer leaves silence out; only then does the wave matter. What reaches
// further is no map, rather than one that is cut: shown in part it would look sound, and a save would lose the rest.
std::optional<SampleCount> FrameCountOf(const std::vector<Record>& records, std::int64_t waveBytes) {
  if (records.empty()) return std::nullopt;
  const std::int64_t end = std::int64_t{records.back().Position} + records.back().Period + (kHop - 1);
  const std::int64_t frames = end / kHop;
  const std::int64_t covered = std::ssize(records) * kFramesPerRecord;
  const std::int64_t heard = std::min(waveBytes / kWaveBytesPerFrame, kMostOfAWave);
  const std::int64_t most = kFramesOfAnyFile + std::max(covered, heard);
  if (end > std::numeric_limits<SampleCount>::max() || frames < 0 || frames > most) return std::nullopt;
  return static_cast<SampleCount>(frames);
}

// A frame takes the first record that ends no sooner than the frame begins, in one walk over both: records that go back
// are passed by. Frames behind the last record stay without pitch. The number of frames that have a record.
SampleCount SetFrames(std::vector<FrqFrame>& frames, const std::vector<Record>& records) {
  auto record = records.begin();
  SampleCount position = 0;
  for (FrqFrame& frame : frames) {
    if (record == records.end()) break;
    frame.Voiced = record->Period >= kLeastPeriod;
    if (frame.Voiced) frame.Frequency = static_cast<double>(FrqSampleRate) / record->Period;
    position += kHop;
    record = std::find_if(record, records.end(), [&](const Record& next) { return next.Position >= position; });
  }
  return position / kHop;
}

// A frequency above the sample rate has no period of a sample: without this limit an infinite one would never fill its
// frame.
double PeriodOf(double hz) {
  return hz > FrqNoPitch && hz <= FrqSampleRate ? FrqSampleRate / hz : kNoPitchPeriod;
}

// As many periods for each frame as it takes to reach the frame's end, but at least one. The periods are summed as they
// are, not as they are rounded in the records. None for a map that is too long for its positions, or that a damaged hop
// would blow up to more memory than there is.
std::optional<std::vector<Record>> RecordsOf(const FrqMap& map) {
  constexpr SampleCount kLastPosition = std::numeric_limits<SampleCount>::max();
  if (map.Hop <= 0 || std::int64_t{map.FrameCount} * map.Hop > kLastPosition) return std::nullopt;
  std::vector<Record> records;
  double covered = 0.0;
  std::int64_t target = 0;
  for (const FrqFrame& frame : map.Frames) {
    target += map.Hop;
    const double period = PeriodOf(frame.Frequency);
    const auto rounded = static_cast<std::int32_t>(period + 0.5);
    do {
      const double end = rounded + covered;
      if (end > kLastPosition || records.size() == kMostRecords) return std::nullopt;
      records.push_back({static_cast<SampleCount>(end), rounded});
      covered += period;
    } while (covered < static_cast<double>(target));
  }
  return records;
}

}  // namespace

std::optional<FrqMap> DecodePmk(ByteSpan file, std::int64_t waveBytes, SampleCount* framesWithRecord) {
  ByteReader reader(file);
  const auto magic = reader.Read<std::array<char, 2>>();
  const auto meanPeriod = reader.Read<double>();
  const auto count = reader.Read<std::int32_t>();
  if (magic != kMagic || !reader.Holds(count, sizeof(Record))) return std::nullopt;
  std::vector<Record> records(static_cast<std::size_t>(count));
  for (Record& record : records) record = reader.Read<Record>();
  const std::optional<SampleCount> frameCount = FrameCountOf(records, waveBytes);
  if (!frameCount) return std::nullopt;

  FrqMap map;
  std::ranges::copy(magic, map.Magic.begin());
  map.Average = meanPeriod < kLeastPeriod ? FrqNoPitch : FrqSampleRate / meanPeriod;
  map.Hop = kHop;
  map.FrameCount = *frameCount;
  map.Frames.Own().resize(static_cast<std::size_t>(*frameCount));
  const SampleCount reached = SetFrames(map.Frames.Own(), records);
  if (framesWithRecord) *framesWithRecord = reached;
  return map;
}

bool HoldsAllRecords(ByteSpan file) {
  ByteReader reader(file);
  reader.Read<std::array<char, 2>>();
  reader.Read<double>();
  return reader.Holds(reader.Read<std::int32_t>(), sizeof(Record));
}

std::optional<Bytes> EncodePmk(const FrqMap& map) {
  const std::optional<std::vector<Record>> records = RecordsOf(map);
  if (!records) return std::nullopt;

  ByteWriter writer;
  writer.Reserve(kHeaderBytes + records->size() * sizeof(Record));
  writer.Write(kMagic);
  writer.Write(map.Average > FrqNoPitch ? FrqSampleRate / map.Average : 0.0);
  writer.Write(static_cast<std::int32_t>(records->size()));
  for (const Record& record : *records) writer.Write(record);
  return writer.Take();
}

#include "check/checkrecords.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "frqmap/frqmap.h"

namespace {

// A zeroed record with room for `count` items behind the one that it ends with itself. A map in memory is larger than
// its records, so that their size cannot wrap.
template <typename Record>
CheckRecordPtr<Record> Allocate(std::size_t count, std::size_t itemSize) {
  return CheckRecordPtr<Record>(static_cast<Record*>(std::calloc(1, sizeof(Record) + count * itemSize)));
}

}  // namespace

CheckRecordPtr<CheckFrameRecord> MakeCheckFrames(const FrqMap& map, std::wstring_view mapPath) {
  auto record = Allocate<CheckFrameRecord>(map.Frames.size(), sizeof(CheckFrame));
  if (!record) return record;
  record->Average = map.Average;
  std::ranges::copy(mapPath.substr(0, std::size(record->MapPath) - 1), record->MapPath);
  record->FrameCount = map.FrameCount;
  record->Hop = map.Hop;
  for (SampleCount i = 0; i < map.FrameCount; ++i) {
    CheckFrame& frame = record->Frames[i];
    // A frame is asked for by its position, as everywhere: with a hop that leads nowhere it has neither pitch nor
    // level.
    const bool isThere = map.PositionOf(i) >= 0;
    const FrqFrame& source = map.Frames[static_cast<std::size_t>(i)];
    frame.Frequency = isThere ? source.Frequency : FrqNoPitch;
    frame.NoPitch = frame.Frequency <= FrqNoPitch;
    frame.Amplitude = isThere ? source.Amplitude : 0.0;
  }
  return record;
}

CheckRecordPtr<CheckRegionRecord> MakeCheckRegions(const FrqMap& map) {
  std::vector<CheckRegion> regions;
  const std::vector<bool> sounding = map.ComputeSoundRegions();
  for (SampleCount i = 0; i < map.FrameCount; ++i) {
    if (!sounding[static_cast<std::size_t>(i)]) continue;
    const bool soundsOn = !regions.empty() && regions.back().Last == i - 1;
    if (!soundsOn) regions.push_back({i, i});
    regions.back().Last = i;
  }
  auto record = Allocate<CheckRegionRecord>(regions.size(), sizeof(CheckRegion));
  if (!record) return record;
  record->RegionCount = static_cast<std::uint32_t>(regions.size());
  std::ranges::copy(regions, record->Regions);
  return record;
}

int TakeCheckResults(const CheckFrameRecord& record, FrqMap& map) {
  int count = 0;
  for (SampleCount i = 0; i < map.FrameCount; ++i) {
    const auto index = static_cast<std::size_t>(i);
    const auto mark = static_cast<std::uint32_t>(record.Frames[i].Mark);
    const double suggestion = record.Frames[i].SuggestedFrequency;
    if (mark != 0) ++count;
    // Most maps have no marks, and go on sharing their frames.
    const FrqFrame& before = map.Frames[index];
    if (before.Mark == mark && before.SuggestedFrequency == suggestion) continue;
    FrqFrame& frame = map.Frames.Own()[index];
    frame.Mark = mark;
    frame.SuggestedFrequency = suggestion;
  }
  map.HasMarks = count > 0;
  return count;
}

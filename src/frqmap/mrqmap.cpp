#include "frqmap/mrqmap.h"

#include <vector>

#include "base/filesystem.h"
#include "frqmap/levels.h"
#include "frqmap/wavelevels.h"

namespace {

FrqMap MapOfEntry(const MrqEntry& entry) {
  FrqMap map;
  map.Hop = entry.Hop;
  map.FrameCount = static_cast<SampleCount>(entry.Frequencies.size());
  std::vector<FrqFrame>& frames = map.Frames.Own();
  frames.resize(entry.Frequencies.size());
  for (std::size_t i = 0; i < frames.size(); ++i) {
    frames[i].Voiced = entry.Frequencies[i] > FrqNoPitch;
    if (frames[i].Voiced) frames[i].Frequency = entry.Frequencies[i];
  }
  return map;
}

MrqEntry EntryOfMap(const FrqMap& map) {
  MrqEntry entry;
  entry.Hop = map.Hop;
  entry.Unedited = map.Modified ? 0 : 1;
  entry.Frequencies.reserve(map.Frames.size());
  for (const FrqFrame& frame : map.Frames) {
    entry.Frequencies.push_back(frame.Frequency > FrqNoPitch ? frame.Frequency : 0.0);
  }
  return entry;
}

}  // namespace

std::wstring MrqKey(const std::wstring& mapPath) {
  return mapPath.substr(0, mapPath.rfind(L'.'));
}

int LoadMrq(FrqMap& map, const std::wstring& mapPath, const MrqStore* store) {
  const auto entry = store ? store->Find(MrqKey(mapPath)) : std::nullopt;
  if (!entry) return -1;
  map = MapOfEntry(*entry);
  std::vector<double> levels;
  // A wave that cannot be read leaves a map without amplitudes.
  ReadWaveLevels(WavePathFromMapW(mapPath), levels, map.Hop);
  SetLevels(map, levels);
  return 0;
}

int SaveMrq(const FrqMap& map, const std::wstring& mapPath, MrqStore* store) {
  if (!store) return -1;
  return store->SaveEntry(MrqKey(mapPath), EntryOfMap(map));
}

bool MrqExists(const std::wstring& mapPath, const MrqStore& store) {
  return store.Find(MrqKey(mapPath)).has_value();
}

bool DeleteMrq(const std::wstring& mapPath, MrqStore& store, bool keepEntry) {
  Disk().Delete(LlsmPathFromWave(WavePathFromMapW(mapPath)));
  if (!keepEntry) return store.Remove(MrqKey(mapPath));
  store.KeepEntry(MrqKey(mapPath));
  return true;
}

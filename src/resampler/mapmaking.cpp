#include "resampler/mapmaking.h"

#include <optional>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/inplace.h"
#include "base/narrowpath.h"
#include "base/path.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqmap.h"
#include "frqmap/vslib.h"
#include "resampler/hiddenrun.h"
#include "resampler/plaincopy.h"

namespace {

// A map with all that belongs to it, in memory.
class HeldMap {
 public:
  HeldMap(const std::wstring& map, const MrqStore& store) : map_(map) {
    if (FrqTypeFromPathW(map) == FrqTypeMrq) {
      entry_ = store.Find(MrqKey(map));
      return;
    }
    std::vector<std::wstring> paths = MapCompanions(map);
    paths.push_back(map);
    for (std::wstring& path : paths) {
      if (std::optional<Bytes> bytes = ReadWholeFile(path)) files_.emplace_back(std::move(path), *std::move(bytes));
    }
  }

  void PutBack(MrqStore& store) const {
    if (entry_) store.SaveEntry(MrqKey(map_), *entry_);
    for (const auto& [path, bytes] : files_) WriteInPlace(Disk(), path, bytes);
  }

 private:
  const std::wstring map_;
  std::optional<MrqEntry> entry_;
  std::vector<std::pair<std::wstring, Bytes>> files_;
};

// Whether a resampler that takes bytes would open another file instead, and make its map anew.
bool IsTakenForAnother(const std::wstring& wave) {
  const std::wstring taken = ReadNarrowly(wave).substr(0, MAX_PATH - 1);
  return taken != wave && FileExists(taken);
}

bool IsMade(const std::wstring& wave, const std::wstring& map, MrqStore& store) {
  if (FrqTypeFromPathW(map) == FrqTypeMrq) store.LoadFolder(FolderOf(wave));
  return MapFileExists(map, &store);
}

// A resampler that ended with a negative code loses what it has left. Any other code is a success: resamplers give all
// sorts of them.
ItemResult Run(const MapOrder& order, const std::wstring& wave, const std::wstring& map, MrqStore& store) {
  LONG exitCode = 0;
  const int result =
      RunResamplerCreateMap(order.Owner, order.Resampler, wave, order.Vs4uRange, order.Vs4uUseFrq, &exitCode);
  if (exitCode < 0) DeleteMapFile(map, &store, order.KeepsEntry);
  if (result != 0) return {order.Kind == FrqTypeVs4ufrq ? ItemEnd::LibraryRefused : ItemEnd::NotStarted, result};
  if (exitCode < 0) return {ItemEnd::EndedBadly, exitCode};
  return {ItemEnd::Made};
}

bool MakeByCopy(const MapOrder& order, const std::wstring& wave, MrqStore& store) {
  const PlainCopy copy(wave);
  LONG exitCode = -1;
  if (!copy.Wave().empty()) {
    RunResamplerCreateMap(order.Owner, order.Resampler, copy.Wave(), order.Vs4uRange, order.Vs4uUseFrq, &exitCode);
  }
  return exitCode >= 0 && copy.BringMapBack(order.Kind, store);
}

ItemResult MakeUncertainly(const MapOrder& order, const std::wstring& wave, const std::wstring& map, MrqStore& store) {
  const HeldMap held(map, store);
  DeleteMapFile(map, &store, order.KeepsEntry);
  const ItemResult result = IsTakenForAnother(wave) ? ItemResult{ItemEnd::Made} : Run(order, wave, map, store);
  if (IsMade(wave, map, store)) return {ItemEnd::Made};
  if (order.Kind != FrqTypeVs4ufrq && MakeByCopy(order, wave, store)) return {ItemEnd::Made};
  held.PutBack(store);
  return result;
}

}  // namespace

// Nobody knows what a resampler does to a map, so a map that could not be kept stays.
ItemResult MakeMap(const MapOrder& order, const std::wstring& wave, MrqStore& store) {
  if (order.Kind == FrqTypeVs4ufrq && !CanLibraryOpen(wave)) return {ItemEnd::Refused};
  const std::wstring map = MapPathFromWaveW(wave, order.Kind);
  if (!KeepMapFile(map, &store)) return {ItemEnd::NotKept};
  if (!IsNarrow(wave)) return MakeUncertainly(order, wave, map, store);
  DeleteMapFile(map, &store, order.KeepsEntry);
  return Run(order, wave, map, store);
}

#include "frqmap/mapfiles.h"

#include <utility>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/inplace.h"
#include "base/scratchbytes.h"
#include "frqmap/levels.h"
#include "frqmap/mapkind.h"
#include "frqmap/mrqmap.h"
#include "frqmap/wavelevels.h"

namespace {

std::wstring WithExtension(const std::wstring& path, std::wstring_view extension) {
  return path.substr(0, path.rfind(L'.')).append(extension);
}

constexpr std::uint32_t kInvalidData = 13;  // ERROR_INVALID_DATA

// A map without its wave has no levels, which is no failure.
int LoadFile(FrqMap& map, const std::wstring& path, const MapKind& kind) {
  ScratchBytes file;
  std::optional<FrqMap> decoded = ReadWholeFile(path, file.Content) ? kind.Decode(file.Content, 0) : std::nullopt;
  if (!decoded) return -1;
  map = std::move(*decoded);
  std::vector<double> levels;
  if (!kind.HoldsLevels && ReadWaveLevels(WavePathFromMapW(path), levels, map.Hop) == 0) SetLevels(map, levels);
  return 0;
}

// A map that its kind cannot hold leaves the file as it was, and says why in the system's words.
int SaveFile(const FrqMap& map, const std::wstring& path, const MapKind& kind) {
  const std::uint32_t samples = kind.HoldsWaveLength ? ReadSamplesPerChannel(WavePathFromMapW(path)) : 0;
  if (std::optional<Bytes> file = kind.Encode(map, samples)) {
    return WriteInPlace(Disk(), path, *std::move(file)) ? 0 : -1;
  }
  Disk().SetLastError(kInvalidData);
  return -1;
}

}  // namespace

int FrqMap::Load(const std::wstring& path, MrqStore* store) {
  Clear();
  const MapKind* const kind = FindMapKind(FrqTypeFromPathW(path));
  if (!kind) return -1;
  const int result = kind->Load ? kind->Load(*this, path, store) : LoadFile(*this, path, *kind);
  if (result != 0) {
    Clear();
    return result;
  }
  Kind = kind->Type;
  DerivedAverage = !kind->HoldsAverage;
  SinglePrecision = kind->IsSinglePrecision;
  UpdateFrequencyRange();
  Loaded = true;
  return 0;
}

int FrqMap::Save(const std::wstring& path, MrqStore* store) {
  if (FrameCount == 0) return -1;
  if (DerivedAverage) Average = ComputeAverage(-1);
  const MapKind* const kind = FindMapKind(FrqTypeFromPathW(path));
  if (!kind) return -1;
  return kind->Save ? kind->Save(*this, path, store) : SaveFile(*this, path, *kind);
}

bool MapFileExists(const std::wstring& mapPath, MrqStore* store) {
  if (store && FrqTypeFromPathW(mapPath) == FrqTypeMrq) return MrqExists(mapPath, *store);
  return FileExists(mapPath);
}

std::vector<std::wstring> MapCompanions(const std::wstring& mapPath) {
  if (FrqTypeFromPathW(mapPath) != FrqTypeDio) return {};
  return {WithExtension(mapPath, L".star"), WithExtension(mapPath, L".platinum")};
}

bool KeepMapFile(const std::wstring& mapPath, const MrqStore* store) {
  if (FrqTypeFromPathW(mapPath) == FrqTypeMrq) return !store || store->KeepEntry(MrqKey(mapPath));
  if (!PresentGuard().Wants(mapPath)) return true;
  const std::optional<Bytes> bytes = ReadWholeFile(mapPath);
  if (!bytes) return !FileExists(mapPath);
  return bytes->empty() || PresentGuard().Keep(mapPath, *bytes);
}

bool DeleteMapFile(const std::wstring& mapPath, MrqStore* store, bool keepEntry) {
  const FrqType kind = FrqTypeFromPathW(mapPath);
  if (kind == FrqTypeMrq) {
    return store && DeleteMrq(mapPath, *store, keepEntry);
  }
  KeepMapFile(mapPath, store);
  const bool deleted = Disk().Delete(mapPath);
  // Nothing is lost if one of them is not there.
  for (const std::wstring& companion : MapCompanions(mapPath)) Disk().Delete(companion);
  return deleted;
}

int RestoreMapFile(const std::wstring& mapPath, ByteSpan kept, MrqStore* store) {
  if (FrqTypeFromPathW(mapPath) != FrqTypeMrq)
    return WriteInPlace(Disk(), mapPath, {kept.begin(), kept.end()}) ? 0 : -1;
  const std::optional<MrqEntry> entry = DecodeMrqEntry(kept);
  if (entry && store) return store->SaveEntry(MrqKey(mapPath), *entry);
  Disk().SetLastError(kInvalidData);
  return -1;
}

int LoadMap(FrqMap& map, const std::wstring& wavePath, FrqType kind, MrqStore* store) {
  return map.Load(MapPathFromWaveW(wavePath, kind), store);
}

int SaveMap(FrqMap& map, const std::wstring& wavePath, FrqType kind, MrqStore* store) {
  return map.Save(MapPathFromWaveW(wavePath, kind), store);
}

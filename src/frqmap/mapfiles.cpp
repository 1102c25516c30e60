#include "frqmap/mapfiles.h"

#include <algorithm>
#include <utility>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/inplace.h"
#include "base/scratchbytes.h"
#include "frqmap/dio.h"
#include "frqmap/freq0003.h"
#include "frqmap/levels.h"
#include "frqmap/mrqmap.h"
#include "frqmap/pmk.h"
#include "frqmap/projectmap.h"
#include "frqmap/wavelevels.h"

namespace {

std::wstring WithExtension(const std::wstring& path, std::wstring_view extension) {
  return path.substr(0, path.rfind(L'.')).append(extension);
}

constexpr std::uint32_t kInvalidData = 13;  // ERROR_INVALID_DATA

using Decoder = std::optional<FrqMap> (*)(ByteSpan);

std::optional<FrqMap> ReadMap(const std::wstring& path, Decoder decode) {
  ScratchBytes file;
  return ReadWholeFile(path, file.Content) ? decode(file.Content) : std::nullopt;
}

// Kinds whose files hold no amplitude take it from the wave. Without its wave a map has none, which is no failure.
std::optional<FrqMap> ReadDioAndLevels(const std::wstring& path) {
  std::optional<FrqMap> map = ReadMap(path, DecodeDio);
  std::vector<double> levels;
  if (map && ReadWaveLevels(WavePathFromMapW(path), levels, map->Hop) == 0) SetLevels(*map, levels);
  return map;
}

// The size of the wave is asked for only where the map needs it.
std::optional<FrqMap> ReadPmkAndLevels(const std::wstring& path) {
  const std::optional<Bytes> file = ReadWholeFile(path);
  if (!file) return std::nullopt;
  const std::wstring wavePath = WavePathFromMapW(path);
  SampleCount framesWithRecord = 0;
  std::optional<FrqMap> map = DecodePmk(*file, 0, &framesWithRecord);
  if (!map) {
    const std::optional<FileFacts> wave = Disk().FactsOf(wavePath);
    if (wave) map = DecodePmk(*file, wave->Size, &framesWithRecord);
  }
  std::vector<double> levels;
  if (!map || ReadWaveLevels(wavePath, levels, map->Hop) != 0) return map;
  levels.resize(std::min(levels.size(), static_cast<std::size_t>(framesWithRecord)));
  SetLevels(*map, levels);
  return map;
}

// A map that its kind cannot hold leaves the file as it was, and says why in the system's words.
int WriteMap(const std::wstring& path, std::optional<Bytes> file) {
  if (file) return WriteInPlace(Disk(), path, *std::move(file)) ? 0 : -1;
  Disk().SetLastError(kInvalidData);
  return -1;
}

}  // namespace

int FrqMap::Load(const std::wstring& path, MrqStore* store) {
  Clear();
  const FrqType kind = FrqTypeFromPathW(path);
  const int result = Read(path, kind, store);
  if (result != 0) {
    Clear();
    return result;
  }
  Kind = kind;
  UpdateFrequencyRange();
  Loaded = true;
  return 0;
}

int FrqMap::Save(const std::wstring& path, MrqStore* store) {
  if (FrameCount == 0) return -1;
  if (DerivedAverage) Average = ComputeAverage(-1);
  return Write(path, FrqTypeFromPathW(path), store);
}

int FrqMap::Read(const std::wstring& path, FrqType kind, MrqStore* store) {
  std::optional<FrqMap> map;
  switch (kind) {
    case FrqTypeFrq:
    case FrqTypeFrc: map = ReadMap(path, DecodeFreq0003); break;
    case FrqTypePmk: map = ReadPmkAndLevels(path); break;
    case FrqTypeDio: map = ReadDioAndLevels(path); break;
    case FrqTypeVs4ufrq: return LoadVs4ufrq(*this, path);
    case FrqTypeMrq: return LoadMrq(*this, path, store);
    default: break;
  }
  if (!map) return -1;
  *this = std::move(*map);
  return 0;
}

int FrqMap::Write(const std::wstring& path, FrqType kind, MrqStore* store) const {
  switch (kind) {
    case FrqTypeFrq:
    case FrqTypeFrc: return WriteMap(path, EncodeFreq0003(*this, kind));
    case FrqTypePmk: return WriteMap(path, EncodePmk(*this));
    case FrqTypeDio: return WriteMap(path, EncodeDio(*this, ReadSamplesPerChannel(WavePathFromMapW(path))));
    case FrqTypeVs4ufrq: return SaveVs4ufrq(*this, path);
    case FrqTypeMrq: return SaveMrq(*this, path, store);
    default: return -1;
  }
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

#include "frqmap/mapfiles.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/inplace.h"
#include "base/text.h"
#include "frqmap/dio.h"
#include "frqmap/freq0003.h"
#include "frqmap/levels.h"
#include "frqmap/mrqmap.h"
#include "frqmap/pmk.h"
#include "frqmap/vslib.h"
#include "frqmap/wavelevels.h"

namespace {

constexpr UINT kCodePage = 932;
constexpr std::size_t kLongestNarrowPath = 259;

std::wstring WithExtension(const std::wstring& path, std::wstring_view extension) {
  return path.substr(0, path.rfind(L'.')).append(extension);
}

// What the analysis of this kind keeps beside its map. Nothing is lost if one of them is not there.
void DeleteDioCompanions(const std::wstring& mapPath) {
  DeleteFileW(WithExtension(mapPath, L".star").c_str());
  DeleteFileW(WithExtension(mapPath, L".platinum").c_str());
}

std::wstring WavePathOf(std::string_view narrowMapPath) {
  return WidePath(WavePathFromMapA(narrowMapPath));
}

using Decoder = std::optional<FrqMap> (*)(ByteSpan);

std::optional<FrqMap> ReadMap(std::string_view narrowPath, Decoder decode) {
  const std::optional<Bytes> file = ReadWholeFile(WidePath(narrowPath));
  return file ? decode(*file) : std::nullopt;
}

// Kinds whose files hold no amplitude take it from the wave. Without its wave a map has none, which is no failure.
std::optional<FrqMap> ReadDioAndLevels(std::string_view narrowPath) {
  std::optional<FrqMap> map = ReadMap(narrowPath, DecodeDio);
  std::vector<double> levels;
  if (map && ReadWaveLevels(WavePathOf(narrowPath), levels, map->Hop) == 0) SetLevels(*map, levels);
  return map;
}

// The size of the wave is asked for only where the map needs it.
std::optional<FrqMap> ReadPmkAndLevels(std::string_view narrowPath) {
  const std::optional<Bytes> file = ReadWholeFile(WidePath(narrowPath));
  if (!file) return std::nullopt;
  const std::wstring wavePath = WavePathOf(narrowPath);
  std::optional<FrqMap> map = DecodePmk(*file, 0);
  if (!map) {
    const std::optional<FileFacts> wave = Disk().FactsOf(wavePath);
    if (wave) map = DecodePmk(*file, wave->Size);
  }
  std::vector<double> levels;
  if (!map || ReadWaveLevels(wavePath, levels, map->Hop) != 0) return map;
  levels.resize(std::min(levels.size(), static_cast<std::size_t>(FramesWithRecord(*map))));
  SetLevels(*map, levels);
  return map;
}

// A map that its kind cannot hold leaves the file as it was, and says why in the system's words.
int WriteMap(std::string_view narrowPath, const std::optional<Bytes>& file) {
  if (file) return WriteInPlace(Disk(), WidePath(narrowPath), *file) ? 0 : -1;
  SetLastError(ERROR_INVALID_DATA);
  return -1;
}

}  // namespace

std::optional<std::string> NarrowPath(std::wstring_view wide) {
  std::array<char, kLongestNarrowPath> narrow;
  BOOL replaced = FALSE;
  const int size = WideCharToMultiByte(kCodePage, WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()),
                                       narrow.data(), static_cast<int>(narrow.size()), nullptr, &replaced);
  if (size == 0 || replaced) return std::nullopt;
  return std::string(narrow.data(), static_cast<std::size_t>(size));
}

std::wstring WidePath(std::string_view narrow) {
  return Widen(narrow, kCodePage);
}

int FrqMap::Load(std::string_view narrowPath, MrqStore* store) {
  Clear();
  const FrqType kind = FrqTypeFromPathA(narrowPath);
  const int result = Read(narrowPath, kind, store);
  if (result != 0) {
    Clear();
    return result;
  }
  Kind = kind;
  UpdateFrequencyRange();
  Loaded = true;
  return 0;
}

int FrqMap::Save(std::string_view narrowPath, MrqStore* store) {
  if (FrameCount == 0) return -1;
  if (DerivedAverage) Average = ComputeAverage(-1);
  return Write(narrowPath, FrqTypeFromPathA(narrowPath), store);
}

int FrqMap::Read(std::string_view narrowPath, FrqType kind, MrqStore* store) {
  std::optional<FrqMap> map;
  switch (kind) {
    case FrqTypeFrq:
    case FrqTypeFrc: map = ReadMap(narrowPath, DecodeFreq0003); break;
    case FrqTypePmk: map = ReadPmkAndLevels(narrowPath); break;
    case FrqTypeDio: map = ReadDioAndLevels(narrowPath); break;
    case FrqTypeVs4ufrq: return LoadVs4ufrq(*this, narrowPath);
    case FrqTypeMrq: return LoadMrq(*this, narrowPath, store);
    default: break;
  }
  if (!map) return -1;
  *this = std::move(*map);
  return 0;
}

int FrqMap::Write(std::string_view narrowPath, FrqType kind, MrqStore* store) const {
  switch (kind) {
    case FrqTypeFrq:
    case FrqTypeFrc: return WriteMap(narrowPath, EncodeFreq0003(*this, kind));
    case FrqTypePmk: return WriteMap(narrowPath, EncodePmk(*this));
    case FrqTypeDio: return WriteMap(narrowPath, EncodeDio(*this, ReadSamplesPerChannel(WavePathOf(narrowPath))));
    case FrqTypeVs4ufrq: return SaveVs4ufrq(*this, narrowPath);
    case FrqTypeMrq: return SaveMrq(*this, narrowPath, store);
    default: return -1;
  }
}

bool MapFileExists(const std::wstring& mapPath, MrqStore* store) {
  if (store && FrqTypeFromPathW(mapPath) == FrqTypeMrq) return MrqExists(mapPath, *store);
  return FileExists(mapPath);
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
  const bool deleted = DeleteFileW(mapPath.c_str());
  if (kind == FrqTypeDio) DeleteDioCompanions(mapPath);
  return deleted;
}

int RestoreMapFile(const std::wstring& mapPath, ByteSpan kept, MrqStore* store) {
  if (FrqTypeFromPathW(mapPath) != FrqTypeMrq) return WriteInPlace(Disk(), mapPath, kept) ? 0 : -1;
  const std::optional<MrqEntry> entry = DecodeMrqEntry(kept);
  if (entry && store) return store->SaveEntry(MrqKey(mapPath), *entry);
  SetLastError(ERROR_INVALID_DATA);
  return -1;
}

int LoadMap(FrqMap& map, const std::wstring& wavePath, FrqType kind, MrqStore* store) {
  if (const auto path = NarrowPath(MapPathFromWaveW(wavePath, kind))) return map.Load(*path, store);
  map.Clear();
  return -1;
}

int SaveMap(FrqMap& map, const std::wstring& wavePath, FrqType kind, MrqStore* store) {
  if (const auto path = NarrowPath(MapPathFromWaveW(wavePath, kind))) return map.Save(*path, store);
  SetLastError(ERROR_PATH_NOT_FOUND);
  return -1;
}

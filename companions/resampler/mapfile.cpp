#include "mapfile.h"

#include <windows.h>

#include <utility>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/path.h"
#include "frqmap/mapkind.h"
#include "frqmap/mrqstore.h"
#include "mrqentry.h"
#include "mrqlock.h"

namespace {

std::wstring MrqPathOf(const std::wstring& wavePath) {
  return FolderOf(wavePath) + L"\\desc.mrq";
}

std::optional<MrqEntry> FindEntryOf(const std::wstring& wavePath) {
  const std::unique_ptr<FileStream> file = OpenMrqFile(Disk(), MrqPathOf(wavePath));
  if (!file) return std::nullopt;
  const std::u16string name = MrqNameOf(wavePath);
  MrqScan scan(*file);
  while (scan.Next()) {
    if (scan.Head().Name == name) return scan.ReadMrqEntry();
  }
  return std::nullopt;
}

FrqMap MapOfEntry(const MrqEntry& entry) {
  FrqMap map;
  map.Create(static_cast<SampleCount>(entry.Frequencies.size()), FrqTypeMrq);
  for (std::size_t i = 0; i < map.Frames.size(); ++i) map.Frames.Own()[i].Frequency = entry.Frequencies[i];
  map.Hop = entry.Hop;
  map.DerivedAverage = true;
  return map;
}

bool WriteEntryOf(const std::wstring& wavePath, const FrqMap& map) {
  const MrqEntry entry = EntryOfMade(map);
  const MrqLock lock(FolderOf(wavePath));
  return SaveMrqEntry(Disk(), MrqPathOf(wavePath), MrqNameOf(wavePath), entry, MrqStore::PresentTime());
}

std::int64_t SizeOf(const std::wstring& path) {
  const std::optional<FileFacts> facts = Disk().FactsOf(path);
  return facts ? facts->Size : 0;
}

}  // namespace

std::optional<FrqMap> ReadMapOf(const std::wstring& wavePath, FrqType kind) {
  std::optional<FrqMap> map;
  if (kind == FrqTypeMrq) {
    if (const std::optional<MrqEntry> entry = FindEntryOf(wavePath)) map = MapOfEntry(*entry);
  } else if (const std::optional<Bytes> file = ReadWholeFile(MapPathFromWaveW(wavePath, kind))) {
    const MapKind* const row = FindMapKind(kind);
    if (row && row->Decode) map = row->Decode(*file, SizeOf(wavePath));
    if (map) map->DerivedAverage = !row->HoldsAverage;
  }
  // One that says nothing about any sample is none.
  return map && map->Hop > 0 && map->FrameCount > 0 ? map : std::nullopt;
}

bool HasMap(const std::wstring& wavePath, FrqType kind) {
  return kind == FrqTypeMrq ? FindEntryOf(wavePath).has_value() : FileExists(MapPathFromWaveW(wavePath, kind));
}

bool WriteMapOf(const std::wstring& wavePath, FrqType kind, const FrqMap& map, std::uint32_t waveSamples) {
  if (kind == FrqTypeMrq) return WriteEntryOf(wavePath, map);
  const MapKind* const row = FindMapKind(kind);
  const std::optional<Bytes> file = row && row->Encode ? row->Encode(map, waveSamples) : std::nullopt;
  return file && WriteFileAtOnce(MapPathFromWaveW(wavePath, kind), *file);
}

bool WriteFileAtOnce(const std::wstring& path, ByteSpan bytes) {
  // Not made from the file's own name, which may be as long as a name can be.
  const std::wstring name = L"basic-resampler." + std::to_wstring(GetCurrentProcessId()) + L".tmp";
  const std::wstring temporary = PathIn(FolderOf(path), name);
  if (!RefuseReadOnly(path) && WriteWholeFile(temporary, bytes) &&
      MoveFileExW(ApiPath(temporary).c_str(), ApiPath(path).c_str(), MOVEFILE_REPLACE_EXISTING)) {
    return true;
  }
  Disk().Delete(temporary);
  return false;
}

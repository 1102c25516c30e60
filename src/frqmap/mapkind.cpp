#include "frqmap/mapkind.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/files.h"
#include "base/filesystem.h"
#include "frqmap/dio.h"
#include "frqmap/freq0003.h"
#include "frqmap/levels.h"
#include "frqmap/mrqmap.h"
#include "frqmap/pmk.h"
#include "frqmap/projectmap.h"
#include "frqmap/wavelevels.h"
#include "resources/ids.h"

namespace {

std::optional<FrqMap> DecodeFreq0003File(ByteSpan file, std::int64_t) {
  return DecodeFreq0003(file);
}

template <FrqType kind>
std::optional<Bytes> EncodeFreq0003File(const FrqMap& map, std::uint32_t) {
  return EncodeFreq0003(map, kind);
}

std::optional<FrqMap> DecodeDioFile(ByteSpan file, std::int64_t) {
  return DecodeDio(file);
}

std::optional<FrqMap> DecodePmkFile(ByteSpan file, std::int64_t waveBytes) {
  return DecodePmk(file, waveBytes);
}

std::optional<Bytes> EncodePmkFile(const FrqMap& map, std::uint32_t) {
  return EncodePmk(map);
}

// The size of the wave is asked for only where the map needs it, and its levels reach only as far as the records.
int LoadPmk(FrqMap& map, const std::wstring& path, MrqStore*) {
  const std::optional<Bytes> file = ReadWholeFile(path);
  if (!file) return -1;
  const std::wstring wavePath = WavePathFromMapW(path);
  SampleCount framesWithRecord = 0;
  std::optional<FrqMap> decoded = DecodePmk(*file, 0, &framesWithRecord);
  if (!decoded) {
    const std::optional<FileFacts> wave = Disk().FactsOf(wavePath);
    if (wave) decoded = DecodePmk(*file, wave->Size, &framesWithRecord);
  }
  if (!decoded) return -1;
  map = std::move(*decoded);
  std::vector<double> levels;
  if (ReadWaveLevels(wavePath, levels, map.Hop) != 0) return 0;
  levels.resize(std::min(levels.size(), static_cast<std::size_t>(framesWithRecord)));
  SetLevels(map, levels);
  return 0;
}

int LoadProject(FrqMap& map, const std::wstring& path, MrqStore*) {
  return LoadVs4ufrq(map, path);
}

int SaveProject(const FrqMap& map, const std::wstring& path, MrqStore*) {
  return SaveVs4ufrq(map, path);
}

int LoadEntry(FrqMap& map, const std::wstring& path, MrqStore* store) {
  return LoadMrq(map, path, store);
}

constexpr std::array<MapKind, 6> kKinds = {{
    {.Type = FrqTypeFrq,
     .Extension = L".frq",
     .Name = IDS_KIND_FRQ,
     .Place = 0,
     .HoldsAverage = true,
     .HoldsLevels = true,
     .Beginning = "FREQ",
     .HeaderBytes = 40,
     .RecordBytes = 16,
     .Decode = DecodeFreq0003File,
     .Encode = EncodeFreq0003File<FrqTypeFrq>},

    // A project of the analysis library, which reads and writes it.
    {.Type = FrqTypeVs4ufrq,
     .Extension = L".vs4ufrq",
     .Name = IDS_KIND_VS4UFRQ,
     .Place = 2,
     .Resamplers = L"vs4u*.exe",
     .NewHop = 1,
     .ColumnHop = 220.5,
     .HoldsLevels = true,
     .HeaderBytes = 1384,
     .RecordBytes = 104,
     .Load = LoadProject,
     .Save = SaveProject},

    {.Type = FrqTypeFrc,
     .Extension = L".frc",
     .Name = IDS_KIND_FRC,
     .Place = 1,
     .Resamplers = L"model4*.exe",
     .HoldsAverage = true,
     .HoldsLevels = true,
     .Beginning = "FREQ",
     .HeaderBytes = 40,
     .RecordBytes = 16,
     .Decode = DecodeFreq0003File,
     .Encode = EncodeFreq0003File<FrqTypeFrc>},

    // Periods are whole samples, and not under 50. An edit under a tenth of the highest frequency gives a frame without
    // pitch: users rely on that drop, it is no clamp at 88.2.
    {.Type = FrqTypePmk,
     .Extension = L".pmk",
     .Name = IDS_KIND_PMK,
     .Place = 3,
     .Resamplers = L"tips*.exe",
     .LowestHz = 88.2,
     .HighestHz = FrqSampleRate / 50.0,
     .NewHop = 1,
     .HoldsAverage = true,
     .Beginning = {"\x13\0", 2},
     .HeaderBytes = 14,
     .RecordBytes = 8,
     .HasRecordPerFrame = false,
     .Decode = DecodePmkFile,
     .Encode = EncodePmkFile,
     .IsWhole = HoldsAllRecords,
     .Load = LoadPmk},

    {.Type = FrqTypeDio,
     .Extension = L".dio",
     .Name = IDS_KIND_DIO,
     .Place = 4,
     .Resamplers = L"w4u*.exe",
     .DropsWaveExtension = true,
     .HoldsWaveLength = true,
     .Beginning = "wrld-dio",
     .HeaderBytes = 20,
     .RecordBytes = 16,
     .Decode = DecodeDioFile,
     .Encode = EncodeDio},

    // An entry of a store, which has no file of its own.
    {.Type = FrqTypeMrq,
     .Extension = L".mrq",
     .Name = IDS_KIND_MRQ,
     .Place = 5,
     .Resamplers = L"moresampler*.exe",
     .DropsWaveExtension = true,
     .IsSinglePrecision = true,
     .Load = LoadEntry,
     .Save = SaveMrq},
}};

static_assert(std::ranges::all_of(kKinds, [](const MapKind& kind) { return &kKinds[kind.Type] == &kind; }));

}  // namespace

std::span<const MapKind> MapKinds() {
  return kKinds;
}

const MapKind* FindMapKind(FrqType kind) {
  const auto index = static_cast<std::size_t>(kind);
  return index < kKinds.size() ? &kKinds[index] : nullptr;
}

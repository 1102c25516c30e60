#include "app/mapsearch.h"

#include "frqmap/mapkind.h"
#include "frqmap/mrqmap.h"

namespace {

// A wave of 16 bits in one channel, 44 bytes of header and 256 samples a frame.
std::uint32_t EstimateFromWaveSize(std::uint32_t size) {
  return size < 44 ? 0 : (size - 44) / 512;
}

FoundMap FindEntry(const std::wstring& mapPath, const MrqStore& store) {
  const std::optional<MrqEntry> entry = store.Find(MrqKey(mapPath));
  FoundMap found;
  found.Exists = entry.has_value();
  if (entry) found.FrameEstimate = static_cast<std::uint32_t>(entry->Frequencies.size());
  return found;
}

}  // namespace

FoundMap FindMap(const std::wstring& wavePath, FrqType kind, ListedFolders& listed, const MrqStore& store) {
  if (kind == FrqTypeMrq) return FindEntry(MapPathFromWaveW(wavePath, kind), store);
  const auto size = listed.SizeOf(MapPathFromWaveW(wavePath, kind));
  FoundMap found;
  found.Exists = size.has_value();
  const MapKind* const row = FindMapKind(kind);
  if (row && !row->HasRecordPerFrame) {
    found.FrameEstimate = EstimateFromWaveSize(listed.SizeOf(wavePath).value_or(0));
  } else {
    found.FrameEstimate = FrameCountFromFileSize(size.value_or(0), kind);
  }
  return found;
}

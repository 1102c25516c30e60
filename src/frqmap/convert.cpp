#include "frqmap/convert.h"

#include <optional>

#include "frqmap/mapfiles.h"
#include "frqmap/vslib.h"

namespace {

// The notes that a project made from another map is analysed between, whatever the settings for new maps: C2 to B5.
constexpr int kLowestNote = 36;
constexpr int kSemitones = 48;

int FromProject(const std::string& source, FrqType target, MrqStore* store) {
  CVsLib library;
  switch (target) {
    case FrqTypeFrq:
    case FrqTypeFrc:
    case FrqTypeDio: return library.ExportMap(source, target, nullptr);
    case FrqTypeMrq: return library.ExportMap(source, target, store);
    case FrqTypePmk: return library.ExportPmk(source);
    default: return -1;
  }
}

int ToProject(const std::wstring& wave, FrqType source, MrqStore* store) {
  const std::optional<std::string> path = NarrowPath(wave);
  return path ? CVsLib().CreateFile(*path, kLowestNote, kSemitones, true, source, store) : -1;
}

}  // namespace

int ConvertMap(const std::wstring& wave, FrqType source, FrqType target, MrqStore* store) {
  const std::wstring sourcePath = MapPathFromWaveW(wave, source);
  if (!MapFileExists(sourcePath, store)) return 0;
  if (source == FrqTypeVs4ufrq) {
    const std::optional<std::string> path = NarrowPath(sourcePath);
    return path ? FromProject(*path, target, store) : -1;
  }
  if (target == FrqTypeVs4ufrq) return ToProject(wave, source, store);
  FrqMap map;
  if (LoadMap(map, wave, source, store) != 0) return -1;
  return SaveMap(map, wave, target, store) == 0 ? 0 : -1;
}

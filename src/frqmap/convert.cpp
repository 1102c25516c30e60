#include "frqmap/convert.h"

#include "base/files.h"
#include "frqmap/mapfiles.h"
#include "frqmap/vslib.h"

namespace {

// The notes that a project made from another map is analysed between, whatever the settings for new maps: C2 to B5.
constexpr int kLowestNote = 36;
constexpr int kSemitones = 48;

int FromProject(const std::wstring& source, FrqType target, MrqStore* store) {
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
  return CVsLib().CreateFile(wave, kLowestNote, kSemitones, true, source, store);
}

}  // namespace

bool CanConvertMap(const std::wstring& wave, FrqType source, FrqType target) {
  const std::wstring sourcePath = MapPathFromWaveW(wave, source);
  if (source != FrqTypeMrq && FileExists(sourcePath) && !ReadWholeFile(sourcePath)) return false;
  if (source == FrqTypeVs4ufrq) return CanLibraryOpen(sourcePath);
  return target != FrqTypeVs4ufrq || CanLibraryOpen(wave);
}

int ConvertMap(const std::wstring& wave, FrqType source, FrqType target, MrqStore* store) {
  const std::wstring sourcePath = MapPathFromWaveW(wave, source);
  if (!MapFileExists(sourcePath, store)) return 0;
  if (source == FrqTypeVs4ufrq) return FromProject(sourcePath, target, store);
  if (target == FrqTypeVs4ufrq) return ToProject(wave, source, store);
  FrqMap map;
  if (LoadMap(map, wave, source, store) != 0) return -1;
  return SaveMap(map, wave, target, store) == 0 ? 0 : -1;
}

#include "frqmap/convert.h"

#include "base/files.h"
#include "frqmap/mapfiles.h"
#include "frqmap/projectmap.h"

bool CanConvertMap(const std::wstring& wave, FrqType source, FrqType target) {
  const std::wstring sourcePath = MapPathFromWaveW(wave, source);
  if (source != FrqTypeMrq && FileExists(sourcePath) && !ReadWholeFile(sourcePath)) return false;
  if (source == FrqTypeVs4ufrq) return CanLibraryOpen(sourcePath);
  return target != FrqTypeVs4ufrq || CanLibraryOpen(wave);
}

int ConvertMap(const std::wstring& wave, FrqType source, FrqType target, MrqStore* store) {
  const std::wstring sourcePath = MapPathFromWaveW(wave, source);
  if (!MapFileExists(sourcePath, store)) return 0;
  if (source == FrqTypeVs4ufrq) return MapFromProject(sourcePath, target, store);
  if (target == FrqTypeVs4ufrq) return ProjectFromMap(wave, source, store);
  FrqMap map;
  if (LoadMap(map, wave, source, store) != 0) return -1;
  return SaveMap(map, wave, target, store) == 0 ? 0 : -1;
}

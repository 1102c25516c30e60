#include "frqmap/projectmap.h"

#include "frqmap/mapkind.h"
#include "frqmap/vslib.h"

namespace {

// The notes that a project made from another map is analysed between, whatever the settings for new maps: C2 to B5.
constexpr int kLowestNote = 36;
constexpr int kSemitones = 48;

}  // namespace

int MapFromProject(const std::wstring& project, FrqType kind, MrqStore* store) {
  CVsLib library;
  if (!FindMapKind(kind) || kind == FrqTypeVs4ufrq) return -1;
  return kind == FrqTypePmk ? library.ExportPmk(project) : library.ExportMap(project, kind, store);
}

int ProjectFromMap(const std::wstring& wave, FrqType kind, MrqStore* store) {
  return CVsLib().CreateFile(wave, kLowestNote, kSemitones, true, kind, store);
}

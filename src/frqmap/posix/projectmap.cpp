// There is no analysis library here.
#include "frqmap/projectmap.h"

bool CanLibraryOpen(const std::wstring&) {
  return false;
}

int LoadVs4ufrq(FrqMap&, const std::wstring&) {
  return -1;
}

int SaveVs4ufrq(const FrqMap&, const std::wstring&) {
  return -1;
}

int MapFromProject(const std::wstring&, FrqType, MrqStore*) {
  return -1;
}

int ProjectFromMap(const std::wstring&, FrqType, MrqStore*) {
  return -1;
}

#include "check/checkrun.h"

#include <new>

namespace {

// Without memory the check goes on, and the library finds the regions itself or does without.
CheckRecordPtr<CheckRegionRecord> RegionsOf(FrqMap& map) {
  try {
    return MakeCheckRegions(map);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

CheckLibrary::CheckLibrary() : module_(LoadLibraryW(L"checkfrq.dll")) {
  if (!module_) return;
  const FARPROC entry = GetProcAddress(module_.get(), "CheckFrequencyMap");
  entry_ = reinterpret_cast<CheckFrequencyMapEntry>(reinterpret_cast<void*>(entry));
}

CheckOutcome CheckLibrary::Check(const CheckFrqSettings& settings, FrqMap& map, const std::wstring& mapPath) const {
  const auto frames = MakeCheckFrames(map, mapPath);
  if (!frames) return {};
  const auto regions = RegionsOf(map);
  if (entry_(&settings, frames.get(), regions.get()) < 0) return {CheckOutcome::Stopped};
  return {CheckOutcome::Checked, TakeCheckResults(*frames, map)};
}

#include "check/checkrun.h"

#include <iterator>
#include <new>

#include "base/guardedcall.h"
#include "base/narrowpath.h"

namespace {

// Without memory the check goes on, and the library finds the regions itself or does without.
CheckRecordPtr<CheckRegionRecord> RegionsOf(FrqMap& map) {
  try {
    return MakeCheckRegions(map);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

// A path that is cut in the record would name another file: one that does not fit goes by its short form, or not at
// all.
std::wstring RecordPath(const std::wstring& mapPath) {
  constexpr std::size_t kLongest = std::size(CheckFrameRecord{}.MapPath) - 1;
  return mapPath.size() <= kLongest ? mapPath : NarrowForm(mapPath).value_or(L"");
}

}  // namespace

CheckLibrary::CheckLibrary() : module_(LoadLibraryW(L"checkfrq.dll")) {
  if (!module_) return;
  const FARPROC entry = GetProcAddress(module_.get(), "CheckFrequencyMap");
  entry_ = reinterpret_cast<CheckFrequencyMapEntry>(reinterpret_cast<void*>(entry));
}

CheckQuery::CheckQuery(FrqMap& map, const std::wstring& mapPath) : Frames(MakeCheckFrames(map, RecordPath(mapPath))) {
  if (Frames) Regions = RegionsOf(map);
}

// A library that has failed may fail in its end as well.
void CheckLibrary::ModuleTraits::Close(Type module) {
  HasReturned([module] { FreeLibrary(module); });
}

CheckLibrary::Verdict CheckLibrary::Judge(const CheckFrqSettings& settings, const CheckQuery& query) const {
  int result = 0;
  const bool returned = HasReturned([&] { result = entry_(&settings, query.Frames.get(), query.Regions.get()); });
  if (!returned) return Verdict::Failed;
  return result < 0 ? Verdict::Stopped : Verdict::Judged;
}

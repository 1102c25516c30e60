// checkfrq.dll: the rules behind the one entry point that the program looks for.
#include <windows.h>

#include <algorithm>
#include <exception>
#include <iterator>
#include <optional>
#include <string>
#include <type_traits>

#include "base/filesystem.h"
#include "base/systempath.h"
#include "base/wordhash.h"
#include "check/checkrules.h"
#include "check/soundrules.h"
#include "frqmap/frqtype.h"
#include "hearings.h"

namespace {

Hearings* present = nullptr;

// The path of the wave that a map is of, whether it is there or not; empty for a map path that is not a full one.
std::wstring WavePathOf(const CheckFrameRecord& map) {
  const auto* const end = std::find(std::begin(map.MapPath), std::end(map.MapPath), u'\0');
  std::wstring path = WavePathFromMapW(std::wstring(std::begin(map.MapPath), end));
  const bool isFull = path.starts_with(L"\\\\") || (path.size() > 2 && path[1] == L':' && path[2] == L'\\');
  return isFull ? path : std::wstring();
}

// The edition of hearings, told by the file of this very library: another one hears otherwise.
std::uint64_t Edition() {
  HMODULE own = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<const wchar_t*>(&present), &own);
  const auto facts = Disk().FactsOf(ModulePath(own));
  WordHash hash;
  if (facts) hash.Add(static_cast<std::uint64_t>(facts->Size)), hash.Add(static_cast<std::uint64_t>(facts->Written));
  return hash.Value();
}

Hearings& Present() {
  if (!present) present = new Hearings(LocalProgramFolder(L"Heard"), Edition());
  return *present;
}

// Marks the frames by the recording. Gives the number of marked frames; none without a recording that the map is of.
std::optional<std::int32_t> MarkByEar(CheckFrameRecord& frames) {
  const std::wstring path = WavePathOf(frames);
  if (path.empty() || frames.Hop <= 0) return std::nullopt;
  Hearings::Heard heard = Present().Of(path, frames.Hop);
  if (!heard.wave || !IsMapOf(frames, heard.wave->Heard)) return std::nullopt;
  if (heard.wave->Answer && heard.wave->Answer->Map == HashOfMap(frames)) {
    return WriteAnswer(*heard.wave->Answer, frames);
  }
  const auto search = [&]() -> const PitchSearch* {
    if (!heard.search) heard.search = Hearings::SearchOf(path);
    return heard.search.get();
  };
  const std::optional<std::int32_t> count = MarkBySound(frames, heard.wave->Heard, search);
  if (count) Present().Keep(path, *heard.wave, AnswerIn(frames));
  return count;
}

}  // namespace

extern "C" std::int32_t CheckFrequencyMap(const CheckFrqSettings* settings, CheckFrameRecord* frames,
                                          const CheckRegionRecord* regions) {
  if (!AreCheckRecords(settings, frames, regions)) return -1;
  try {
    if (const auto count = MarkByEar(*frames)) return *count;
  } catch (const std::exception&) {
    // Without memory the map is judged without the recording.
  }
  return CheckMap(settings, frames, regions);
}
static_assert(std::is_same_v<decltype(&CheckFrequencyMap), CheckFrequencyMapEntry>);

// When the process ends, its threads have been cut off wherever they were, and nothing of theirs may be touched.
BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* processEnds) {
  if (reason == DLL_PROCESS_DETACH && !processEnds) delete present;
  return TRUE;
}

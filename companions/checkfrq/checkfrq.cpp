// checkfrq.dll: the rules behind the one entry point that the program looks for.
#include <windows.h>

#include <algorithm>
#include <exception>
#include <iterator>
#include <optional>
#include <string_view>
#include <type_traits>

#include "base/filesystem.h"
#include "base/systempath.h"
#include "base/wordhash.h"
#include "check/checkrules.h"
#include "check/soundrules.h"
#include "hearings.h"
#include "recording.h"

namespace {

Hearings* present = nullptr;

std::u16string_view MapPathIn(const CheckFrameRecord& frames) {
  const auto* const end = std::find(std::begin(frames.MapPath), std::end(frames.MapPath), u'\0');
  return {std::begin(frames.MapPath), end};
}

// By the file of this very library: another one hears otherwise.
std::uint64_t Edition() {
  HMODULE own = nullptr;
  wchar_t path[MAX_PATH];
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<const wchar_t*>(&present), &own);
  const DWORD length = GetModuleFileNameW(own, path, MAX_PATH);
  const auto facts = length < MAX_PATH ? Disk().FactsOf(path) : std::nullopt;
  WordHash hash;
  if (facts) hash.Add(static_cast<std::uint64_t>(facts->Size)), hash.Add(static_cast<std::uint64_t>(facts->Written));
  return hash.Value();
}

Hearings& Present() {
  if (!present) present = new Hearings(LocalProgramFolder(L"Heard"), Edition());
  return *present;
}

// None without a recording that the map is of.
std::optional<std::int32_t> MarkByEar(CheckFrameRecord& frames) {
  const std::wstring path = WaveOfMap(MapPathIn(frames));
  if (path.empty() || frames.Hop <= 0) return std::nullopt;
  Hearings::Heard heard = Present().Of(path, frames.Hop);
  if (!heard.wave || !IsMapOf(frames, heard.wave->hearing)) return std::nullopt;
  if (heard.wave->answer && heard.wave->answer->map == HashOfMap(frames)) {
    return WriteAnswer(*heard.wave->answer, frames);
  }
  const auto search = [&]() -> const PitchSearch* {
    if (!heard.search) heard.search = Hearings::SearchOf(path);
    return heard.search.get();
  };
  const std::optional<std::int32_t> count = MarkBySound(frames, heard.wave->hearing, search);
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
    // Without memory it is judged without the recording.
  }
  return CheckMap(settings, frames, regions);
}
static_assert(std::is_same_v<decltype(&CheckFrequencyMap), CheckFrequencyMapEntry>);

// Where the process ends its threads have been cut off wherever they were, and nothing of theirs may be touched.
BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* processEnds) {
  if (reason == DLL_PROCESS_DETACH && !processEnds) delete present;
  return TRUE;
}

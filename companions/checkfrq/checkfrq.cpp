// checkfrq.dll: the rules behind the one entry point that the program looks for.
#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <type_traits>

#include "check/checkrules.h"
#include "check/soundrules.h"
#include "recording.h"

namespace {

std::u16string_view PathIn(const CheckFrameRecord& frames) {
  const auto* const end = std::find(std::begin(frames.MapPath), std::end(frames.MapPath), u'\0');
  return {std::begin(frames.MapPath), end};
}

}  // namespace

extern "C" std::int32_t CheckFrequencyMap(const CheckFrqSettings* settings, CheckFrameRecord* frames,
                                          const CheckRegionRecord* regions) {
  const std::optional<Sound> sound = frames ? RecordingOf(PathIn(*frames)) : std::nullopt;
  if (!sound) return CheckMap(settings, frames, regions);
  return CheckMapBySound(settings, frames, regions, sound->samples, sound->rate);
}
static_assert(std::is_same_v<decltype(&CheckFrequencyMap), CheckFrequencyMapEntry>);

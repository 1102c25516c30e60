// checkfrq.dll: the rules behind the one entry point that the program looks for.
#include <type_traits>

#include "check/checkrules.h"

extern "C" std::int32_t CheckFrequencyMap(const CheckFrqSettings* settings, CheckFrameRecord* frames,
                                          const CheckRegionRecord* regions) {
  return CheckMap(settings, frames, regions);
}
static_assert(std::is_same_v<decltype(&CheckFrequencyMap), CheckFrequencyMapEntry>);

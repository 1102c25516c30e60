// The one type for counts and positions of samples and frames.
//
// Signed, so that the difference of two positions never wraps, and 32 bits wide, as the map files and the
// window messages hold them.
#pragma once

#include <cstdint>

using SampleCount = std::int32_t;

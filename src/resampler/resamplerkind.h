// Telling the family of a resampler by its file name. The family decides the kind of map.
#pragma once

#include <string>

#include "frqmap/frqtype.h"

// The first match counts, without regard to case; any other name, and none, is of the .frq family.
FrqType GetResamplerKind(const std::wstring& path);

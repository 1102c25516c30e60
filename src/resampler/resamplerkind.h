// Which family of resamplers a program belongs to, told by its file name. The family decides the kind of map.
#pragma once

#include <string>

#include "frqmap/frqtype.h"

// Without regard to case, the first match counts; any other name, and none, is of the .frq family.
FrqType GetResamplerKind(const std::wstring& path);

// Conversion of a wave's map from one file kind to another.
#pragma once

#include <string>

#include "frqmap/frqmap.h"

// Whether a conversion can be tried: false for a source map that is there but cannot be read from the disk, and where
// the library that one of both kinds needs cannot be given its path.
bool CanConvertMap(const std::wstring& wave, FrqType source, FrqType target);

// Makes the `target` map of a wave from its `source` map, which stays. 0, also where the wave has no source map; else
// nonzero. `store` serves .mrq on either end and may be null without it.
int ConvertMap(const std::wstring& wave, FrqType source, FrqType target, MrqStore* store);

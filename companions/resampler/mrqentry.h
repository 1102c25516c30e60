// An entry of desc.mrq as we make one: its name there, and its content.
#pragma once

#include <string>

#include "frqmap/frqmap.h"
#include "frqmap/mrqfile.h"

// Unlike a store's, the name keeps a second dot: it is read back under the very key that a store has for the wave.
std::u16string MrqNameOf(const std::wstring& wavePath);

MrqEntry EntryOfMade(const FrqMap& map);

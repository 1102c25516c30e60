// A wave file as one channel of numbers, for who listens to it in the program or in a library that it has loaded.
#pragma once

#include <optional>
#include <string>

#include "voicebank/sound.h"

// None without a wave that can be read whole, and for one that is longer than `mostSeconds` or over 32 MiB: what is
// made of a wave to listen to it takes several times its bytes for a while, in a process of 32 bits. Throws
// std::bad_alloc.
std::optional<Sound> ReadSound(const std::wstring& path, double mostSeconds);

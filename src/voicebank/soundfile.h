// A wave file as one channel of numbers.
#pragma once

#include <optional>
#include <string>

#include "voicebank/sound.h"

// To make a map of it or to render it: whatever its length is. A name that tells no kind of file is taken for a wave's.
// None where it cannot be read whole.
std::optional<Sound> ReadRecording(const std::wstring& path);

// To listen to it. None without a wave that can be read whole, and for one that is longer than `mostSeconds` or over 32
// MiB: what is made of a wave to listen to it takes several times its bytes for a while, in a process of 32 bits.
// Throws std::bad_alloc.
std::optional<Sound> ReadSound(const std::wstring& path, double mostSeconds);

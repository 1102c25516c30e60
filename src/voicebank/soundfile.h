// A wave file as one channel of numbers.
#pragma once

#include <optional>
#include <string>

#include "voicebank/sound.h"

// Reads a recording of any length, to make a map of it or to render it. A name that tells no kind of file is taken for
// a wave's. None where it cannot be read whole.
std::optional<Sound> ReadRecording(const std::wstring& path);

// Reads a wave to analyse its sound. None for a wave that cannot be read whole, or is longer than `mostSeconds` or over
// 32 MiB: an analysis takes several times the bytes of the wave for a while, in a process of 32 bits. Throws
// std::bad_alloc.
std::optional<Sound> ReadSound(const std::wstring& path, double mostSeconds);

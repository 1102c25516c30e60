// The recording that a map is of, as the check library finds it: beside the map.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "voicebank/sound.h"

// The path of the wave, whether it is there or not; empty for a map path that is not a full one.
std::wstring WaveOfMap(std::u16string_view mapPath);

// None without a wave that can be read whole, and for one that is longer than `mostSeconds` or over 32 MiB.
std::optional<Sound> ReadRecording(const std::wstring& wavePath, double mostSeconds);

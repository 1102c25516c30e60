// The recording that a map is of, as the check library finds it: beside the map, read anew for each map.
#pragma once

#include <optional>
#include <string_view>

#include "companions/resampler/sound.h"

// None without one that can be read whole, for one of more than ten minutes or 64 MiB, for a map path that is not a
// full one, and without memory.
std::optional<Sound> RecordingOf(std::u16string_view mapPath) noexcept;

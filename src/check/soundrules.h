// The rules by which the check library that comes along marks frames where it has the recording: by the pitch that is
// heard at each frame. A contour alone cannot tell an octave that was sung from one that an analysis made.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "check/checkrecords.h"
#include "check/hearing.h"

// Whether a map can be of the recording: its hop is that of the hearing and its length that of the sound.
bool IsMapOf(const CheckFrameRecord& frames, const Hearing& hearing);

// Marks the frames of one map of the recording. Gives the number of marked frames. `search` is asked for the recording
// where the map has another pitch than the one that is heard, which most maps have nowhere; none if it has none then.
std::optional<std::int32_t> MarkBySound(CheckFrameRecord& frames, const Hearing& hearing,
                                        const std::function<const PitchSearch*()>& search);

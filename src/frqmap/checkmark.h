// Why a frame is marked, as the check library that comes along says it and the table tells it.
//
// Another library may mark with any number but 0: the reasons have numbers that it is not likely to take, so that no
// reason is told that it did not mean.
#pragma once

#include <cstdint>

enum CheckMark : std::int32_t {
  CheckMarkNone = 0,
  CheckMarkFactor = 0x6D01,  // pitch by an octave, a twelfth or a fifth off; the right one is suggested
  CheckMarkNoise,            // noise or silence taken for pitch: what is heard, the pitch around it or none is suggested
  CheckMarkGap,              // no pitch within a steady tone: what is heard, or the pitch of its ends is suggested
  CheckMarkFar,              // too far from the pitch of the syllable: what is heard is suggested, or nothing
};

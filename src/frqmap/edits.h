// What an edit makes of a frequency: the limits of the kind at work, and the texts that the editor shows and reads.
//
// Apart from the editor window, which only moves these values between its boxes and the map.
#pragma once

#include <string>
#include <string_view>

#include "frqmap/frqtype.h"

// The frequency [Hz] that an edit may set: not above the highest of `workingKind`, and FrqNoPitch where `hz` is under
// its lowest or no number. `singlePrecision` rounds to a 32-bit float first, for maps whose file holds no more.
double ClampFrequency(double hz, FrqType workingKind, bool singlePrecision);

// Text of the boxes: eight decimals, empty for a frequency that is no pitch.
std::wstring FrequencyText(double hz);

// Text of a row of the frame list: as in the boxes, but "----" for a frame without pitch.
std::wstring FrameRowText(double hz);

// The number that a text begins with, after blanks: sign, digits with a ".", exponent. What follows is not looked at;
// 0.0 where there is no such number. Words and hexadecimal digits are none. No locale has a say.
double ParseFrequency(std::wstring_view text);

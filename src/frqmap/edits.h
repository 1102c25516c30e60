// Edits of frequencies: the limits of the kind at work, the texts that the editor shows and reads, and the edits of
// many frames at once.
//
// It stands apart from the editor window, which only moves these values between its boxes and the map.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frqmap/frqmap.h"
#include "frqmap/frqtype.h"

// The frequency [Hz] that an edit may set: not above the highest of `workingKind`, and FrqNoPitch where `hz` is under
// its lowest or no number. `singlePrecision` rounds to a 32-bit float first, for maps whose file holds no more.
double ClampFrequency(double hz, FrqType workingKind, bool singlePrecision);

// Text of the boxes: eight decimals, empty for a frequency that is no pitch.
std::wstring FrequencyText(double hz);

// Text of a row of the frame list: as in the boxes, but "----" for a frame without pitch.
std::wstring FrameRowText(double hz);

// Writes the text of a row into a buffer of the caller's, with a zero at its end: a list of tens of thousands of rows
// is filled several times an edit, and strings would make up a tenth of that time.
using FrameRowBuffer = std::array<wchar_t, 324>;
const wchar_t* WriteFrameRowText(double hz, FrameRowBuffer& buffer);

// The number that a text begins with, after blanks: sign, digits with a ".", exponent. All behind it is passed over;
// 0.0 where there is no such number. Words and hexadecimal digits are none. No locale has a say.
double ParseFrequency(std::wstring_view text);

// Below, `rows` are indices of frames in ascending order; one that no frame of the map has is passed over. The edits
// give the rows that they have set.

// Multiplies the frequencies. A frame without pitch stays so, and a product under the lowest frequency becomes one:
// the factor 0 takes the pitch away.
std::vector<int> ScaleFrames(FrqMap& map, std::span<const int> rows, double factor, FrqType workingKind);

// Sets every frame between the first and the last row to a straight line. Its step is the difference of the two ends
// by the number of rows less one, not by their distance: rows with gaps overshoot the end. Users rely on it. Nothing
// for fewer than two rows.
std::vector<int> InterpolateFrames(FrqMap& map, std::span<const int> rows, FrqType workingKind);

// The arithmetic mean [Hz] of the frames with pitch, and so no mean in cents; none without such a frame.
std::optional<double> MeanFrequency(const FrqMap& map, std::span<const int> rows);

// Takes the frequencies of the rows back from `saved`. Gives the number of other frames, up to `rowCount`, that still
// differ.
int RestoreFrames(FrqMap& map, const FrqMap& saved, std::span<const int> rows, int rowCount);

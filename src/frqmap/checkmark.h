// Why a frame is marked, as the check library that comes along says it and the table tells it.
//
// Another library may mark with any number but 0: the reasons have numbers that it is not likely to take, so that no
// reason is told that it did not mean.
#pragma once

#include <cmath>
#include <cstdint>

enum CheckMark : std::int32_t {
  CheckMarkNone = 0,
  CheckMarkFactor = 0x6D01,  // pitch by a fifth or two octaves off; the right one is suggested, as for all factors
  CheckMarkNoise,            // noise or silence taken for pitch: what is heard, the pitch around it or none is suggested
  CheckMarkGap,              // no pitch within a steady tone: what is heard, or the pitch of its ends is suggested
  CheckMarkFar,              // too far from the pitch of the syllable: what is heard is suggested, or nothing
  CheckMarkOctaveHigh,       // an octave too high
  CheckMarkOctaveLow,
  CheckMarkTwelfth,  // a twelfth, too high or too low
  CheckMarkLast = CheckMarkTwelfth,
};

// The mark of a frame whose pitch is `ratio` times the right one.
inline CheckMark MarkOfFactor(double ratio) {
  constexpr double kTolerance = 0.2;  // [octaves]
  const double octaves = std::log2(ratio), twelfth = std::log2(3.0);
  if (std::fabs(octaves - 1.0) < kTolerance) return CheckMarkOctaveHigh;
  if (std::fabs(octaves + 1.0) < kTolerance) return CheckMarkOctaveLow;
  return std::fabs(std::fabs(octaves) - twelfth) < kTolerance ? CheckMarkTwelfth : CheckMarkFactor;
}

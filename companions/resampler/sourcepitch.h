// The pitch of a recording as its map has it, at any place and not only at the frames. The marks of the periods and the
// notes both go by it.
#pragma once

#include <algorithm>
#include <cmath>

#include "frqmap/frqmap.h"

class SourcePitch {
 public:
  SourcePitch(const FrqMap& map, int rate) : map_(map), highest_(rate / 4.0), average_(map.ShownAverage()) {
    // A damaged file may say anything.
    if (!IsPitch(average_)) average_ = map.ComputeAverage(2);
  }

  // The pitch at a sample, on a straight line from frame to frame where both have one: a glide is no staircase. 0 where
  // there is no pitch, and for a frequency that no recording of this rate can hold.
  double HzAt(double sample) const {
    const auto position = static_cast<SampleCount>(sample);
    const double hz = map_.FrequencyAt(position);
    if (!IsPitch(hz)) return 0.0;
    const SampleCount frame = map_.FrameAt(position).value_or(0);
    const SampleCount next = map_.PositionOf(frame + 1);
    const double nextHz = next < 0 ? 0.0 : map_.FrequencyAt(next);
    // An octave, or an error as large, is a jump and not a glide.
    if (!IsPitch(nextHz) || std::max(hz, nextHz) > 1.5 * std::min(hz, nextHz)) return hz;
    return std::lerp(hz, nextHz, std::clamp((sample - map_.PositionOf(frame)) / map_.Hop, 0.0, 1.0));
  }
  double Average() const { return average_; }

 private:
  bool IsPitch(double hz) const { return hz > FrqNoPitch && hz < highest_; }

  const FrqMap& map_;
  double highest_;
  double average_;
};

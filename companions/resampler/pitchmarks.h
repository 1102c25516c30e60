// PitchMarks: the places of the periods in a recording's voiced stretches, marked at the same moment of each. They
// follow the map, and within it the sound, because the map's frames are coarser than a period.
#pragma once

#include <cstddef>
#include <vector>

#include "sourcepitch.h"

class PitchMarks {
 public:
  // Neither `samples` nor `pitch` is kept.
  PitchMarks(const std::vector<float>& samples, int rate, const SourcePitch& pitch);

  // The nearest mark to a place, between two samples as a rule; that place itself if there are no marks.
  double Nearest(double sample) const;

 private:
  std::vector<double> marks_;  // ascending
};

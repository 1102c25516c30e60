// The pieces of a recording that become a note, and the place of each in the note. To join them is the renderer's part.
#pragma once

#include <vector>

#include "arguments.h"
#include "frqmap/frqmap.h"

struct Grain {
  double centre;  // in the note, in rendered samples, between two of them as a rule
  double source;  // its middle in the recording, in source samples
  double period;  // in rendered samples; 0 where there is no pitch
  double gain;    // negative where the sound is turned over
  bool isReversed;
};

// Distance of the grains where there is no pitch and nothing is stretched [s].
inline constexpr double kUnvoicedSeconds = 0.005;

// The grains of a note by ascending centre, up to the end of the note or of the recording's part. `samples` are those
// of a recording of `rate`, the note is one of kRenderedRate.
std::vector<Grain> LayOutGrains(const std::vector<float>& samples, int rate, const FrqMap& map,
                                const NoteToRender& note);

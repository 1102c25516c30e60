// The pitch of a recorded voice, frame by frame: what a frequency map is made from.
//
// Candidates come from the normalised cross-correlation of the sound with itself (Talkin 1995, "A robust algorithm for
// pitch tracking (RAPT)"). The one path through them that costs least is taken, with the costs of Boersma 1993
// ("Accurate short-term analysis of the fundamental frequency and the harmonics-to-noise ratio of a sampled sound").
#pragma once

#include <span>
#include <vector>

#include "base/sample.h"

// The range that is searched [Hz].
inline constexpr double kLowestVoiceHz = 60.0;
inline constexpr double kHighestVoiceHz = 1200.0;

// The pitch [Hz] at the samples 0, `hop`, 2 * `hop` and so on, FrqNoPitch where there is none: as many as there are
// begun hops. `samples` are one channel of any scale, `hop` is positive. Nothing has a pitch at a rate under 4 kHz.
std::vector<double> AnalysePitch(std::span<const float> samples, double sampleRate, SampleCount hop);

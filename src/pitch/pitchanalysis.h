// The pitch of a recorded voice, frame by frame: frequency maps are made from it, and the check weighs maps by it.
//
// Candidates come from the normalised cross-correlation of the sound with itself (Talkin 1995, "A robust algorithm for
// pitch tracking (RAPT)") and from its spectrum (candidatesearch.h); how likely each is has been learned
// (candidatescore.h). The one path through them that costs least is taken, with the costs of Boersma 1993 ("Accurate
// short-term analysis of the fundamental frequency and the harmonics-to-noise ratio of a sampled sound").
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "base/sample.h"
#include "pitch/pitchsignals.h"

struct PitchCandidate {
  double logHz;     // octaves over 1 Hz
  double strength;  // how much speaks for it, up to about 1
};

// The pitches that the sound bears out at one frame.
struct PitchFrame {
  double voiceless = 0.0;               // the strength of there being no voice; over 1 in what is nearly silent
  std::vector<PitchCandidate> pitches;  // the strongest one first
};

// The range in which candidates are looked for.
struct PitchConstraint {
  double lowestHz = kLowestVoiceHz, highestHz = kHighestVoiceHz;
  // If not empty, a pitch for each frame that is asked for, from which candidates lie no farther than `cents`. A frame
  // without one there, FrqNoPitch or less, has no candidates.
  std::span<const double> line = {};
  double cents = 0.0;
};

// A recording made ready for questions about its pitch. Questions change nothing in it, so that any thread may ask.
class PitchSearch {
 public:
  // `samples` are one channel of any scale; they are copied. Nothing has a pitch at a rate under 4 kHz.
  PitchSearch(std::span<const float> samples, double sampleRate);
  ~PitchSearch();
  PitchSearch(const PitchSearch&) = delete;
  PitchSearch& operator=(const PitchSearch&) = delete;

  // The candidates at the samples `first` * `hop`, (`first` + 1) * `hop` and so on. `hop` is positive. A frame beyond
  // the sound is silent.
  std::vector<PitchFrame> Candidates(SampleCount hop, SampleCount first, SampleCount count,
                                     const PitchConstraint& constraint = {}) const;

  // How well the sound around a sample repeats itself after a period within `cents` of that of `hz`, whether it is a
  // candidate or not: -1 to 1. 0 outside the range that is searched.
  double SupportAt(SampleCount sample, double hz, double cents) const;

 private:
  const double rate_;
  std::unique_ptr<const PitchSignals> signals_;  // null where there is nothing to search
};

// The frequency rounded to a millionth of a hertz: the functions of two systems differ in the last bit, and a map is to
// have the same bytes wherever it was made.
double RoundedHz(double hz);

// The pitch [Hz] of each frame, FrqNoPitch for none, on the path through their candidates that costs least. `seconds`
// lie between two frames. Only the first ten candidates of a frame count. Within a voice the pitches are smoothed over
// some milliseconds, and rounded.
std::vector<double> BestPitchPath(std::span<const PitchFrame> frames, double seconds);

// The pitch [Hz] at the samples 0, `hop`, 2 * `hop` and so on, FrqNoPitch where there is none: as many as there are
// begun hops. `samples` are one channel of any scale, `hop` is positive.
std::vector<double> AnalysePitch(std::span<const float> samples, double sampleRate, SampleCount hop);

// SoundPitches: the pitches that a recording bears out at the frames of its map, sought where they are asked for and
// kept.
//
// It stands apart from PitchSearch, which keeps no answer: the pencil and its dots ask for the same frames with every
// move of the mouse. Frames are sought in blocks. Of a long recording only a stretch around the last question is made
// ready, so that the first answer does not wait for all of it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "base/sample.h"
#include "pitch/pitchanalysis.h"
#include "voicebank/sound.h"

// Whether a map can be of a recording: their lengths are near each other, and the hop is one that a map may have.
bool CanBeMapOf(std::int64_t samples, double sampleRate, SampleCount hop, SampleCount frameCount);

// The candidates that the recording bears out, the strongest first: one with less than half the strength of the
// strongest is chance.
std::span<const PitchCandidate> BorneOut(const PitchFrame& frame);

class SoundPitches {
 public:
  // `hop` is positive.
  SoundPitches(Sound sound, SampleCount hop);

  SampleCount Hop() const { return hop_; }
  double SampleRate() const { return rate_; }
  bool CanBeOf(SampleCount hop, SampleCount frameCount) const;

  // Seeks the candidates of these frames, of which some may be known. True if any was not.
  bool Prepare(SampleCount first, SampleCount count);
  // The candidates of a frame that was sought before; null for another. The pointer holds until something else is
  // sought.
  const PitchFrame* Known(SampleCount frame) const;
  // The candidates of a frame, sought if need be.
  const PitchFrame& At(SampleCount frame);

  // The pitch [Hz] nearest to `hz` that is borne out at a frame, within three semitones; of several near ones a strong
  // one may win over a nearer one. None where there is none.
  std::optional<double> NearestAt(SampleCount frame, double hz);

  // The candidates under a constraint, which are not kept.
  std::vector<PitchFrame> Candidates(SampleCount first, SampleCount count, const PitchConstraint& constraint);

 private:
  SampleCount Count() const;
  void MakeReady(SampleCount first, SampleCount last);

  const SampleCount hop_;
  const double rate_;
  const std::int64_t size_;                                // samples of the recording
  std::vector<float> samples_;                             // of a long one, else none
  std::optional<PitchSearch> search_;                      // of the stretch
  SampleCount first_ = 0, last_ = -1;                      // frames of the stretch
  SampleCount origin_ = 0;                                 // the frame that search_ begins with
  std::map<SampleCount, std::vector<PitchFrame>> blocks_;  // by their first frame
};

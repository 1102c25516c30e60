// The likeliest true course of a pitch contour that may hold errors of the analysis.
//
// An analysis errs by octaves, twelfths and fifths, or takes noise for a voice, and either shows as a jump that no
// voice makes. It is settled over the whole contour at once, by dynamic programming over the factor of each frame
// (after the path finder of Boersma 1993), whether a run is wrong or its surroundings are.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

// The factors by which a frame may be off [semitones to add]: none, x2, x1/2, x3, x1/3, x3/2, x2/3.
inline constexpr std::array<double, 7> kPitchShifts = {0.0, -12.0, 12.0, -19.01955, 19.01955, -7.01955, 7.01955};
inline constexpr std::size_t kOctaveShifts = 5;  // the first of them, which are no fifths

enum class PathState : std::uint8_t { NoPitch, Pitch, Noise };

struct PathFrame {
  // In:
  double Note = 0.0;       // note number; a frame whose number is not finite is noise
  bool Pitched = false;    // the frame claims a pitch
  double StepLimit = 1.0;  // [semitones] a step between neighbours that costs nothing
  double Pull = 0.0;       // how much the notes of the settings count, per semitone off
  bool Soft = false;       // at a level where pitch is easily made of noise
  // Out:
  PathState State = PathState::NoPitch;
  std::uint8_t Shift = 0;  // of kPitchShifts, for a Pitch

  double TrueNote() const { return TrueNoteBy(Shift); }
  double TrueNoteBy(std::size_t by) const { return Note + kPitchShifts[by]; }
};

// Finds state and shift of every frame. `lowNote` to `highNote` is where the voice is said to be.
void FindPitchPath(std::vector<PathFrame>& frames, double lowNote, double highNote);

// The frequency map of one wave file: pitch and level of the voice, frame by frame.
//
// A map has no lock and knows no window. Who may touch it, and when, is the business of its owner, the document.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/sample.h"
#include "frqmap/frqframes.h"
#include "frqmap/frqtype.h"
#include "frqmap/vsproject.h"

class MrqStore;

class FrqMap {
 public:
  bool Loaded = false;          // a Load, or a copy of a loaded map
  std::array<char, 8> Magic{};  // as read, or as set by Create
  std::array<char, 16> Tag{};   // the 16-byte field of a FREQ0003 file as read; never written back
  double Average = 0.0;         // [Hz] as the file says, or as computed on saving
  SampleCount Hop = 1;          // samples per frame; whatever a file held, 0 and less included
  SampleCount FrameCount = 0;   // size of Frames
  FrqFrames Frames;
  double MinFrequency = 0.0;      // [Hz] least pitch, see UpdateFrequencyRange
  double MaxFrequency = 0.0;      // [Hz] greatest pitch
  bool DerivedAverage = false;    // the file kind holds no average: it is computed when needed
  bool Modified = false;          // a frequency was changed since the load
  VsProject Project;              // the data of a .vs4ufrq file
  bool HasProject = false;        // Project holds such data: an edit goes into it as well
  FrqType Kind = FrqTypeUnknown;  // kind of the file that was loaded
  bool HasMarks = false;          // at least one frame has a Mark
  bool SinglePrecision = false;   // the file holds 32-bit floats: round an edited frequency before it is set

  // Back to the state of a new map.
  void Clear();

  // Reads the map file; its extension tells the kind. 0, or nonzero with the map cleared. `store` serves .mrq alone and
  // may be null.
  int Load(const std::wstring& path, MrqStore* store);

  // Writes the map as the kind of the path's extension, which may differ from the map's own. 0, or nonzero with the
  // file as it was if nothing could be opened. A map without frames is refused (-1) and touches no file. Renews
  // Average where it is derived, and changes nothing else.
  int Save(const std::wstring& path, MrqStore* store);

  // An empty map of `frameCount` default frames, to be filled by SetFrequency and saved. Not Loaded. Result 0.
  int Create(SampleCount frameCount, FrqType kind);

  // Copy; the destination's frequency range is computed anew, also for an empty map. Result 0.
  int CopyTo(FrqMap& destination) const;

  // Both loaded, with the same average, hop and frames (Frequency and Amplitude). A NaN equals nothing.
  bool Equals(const FrqMap& other) const;

  // Frame that holds a sample position; none for a map whose hop is 0 or less. Not limited to the frames there are.
  // The only place that divides by Hop.
  std::optional<SampleCount> FrameAt(SampleCount position) const;

  // Sample position of a frame; -1 where none leads to it: for a hop of 0 or less, or beyond 32 bits.
  SampleCount PositionOf(SampleCount frame) const;

  // Frequency [Hz] of the frame at a sample position, FrqNoPitch outside the map.
  double FrequencyAt(SampleCount position) const;

  // Sets the frame at a sample position; 55 Hz or less, or no number, makes it one without pitch. Outside the map
  // nothing happens.
  void SetFrequency(SampleCount position, double hz);

  // Selects all frames between two sample positions, both ends included and limited to the map.
  void SelectRange(SampleCount first, SampleCount second, bool clearOthers);
  void ClearSelection();

  // MinFrequency and MaxFrequency over the frames with pitch; 999999 and 55 without any.
  void UpdateFrequencyRange();

  // Average pitch [Hz], taken in whole cents: of all frames, or, with a window in semitones, of those closer than that
  // to the average of all. Middle C where there is no frame to go by.
  double ComputeAverage(int windowSemitones) const;

  // The average to show: computed within two semitones where the file kind holds none, else the stored one.
  double ShownAverage() const;

  // Finds the stretches that hold voice, by their level and by the pitch that touches them: for each frame whether it
  // is in one.
  std::vector<bool> ComputeSoundRegions() const;

  // Ends the marks of the run at a sample position, or all of them for a negative position. With `apply` a frame takes
  // the frequency that was suggested for it, and one without a suggestion stays marked; Modified is set only if a
  // frame took one. Without `apply` no frequency changes.
  void ApplyMarks(SampleCount position, bool apply);

  // Sample position of the nearest marked frame before or after the run of marks at a position; a negative position
  // stands outside the map, at the end that the search begins from. -1 if there is none.
  SampleCount FindNextMark(SampleCount position, bool forward) const;

  // Sample positions of the first and the last frame in the run of marks at a position, and 0. -1 without a mark there,
  // with -1 in both; outside the map nothing is written.
  int GetMarkRange(SampleCount position, SampleCount& first, SampleCount& last) const;
};

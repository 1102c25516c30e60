// From magnitudes to what a cell of the picture shows: the band of a note, its level, the level's intensity.
//
// An intensity is a power and some integers. The power of a level matters only for the step that it falls into, so the
// steps of all notes of an entry
// are found once, kept in a byte each (SpectrumSteps), and turned to intensities of a brightness by a table
// (IntensityTable). Neither scrolling nor a change of brightness computes a level again.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "frqctrl/spectrum.h"

// Edges in bins, not whole, from 0.0 to below 1024.0.
struct NoteBand {
  double LowBin;
  double HighBin;
};

// Appends a band for each note from `lowNote` to `highNote`: half a semitone to both sides, times 3 / pi. That factor
// (about 0.955) lifts a partial by 0.8 of a semitone, into the row above its note; it is how users know the picture.
// `sampleRate`: [Hz], also 0, for which all edges are at the limit.
void BuildNoteBands(int lowNote, int highNote, std::uint32_t sampleRate, std::vector<NoteBand>& bands);

// The mean magnitude of a band, with interpolated edges. Bin 1024, which a block does not have, counts as 0.0. Odd on
// purpose: a band within one bin counts that bin's ends twice; one without a width has its magnitude; one whose upper
// edge was limited to below its lower one has the level 0.0.
double BandLevel(const NoteBand& band, const double* magnitudes);

// trunc(level^0.4 * 512), at most 255: all that an intensity takes from a level. A level below 0.0, or no number,
// counts as 0.0.
std::uint8_t LevelToStep(double level);

// The intensities of all steps at one brightness, from -5, the brightest, to 3; at any other they are the steps plus
// 128. Beyond the step 154 any intensity of those nine is 255, so that no level needs a higher step than there is.
class IntensityTable {
 public:
  explicit IntensityTable(int brightness);

  std::uint8_t OfStep(std::uint8_t step) const { return intensities_[step]; }

 private:
  std::array<std::uint8_t, 256> intensities_;
};

// Of one level by itself, for who looks at a picture from outside; a picture goes by steps and a table.
inline int LevelToIntensity(double level, int brightness) {
  return IntensityTable(brightness).OfStep(LevelToStep(level));
}

// The steps of all notes in the entries of one table, found for an entry when it is first asked for. It is to be made
// anew whenever the table is; about 120 bytes an entry.
class SpectrumSteps {
 public:
  // No row of the table is lower: before the first map the scroll bar reaches down to note 19, and the view shows half a
  // row below.
  static constexpr int LowestNote = 18;

  SpectrumSteps(const SpectrumTable& table, std::uint32_t sampleRate);

  // The steps of the notes from LowestNote on, NoteCount() of them. All notes above have the step of the last: their
  // bands are at the limit. `entry` is below the size of the table.
  const std::uint8_t* Of(std::size_t entry);
  int NoteCount() const { return static_cast<int>(bands_.size()); }

  // The place among them of a note's step; the note is not below LowestNote.
  int IndexOf(int note) const;

 private:
  const SpectrumTable& table_;
  std::vector<NoteBand> bands_;
  std::vector<std::uint8_t> steps_;  // NoteCount() an entry
  std::vector<bool> known_;
};

// The entry that a column shows, of a map with `hop` samples a column: trunc(column * hop / 512 + 0.5). -1 for none of
// `entryCount`, and for a hop that makes no sense.
std::int64_t SpectrumEntryOfColumn(std::int64_t column, double hop, std::size_t entryCount);

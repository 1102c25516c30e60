// What of a map its file holds and an edit can change: enough to tell whether the map is saved.
//
// Levels and names are no part of it, since no edit touches them. The points of a project are: their pitch is cut to
// whole cents, so that a frequency set to what it was can make another one.
#pragma once

#include <cstdint>
#include <vector>

#include "document/pointvalue.h"
#include "frqmap/frqmap.h"

class MapImage {
 public:
  // Throws std::bad_alloc.
  explicit MapImage(const FrqMap& map);

  // Bit for bit; the average counts only where the file kind holds one.
  bool IsOf(const FrqMap& map) const;
  // But for what a kind of file rounds away: whole periods, cents or single precision. Frequencies may be half a
  // semitone apart.
  bool IsNearly(const FrqMap& map) const;

 private:
  SampleCount hop_;
  double average_;
  std::vector<double> frequencies_;
  std::vector<PointValue> points_;
};

// A number for that image, to tell whether a file has come to hold another one; never 0. Kinds that round give another
// one for a map that they have just saved.
std::uint64_t ImageHash(const FrqMap& map);

// The same of two maps in memory.
bool HaveSameImage(const FrqMap& a, const FrqMap& b);

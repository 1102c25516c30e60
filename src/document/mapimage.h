// MapImage: the part of a map that its file holds and an edit can change, which tells whether the map is saved.
//
// Levels and names are no part of it, since no edit touches them. The points of a project are: their pitch is cut to
// whole cents, so that setting a frequency to its own value can change it.
#pragma once

#include <cstdint>
#include <vector>

#include "document/pointvalue.h"
#include "frqmap/frqmap.h"

class MapImage {
 public:
  // Throws std::bad_alloc.
  explicit MapImage(const FrqMap& map);

  // Whether the image is that of a map, bit for bit; the average counts only where the file kind holds one.
  bool IsOf(const FrqMap& map) const;
  // Whether the image is that of a map except for the rounding of its file kind: to whole periods, cents or single
  // precision. Frequencies may be half a semitone apart.
  bool IsNearly(const FrqMap& map) const;

 private:
  SampleCount hop_;
  double average_;
  std::vector<double> frequencies_;
  std::vector<PointValue> points_;
};

// A hash of a map's image, by which it is found whether a file has come to hold another one; never 0. For kinds that
// round, the hash of a map differs from that of the file it was just saved to.
std::uint64_t ImageHash(const FrqMap& map);

// Whether two maps in memory have the same image.
bool HaveSameImage(const FrqMap& a, const FrqMap& b);

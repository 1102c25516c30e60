// A curve taken from the frames of one map and laid over those of another, by time, so that the two may differ in hop.
//
// Apart from the edits of single frames (edits.h): here frames are made anew from rows that come from elsewhere.
#pragma once

#include <span>
#include <vector>

#include "frqmap/curvetext.h"
#include "frqmap/frqmap.h"

// Below, `frames` are indices in ascending order; those that no sample position leads to are passed over, as in a map
// whose hop is 0 or less.

std::vector<CurveRow> CurveOf(const FrqMap& map, std::span<const int> frames);

// How many rows can matter to a map: one a sample, of some minute and a half at most.
std::size_t MostCurveRows(const FrqMap& map);

enum class PasteAs {
  Curve,
  // The course of the pitch alone: the median of the rows comes to stand on the key of the map, or, where it has none,
  // on the median of the frames that are pasted over.
  Shape,
};

// Sets those of the frames to which the rows come, the first row at the first frame, within the limits of the kind at
// work. Between two rows with pitch the pitch goes straight in cents; beside one without, the nearer row counts. The
// frames that were set.
std::vector<int> PasteRows(FrqMap& map, std::span<const int> frames, std::span<const CurveRow> rows, PasteAs as,
                           FrqType workingKind);

// A curve taken from the frames of one map and laid over those of another, by time, so that the two may differ in hop.
//
// It stands apart from the edits of single frames (edits.h), because frames are made here from rows of elsewhere.
#pragma once

#include <span>
#include <vector>

#include "frqmap/curvetext.h"
#include "frqmap/frqmap.h"

// Below, `frames` are indices in ascending order; those that no sample position leads to are passed over, as in a map
// whose hop is 0 or less.

std::vector<CurveRow> CurveOf(const FrqMap& map, std::span<const int> frames);

// The number of rows that can matter to a map: one a sample, for some minute and a half at most.
std::size_t MostCurveRows(const FrqMap& map);

enum class PasteAs {
  Curve,
  // The course of the pitch alone: the median of the rows comes to stand on the key of the map, or, where it has none,
  // on the median of the frames that are pasted over.
  Shape,
};

// Lays the rows over the frames, the first row at the first frame, within the limits of the kind at work; frames beyond
// the last row stay. Between two rows with pitch the pitch goes straight in cents; beside one without, the nearer row
// counts. Gives the frames that were set.
std::vector<int> PasteRows(FrqMap& map, std::span<const int> frames, std::span<const CurveRow> rows, PasteAs as,
                           FrqType workingKind);

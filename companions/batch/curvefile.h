// Curves of maps as they go out into files of other programs and come in again: points in time with pitch and level.
//
// The formats themselves (curvecsv.h, pitchtier.h) know no map. The values that a map cannot take of a curve are told
// beforehand.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "batch/curvefault.h"
#include "frqmap/frqmap.h"

struct CurvePoint {
  double Seconds = 0.0;         // from the beginning of the sound
  double Hz = 0.0;              // 0 where there is no pitch; any frequency otherwise, also one that no map holds
  std::optional<double> Level;  // in units of 16-bit samples; none where nothing is told

  bool operator==(const CurvePoint&) const = default;
};

// The points of a file in ascending time, or the fault for which there are none.
struct CurveReading {
  std::vector<CurvePoint> Points;
  CurveFault Fault;
};

// A point for each frame, at the frame's beginning; none for a map whose frames have no place in time.
std::vector<CurvePoint> CurvePointsOf(const FrqMap& map);

// The end of a map [s], behind its last frame.
double SecondsOf(const FrqMap& map);

// Whether the files of a kind hold levels; for others the wave stands in.
bool HoldsLevels(FrqType kind);

// The values of a curve that are lost in a map of a kind.
struct LostValues {
  std::size_t TooLow = 0;   // pitches under the lowest, which become no pitch
  std::size_t TooHigh = 0;  // pitches above the highest, which are taken down to it
  std::size_t Levels = 0;   // levels that the kind does not hold
  std::size_t Beyond = 0;   // points behind the end of the map

  bool Any() const { return TooLow + TooHigh + Levels + Beyond > 0; }
  bool operator==(const LostValues&) const = default;
};
LostValues LostIn(const FrqMap& map, std::span<const CurvePoint> points, FrqType kind);

// Lays points over the frames of a map by time, pitch and, where the kind holds them, levels. Frames before the first
// point and behind the last one stay as they are. Gives the number of frames that were set.
std::size_t LayOver(FrqMap& map, std::span<const CurvePoint> points, FrqType kind);

// A map for points where there is none, with frames of 256 samples: `frames` of them, or as many as reach the last
// point. Its key is the average of its pitches. None for points that are further than a map can reach.
std::optional<FrqMap> MapOfPoints(std::span<const CurvePoint> points, FrqType kind, SampleCount frames = 0);

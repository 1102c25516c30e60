// PointValue: the part of a control point of a .vs4ufrq project that an edit sets; other maps have no such points.
//
// It stands apart from steps and images, because both keep it.
#pragma once

#include <cstdint>
#include <span>

#include "document/samebits.h"
#include "frqmap/frqmap.h"

struct PointValue {
  std::int32_t Pitch = 0;
  std::int32_t HasPitch = 0;
  double Dynamics = 0.0;
};

inline PointValue ValueOf(const VsControlPoint& point) {
  return {point.Pitch, point.HasPitch, point.Dynamics};
}

inline bool SamePoint(const PointValue& a, const PointValue& b) {
  return a.Pitch == b.Pitch && a.HasPitch == b.HasPitch && SameBits(a.Dynamics, b.Dynamics);
}

inline std::span<const VsControlPoint> PointsOf(const FrqMap& map) {
  return map.HasProject ? map.Project.Points() : std::span<const VsControlPoint>();
}

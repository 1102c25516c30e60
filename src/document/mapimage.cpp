#include "document/mapimage.h"

#include <algorithm>

#include "base/wordhash.h"
#include "document/samebits.h"

MapImage::MapImage(const FrqMap& map) : hop_(map.Hop), average_(map.Average), frequencies_(map.Frames.size()) {
  std::ranges::transform(map.Frames, frequencies_.begin(), &FrqFrame::Frequency);
  for (const VsControlPoint& point : PointsOf(map)) points_.push_back(ValueOf(point));
}

bool MapImage::IsOf(const FrqMap& map) const {
  if (!map.Loaded || map.Hop != hop_ || (!map.DerivedAverage && !SameBits(map.Average, average_))) return false;
  return std::ranges::equal(map.Frames, frequencies_, SameBits, &FrqFrame::Frequency) &&
         std::ranges::equal(PointsOf(map), points_, SamePoint, ValueOf);
}

bool MapImage::IsNearly(const FrqMap& map) const {
  constexpr double kHalfSemitone = 1.0293;
  const auto near = [](double a, double b) {
    const bool voiced = a > FrqNoPitch;
    return voiced == (b > FrqNoPitch) && (!voiced || (a < b * kHalfSemitone && b < a * kHalfSemitone));
  };
  return map.Loaded && map.Hop == hop_ && std::ranges::equal(map.Frames, frequencies_, near, &FrqFrame::Frequency);
}

std::uint64_t ImageHash(const FrqMap& map) {
  WordHash hash(static_cast<std::uint32_t>(map.Hop));
  if (!map.DerivedAverage) hash.Add(map.Average);
  hash.Add(std::uint64_t{map.Frames.size()});
  for (const FrqFrame& frame : map.Frames) hash.Add(frame.Frequency);
  for (const VsControlPoint& point : PointsOf(map)) {
    hash.Add(std::uint64_t{static_cast<std::uint32_t>(point.Pitch)} << 32 | static_cast<std::uint32_t>(point.HasPitch));
    hash.Add(point.Dynamics);
  }
  return hash.Value();
}

bool HaveSameImage(const FrqMap& a, const FrqMap& b) {
  if (!a.Loaded || !b.Loaded || a.Hop != b.Hop) return false;
  if (!a.DerivedAverage && !SameBits(a.Average, b.Average)) return false;
  const auto frequency = &FrqFrame::Frequency;
  return (a.Frames.IsSameAs(b.Frames) || std::ranges::equal(a.Frames, b.Frames, SameBits, frequency, frequency)) &&
         std::ranges::equal(PointsOf(a), PointsOf(b), SamePoint, ValueOf, ValueOf);
}

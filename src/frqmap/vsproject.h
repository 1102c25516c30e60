// The data of a .vs4ufrq project as the analysis library tells it, and its way into a map and back.
//
// It stands apart from the library's own calls, so that a map can hold, copy and edit a project where there is no
// library. Only the first item of a project counts: a project of ours has no other.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/bytes.h"
#include "base/sample.h"
#include "frqmap/frqtype.h"

struct FrqFrame;
class FrqMap;

// The library's records as they lie in memory. Fields without a meaning to us are carried along and given back
// unchanged.
struct VsProjectInfo {
  std::array<std::uint8_t, 8> CarriedAt0{};
  std::int32_t SampleRate = 0;  // [Hz]
  std::array<std::uint8_t, 4> CarriedAt12{};
};

struct VsItemInfo {
  std::array<std::uint8_t, 272> CarriedAt0{};
  std::int32_t PointsPerSecond = 0;
  std::int32_t PointCount = 0;
  std::array<std::uint8_t, 12> CarriedAt280{};
};

struct VsControlPoint {
  std::array<std::uint8_t, 8> CarriedAt0{};
  double Dynamics = 0.0;  // amplitude / 10000
  std::array<std::uint8_t, 28> CarriedAt16{};
  std::int32_t Pitch = 0;  // [cents], that is note number * 100: 6900 is 440 Hz
  std::array<std::uint8_t, 12> CarriedAt48{};
  std::int32_t HasPitch = 0;  // nonzero: the point has a pitch; Pitch may hold one all the same
  std::array<std::uint8_t, 16> CarriedAt64{};
};

static_assert(sizeof(VsProjectInfo) == 16 && offsetof(VsProjectInfo, SampleRate) == 8);
static_assert(sizeof(VsItemInfo) == 292 && offsetof(VsItemInfo, PointsPerSecond) == 272);
static_assert(sizeof(VsControlPoint) == 80 && offsetof(VsControlPoint, Dynamics) == 8);
static_assert(offsetof(VsControlPoint, Pitch) == 44 && offsetof(VsControlPoint, HasPitch) == 60);

// The most control points of a project, and frames of a map made from one, that are taken: an hour and more. A library
// that tells of more would have a 32-bit process run out of memory over one syllable.
inline constexpr std::int32_t VsMostPoints = 1'000'000;

class VsProject {
 public:
  VsProjectInfo ProjectInfo;
  std::vector<VsItemInfo> Items;
  std::vector<std::vector<VsControlPoint>> ControlPoints;  // for each item

  // The control points of the first item; none without an item.
  std::span<const VsControlPoint> Points() const;

  // Takes an edited frame into the control point of that index: its pitch, its flag and its level.
  void SetPoint(SampleCount index, const FrqFrame& frame);

  // Mean pitch [cents] of the points with pitch that lie closer than 200 cents to the mean of all of these. Both means
  // truncate; middle C where there is no point to go by.
  std::int32_t AverageCents() const;
};

// The map of a project, which it takes over: a frame is a control point and the hop is 1. None without an item, and
// where most of a large count of points is not there.
std::optional<FrqMap> MapOfProject(VsProject project);

// The map of a project in frames of 256 samples, for the kinds that Create makes with that hop: each frame is the
// control point at or before it. None without an item, without a rate, with too many frames, or where most of a
// large count of points is not there.
std::optional<FrqMap> ResampledMap(const VsProject& project, FrqType kind);

// A .pmk file with the pitch periods of a project, told in samples of its own rate. None without an item or a rate, or
// with too many periods.
std::optional<Bytes> PmkOfProject(const VsProject& project);

// Writes a map over the control points of a project, whose times stay: each takes the frame at or before it. Outside
// the map and on frames without pitch a point holds the map's average, with its flag clear. False, with the project as
// it was, where one of both has no time axis.
bool SampleOntoProject(const FrqMap& map, VsProject& project);

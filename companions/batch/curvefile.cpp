#include "batch/curvefile.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "frqmap/curvepasting.h"
#include "frqmap/mapkind.h"

namespace {

constexpr SampleCount kHop = 256;

// Times closer than this [s] are the same, as in the pasting of curves.
constexpr double kSameTime = 1e-6;

double SecondsOfFrame(const FrqMap& map, SampleCount frame) {
  return static_cast<double>(frame) * map.Hop / FrqSampleRate;
}

// Those that have a place in time and are not before a point.
std::vector<int> FramesFrom(const FrqMap& map, double seconds) {
  std::vector<int> frames;
  for (SampleCount frame = 0; frame < map.FrameCount && map.PositionOf(frame) >= 0; ++frame) {
    if (SecondsOfFrame(map, frame) >= seconds - kSameTime) frames.push_back(frame);
  }
  return frames;
}

// Levels of points in ascending time, asked in ascending time.
class LevelTrack {
 public:
  explicit LevelTrack(std::span<const CurvePoint> points) {
    std::ranges::copy_if(points, std::back_inserter(points_),
                         [](const CurvePoint& point) { return point.Level.has_value(); });
  }

  // Straight between two points, and none beyond them.
  std::optional<double> At(double seconds) {
    while (next_ < points_.size() && points_[next_].Seconds < seconds - kSameTime) ++next_;
    if (next_ == points_.size()) return std::nullopt;
    const CurvePoint& next = points_[next_];
    if (next.Seconds <= seconds + kSameTime) return next.Level;
    if (next_ == 0) return std::nullopt;
    const CurvePoint& before = points_[next_ - 1];
    const double part = (seconds - before.Seconds) / (next.Seconds - before.Seconds);
    return *before.Level + (*next.Level - *before.Level) * part;
  }

 private:
  std::vector<CurvePoint> points_;
  std::size_t next_ = 0;
};

void SetLevelsOf(FrqMap& map, const std::vector<int>& frames, std::span<const CurvePoint> points) {
  LevelTrack levels(points);
  for (const int index : frames) {
    const std::optional<double> level = levels.At(SecondsOfFrame(map, index));
    if (!level) continue;
    FrqFrame& frame = map.Frames.Own()[static_cast<std::size_t>(index)];
    frame.Amplitude = *level;
    if (map.HasProject) map.Project.SetPoint(index, frame);
  }
}

}  // namespace

std::vector<CurvePoint> CurvePointsOf(const FrqMap& map) {
  std::vector<CurvePoint> points;
  for (SampleCount index = 0; index < map.FrameCount && map.PositionOf(index) >= 0; ++index) {
    const FrqFrame& frame = map.Frames[static_cast<std::size_t>(index)];
    const bool hasPitch = frame.Frequency > FrqNoPitch && std::isfinite(frame.Frequency);
    const bool hasLevel = frame.Amplitude >= 0.0 && std::isfinite(frame.Amplitude);
    points.push_back({SecondsOfFrame(map, index), hasPitch ? frame.Frequency : 0.0,
                      hasLevel ? std::optional(frame.Amplitude) : std::nullopt});
  }
  return points;
}

double SecondsOf(const FrqMap& map) {
  return map.Hop > 0 ? SecondsOfFrame(map, map.FrameCount) : 0.0;
}

bool HoldsLevels(FrqType kind) {
  const MapKind* const row = FindMapKind(kind);
  return row && row->HoldsLevels;
}

LostValues LostIn(const FrqMap& map, std::span<const CurvePoint> points, FrqType kind) {
  const double least = MinFrequencyOfKind(kind), most = MaxFrequencyOfKind(kind), end = SecondsOf(map);
  LostValues lost;
  for (const CurvePoint& point : points) {
    const bool isLow = point.Hz < least || point.Hz <= FrqNoPitch;
    if (point.Seconds >= end) {
      ++lost.Beyond;
      continue;
    }
    lost.TooLow += point.Hz > 0.0 && isLow;
    lost.TooHigh += point.Hz > most;
    lost.Levels += point.Level && !HoldsLevels(kind);
  }
  return lost;
}

// The rows are told from the first frame that they reach, so that times stay what they are.
std::size_t LayOver(FrqMap& map, std::span<const CurvePoint> points, FrqType kind) {
  if (points.empty()) return 0;
  const std::vector<int> frames = FramesFrom(map, points.front().Seconds);
  if (frames.empty()) return 0;
  const double start = SecondsOfFrame(map, frames.front());
  std::vector<CurveRow> rows;
  rows.reserve(points.size());
  for (const CurvePoint& point : points) {
    rows.push_back({point.Seconds - start, point.Hz > FrqNoPitch ? point.Hz : FrqNoPitch});
  }
  const std::vector<int> set = PasteRows(map, frames, rows, PasteAs::Curve, kind);
  if (HoldsLevels(kind)) SetLevelsOf(map, set, points);
  return set.size();
}

std::optional<FrqMap> MapOfPoints(std::span<const CurvePoint> points, FrqType kind, SampleCount frames) {
  constexpr double kMostSeconds = 20'000.0;
  if (points.empty() || points.back().Seconds > kMostSeconds) return std::nullopt;
  if (frames <= 0) {
    frames = static_cast<SampleCount>(std::floor((points.back().Seconds + kSameTime) * FrqSampleRate / kHop)) + 1;
  }
  FrqMap map;
  map.Create(frames, kind);
  map.Hop = kHop;
  map.Kind = kind;
  LayOver(map, points, kind);
  map.Average = map.ComputeAverage(-1);
  return map;
}

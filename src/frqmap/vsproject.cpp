#include "frqmap/vsproject.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/note.h"
#include "frqmap/frqmap.h"

namespace {

using Int32 = std::numeric_limits<std::int32_t>;

constexpr std::int32_t kMiddleC = 6000;  // [cents]
constexpr double kA4 = 6900.0;           // [cents]
constexpr double kAmplitudeOfOne = 10000.0;
constexpr std::int32_t kMostRefused = 512;     // control points, where few or none are told
constexpr double kHopsPerSample = 0.00390625;  // 1 / 256

// Pitch periods are laid out at this rate, whatever that of the item: other tools count on it.
constexpr double kPmkPointsPerSecond = 200.0;
constexpr double kPeriodWithoutPitch = 49.0;  // [samples]; a reader takes periods under 50 for none
constexpr std::int32_t kMostPeriods = 5'000'000;
constexpr std::array<std::uint8_t, 2> kPmkMagic = {0x13, 0x00};

// Toward zero. A frequency of 0 or infinity ends at the limits of the type; no number at all gives 0.
std::int32_t Truncate(double value) {
  if (std::isnan(value)) return 0;
  return static_cast<std::int32_t>(std::clamp<double>(value, Int32::min(), Int32::max()));
}

double FrequencyOf(const VsControlPoint& point) {
  return point.HasPitch ? NoteToHz(point.Pitch / 100.0) : FrqNoPitch;
}

// [samples]
double PeriodOf(const VsControlPoint& point, double rate) {
  return point.HasPitch ? rate / (440.0 * std::pow(2.0, (point.Pitch - kA4) / 1200.0)) : kPeriodWithoutPitch;
}

// Truncated from A4 up and down, other than the pitch of an edited frame, which truncates from note 0.
std::int32_t ImportedPitch(double hz) {
  return Truncate(kA4 - std::trunc(std::log(hz / 440.0) / std::log(2.0) * -1200.0));
}

// Truncated mean of the pitches from `low` to `high`; none if no point has such a pitch.
std::optional<std::int64_t> MeanPitch(std::span<const VsControlPoint> points, std::int64_t low, std::int64_t high) {
  std::int64_t sum = 0;
  std::int64_t count = 0;
  for (const VsControlPoint& point : points) {
    if (!point.HasPitch || point.Pitch < low || point.Pitch > high) continue;
    sum += point.Pitch;
    ++count;
  }
  if (count == 0) return std::nullopt;
  return sum / count;
}

bool HasTimeAxis(const VsProject& project) {
  return !project.Items.empty() && project.Items[0].PointsPerSecond > 0 && project.ProjectInfo.SampleRate > 0;
}

// A library that tells next to none of the points it counts was given a damaged file, whose map would take the memory
// of a long one.
bool HasItsPoints(const VsProject& project) {
  const std::int32_t count = project.Items[0].PointCount;
  return count <= kMostRefused || count / 2 <= std::ssize(project.Points());
}

void SetPointFromMap(VsControlPoint& point, const FrqMap& map, std::int32_t index) {
  const bool inside = index >= 0 && index < map.FrameCount;
  const FrqFrame frame = inside ? map.Frames[static_cast<std::size_t>(index)] : FrqFrame();
  const bool hasPitch = frame.Frequency > FrqNoPitch;
  point.Pitch = ImportedPitch(hasPitch ? frame.Frequency : map.Average);
  point.HasPitch = hasPitch;
  point.Dynamics = frame.Amplitude / kAmplitudeOfOne;
}

}  // namespace

std::span<const VsControlPoint> VsProject::Points() const {
  if (Items.empty() || ControlPoints.empty()) return {};
  return ControlPoints[0];
}

void VsProject::SetPoint(SampleCount index, const FrqFrame& frame) {
  if (index < 0 || index >= std::ssize(Points())) return;
  VsControlPoint& point = ControlPoints[0][static_cast<std::size_t>(index)];
  point.Pitch = Truncate(HzToNote(frame.Frequency) * 100.0);
  point.HasPitch = frame.Voiced;
  point.Dynamics = frame.Amplitude / kAmplitudeOfOne;
}

std::int32_t VsProject::AverageCents() const {
  constexpr std::int64_t kNear = 199;
  std::optional<std::int64_t> mean = MeanPitch(Points(), Int32::min(), Int32::max());
  if (mean) mean = MeanPitch(Points(), *mean - kNear, *mean + kNear);
  return static_cast<std::int32_t>(mean.value_or(kMiddleC));
}

std::optional<FrqMap> MapOfProject(VsProject project) {
  if (project.Items.empty() || !HasItsPoints(project)) return std::nullopt;
  FrqMap map;
  map.FrameCount = std::clamp(project.Items[0].PointCount, 0, VsMostPoints);
  std::vector<FrqFrame>& frames = map.Frames.Own();
  frames.resize(static_cast<std::size_t>(map.FrameCount));
  // The library may have refused some of the points it counts: frames without one stay without pitch.
  const std::span<const VsControlPoint> points = project.Points();
  for (std::size_t i = 0; i < std::min(points.size(), frames.size()); ++i) {
    // The flag alone makes a frame voiced, also under 55 Hz.
    frames[i].Frequency = FrequencyOf(points[i]);
    frames[i].Voiced = points[i].HasPitch != 0;
    frames[i].Amplitude = points[i].Dynamics * kAmplitudeOfOne;
  }
  map.HasProject = true;
  map.Project = std::move(project);
  return map;
}

std::optional<FrqMap> ResampledMap(const VsProject& project, FrqType kind) {
  if (!HasTimeAxis(project) || !HasItsPoints(project)) return std::nullopt;
  const double secondsPerPoint = 1.0 / project.Items[0].PointsPerSecond;
  const double rate = project.ProjectInfo.SampleRate;
  const double frameCount = project.Items[0].PointCount * secondsPerPoint * rate * kHopsPerSample;
  if (frameCount > VsMostPoints) return std::nullopt;

  FrqMap map;
  map.Create(Truncate(frameCount), kind);
  map.Average = NoteToHz(project.AverageCents() / 100.0);
  const std::span<const VsControlPoint> points = project.Points();
  for (SampleCount i = 0; i < map.FrameCount; ++i) {
    const SampleCount position = map.PositionOf(i);
    const std::int32_t index = Truncate(position / secondsPerPoint / rate);
    if (index >= std::ssize(points)) break;
    const VsControlPoint& point = points[static_cast<std::size_t>(index)];
    map.SetFrequency(position, FrequencyOf(point));
    map.Frames.Own()[static_cast<std::size_t>(i)].Amplitude = point.Dynamics * kAmplitudeOfOne;
  }
  return map;
}

std::optional<Bytes> PmkOfProject(const VsProject& project) {
  const double rate = project.ProjectInfo.SampleRate;
  if (project.Items.empty() || rate <= 0.0) return std::nullopt;
  const std::span<const VsControlPoint> points = project.Points();
  double end = 0.0;  // of the last period [samples]
  std::int32_t count = 0;
  std::int32_t position = 0;
  ByteWriter records;
  for (std::int32_t i = 0; i < std::ssize(points); i = Truncate(end * kPmkPointsPerSecond / rate)) {
    // Absurd pitches have periods that lead nowhere.
    if (count == kMostPeriods) return std::nullopt;
    end += PeriodOf(points[static_cast<std::size_t>(i)], rate);
    const std::int32_t previous = std::exchange(position, Truncate(end));
    records.Write(std::array{position, position - previous});
    ++count;
  }
  ByteWriter file;
  file.Write(kPmkMagic);
  file.Write(end / count);  // no number where there is no period, and readers refuse such a file for its count
  file.Write(count);
  Bytes bytes = file.Take();
  const Bytes body = records.Take();
  bytes.insert(bytes.end(), body.begin(), body.end());
  return bytes;
}

bool SampleOntoProject(const FrqMap& map, VsProject& project) {
  if (!HasTimeAxis(project) || project.ControlPoints.empty()) return false;
  const double secondsPerPoint = 1.0 / project.Items[0].PointsPerSecond;
  const double rate = project.ProjectInfo.SampleRate;
  double number = 0.0;
  for (VsControlPoint& point : project.ControlPoints[0]) {
    // A map without a hop has no frame for any point, which leaves them all to its average.
    SetPointFromMap(point, map, map.Hop > 0 ? Truncate(number * secondsPerPoint * rate / map.Hop) : -1);
    number += 1.0;
  }
  return true;
}

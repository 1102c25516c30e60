#include "frqmap/curvepasting.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "frqmap/edits.h"

namespace {

// Times closer than this [s] are the same: they come from a text with six decimals.
constexpr double kSameTime = 1e-6;

constexpr std::int64_t kMostRows = 4'000'000;

bool IsPitch(double hz) {
  return hz > FrqNoPitch;
}

double SecondsOf(const FrqMap& map, int frame, int first) {
  return (static_cast<double>(frame) - first) * map.Hop / FrqSampleRate;
}

// The frequency at a time that the rows reach; they stand in ascending time from 0.
double FrequencyAt(std::span<const CurveRow> rows, double seconds) {
  const auto next = std::ranges::lower_bound(rows, seconds - kSameTime, {}, &CurveRow::Seconds);
  if (next == rows.end()) return rows.back().Hz;
  if (next == rows.begin() || next->Seconds <= seconds + kSameTime) return next->Hz;
  const CurveRow& before = *(next - 1);
  const double part = (seconds - before.Seconds) / (next->Seconds - before.Seconds);
  const bool isBefore = seconds - before.Seconds <= next->Seconds - seconds + kSameTime;
  if (!IsPitch(before.Hz) || !IsPitch(next->Hz)) return isBefore ? before.Hz : next->Hz;
  return before.Hz * std::pow(next->Hz / before.Hz, part);
}

// The median in cents: for an even number of pitches, the middle between the two.
std::optional<double> MedianOf(std::vector<double> pitches) {
  std::erase_if(pitches, [](double hz) { return !IsPitch(hz); });
  if (pitches.empty()) return std::nullopt;
  const auto middle = pitches.begin() + static_cast<std::ptrdiff_t>(pitches.size() / 2);
  std::ranges::nth_element(pitches, middle);
  if (pitches.size() % 2 != 0) return *middle;
  return std::sqrt(*middle * *std::max_element(pitches.begin(), middle));
}

// The factor that brings the rows to where their shape belongs.
double FactorOf(const FrqMap& map, std::span<const int> frames, std::span<const CurveRow> rows) {
  std::vector<double> pasted, there;
  for (const CurveRow& row : rows) pasted.push_back(row.Hz);
  for (const int frame : frames) there.push_back(map.FrequencyAt(map.PositionOf(frame)));
  const std::optional<double> from = MedianOf(std::move(pasted));
  if (!from) return 1.0;
  const double key = map.ShownAverage();
  return (IsPitch(key) ? key : MedianOf(std::move(there)).value_or(*from)) / *from;
}

}  // namespace

std::vector<CurveRow> CurveOf(const FrqMap& map, std::span<const int> frames) {
  std::vector<CurveRow> rows;
  for (const int frame : frames) {
    const SampleCount position = map.PositionOf(frame);
    if (position >= 0) rows.push_back({SecondsOf(map, frame, frames.front()), map.FrequencyAt(position)});
  }
  return rows;
}

std::size_t MostCurveRows(const FrqMap& map) {
  const std::int64_t samples = std::int64_t{std::max(map.Hop, 1)} * std::max(map.FrameCount, 1);
  return static_cast<std::size_t>(std::min(samples, kMostRows));
}

std::vector<int> PasteRows(FrqMap& map, std::span<const int> frames, std::span<const CurveRow> rows, PasteAs as,
                           FrqType workingKind) {
  if (frames.empty() || rows.empty()) return {};
  const auto isBeyond = [&](int frame) {
    const bool isReached = SecondsOf(map, frame, frames.front()) <= rows.back().Seconds + kSameTime;
    return !isReached || map.PositionOf(frame) < 0;
  };
  frames = frames.first(static_cast<std::size_t>(std::ranges::find_if(frames, isBeyond) - frames.begin()));
  const double factor = as == PasteAs::Shape ? FactorOf(map, frames, rows) : 1.0;
  for (const int frame : frames) {
    const double hz = FrequencyAt(rows, SecondsOf(map, frame, frames.front()));
    const double set = IsPitch(hz) ? ClampFrequency(hz * factor, workingKind, map.SinglePrecision) : FrqNoPitch;
    map.SetFrequency(map.PositionOf(frame), set);
  }
  return {frames.begin(), frames.end()};
}

#include "document/step.h"

#include <algorithm>
#include <span>
#include <utility>

#include "document/samebits.h"

namespace {

bool SamePitch(const FrqFrame& a, const FrqFrame& b) {
  return SameBits(a.Frequency, b.Frequency) && a.Voiced == b.Voiced;
}

bool SameMark(const FrqFrame& a, const FrqFrame& b) {
  return a.Mark == b.Mark && SameBits(a.SuggestedFrequency, b.SuggestedFrequency);
}

bool IsUnmarked(const FrqFrame& frame) {
  return frame.Mark == 0 && SameBits(frame.SuggestedFrequency, 0.0);
}

}  // namespace

MapBefore::MapBefore(const FrqMap& map) : frames_(map.Frames), average_(map.Average), modified_(map.Modified) {
  const auto points = PointsOf(map);
  points_.reserve(points.size());
  for (const VsControlPoint& point : points) points_.push_back(ValueOf(point));
}

MapChange::MapChange(int entry, const MapBefore& before, const FrqMap& after, std::size_t expected)
    : entry_(entry),
      frameCount_(after.FrameCount),
      modifiedBefore_(before.Modified()),
      modifiedAfter_(after.Modified),
      // An average that is computed when needed is no content: a save alone makes it another.
      keyBefore_(after.DerivedAverage ? after.Average : before.Average()),
      keyAfter_(after.Average) {
  const std::size_t count = std::min(before.Frames().size(), after.Frames.size());
  frames_.reserve(std::min(expected, count));
  for (std::size_t i = 0; i < count && !after.Frames.IsSameAs(before.Frames()); ++i) {
    const FrqFrame& old = before.Frames()[i];
    const FrqFrame& now = after.Frames[i];
    if (!SamePitch(old, now) || !SameMark(old, now)) AddFrame(static_cast<std::uint32_t>(i), old, now);
  }
  const auto points = PointsOf(after);
  for (std::size_t i = 0; i < std::min(points.size(), before.Points().size()); ++i) {
    const PointValue value = ValueOf(points[i]);
    if (!SamePoint(value, before.Points()[i])) {
      points_.push_back({static_cast<std::uint32_t>(i), before.Points()[i], value});
    }
  }
  if (frames_.size() < frames_.capacity()) frames_.shrink_to_fit();
  points_.shrink_to_fit();
}

// A mark that goes with its suggestion taken shares the record of the frequency.
void MapChange::AddFrame(std::uint32_t index, const FrqFrame& before, const FrqFrame& after) {
  const bool samePitch = SamePitch(before, after);
  const bool sameMark = SameMark(before, after);
  FrameChange change{index,       FrameChange::Frequency, before.Voiced,  after.Voiced,
                     before.Mark, before.Frequency,       after.Frequency};
  const bool taken =
      !sameMark && !samePitch && IsUnmarked(after) && SameBits(before.SuggestedFrequency, after.Frequency);
  if (taken) change.What = FrameChange::Taken;
  if (!samePitch) frames_.push_back(change);
  if (sameMark || taken) return;
  if (!IsUnmarked(before)) {
    frames_.push_back({index, FrameChange::MarkGone, 0, 0, before.Mark, before.SuggestedFrequency, 0.0});
  }
  if (!IsUnmarked(after)) {
    frames_.push_back({index, FrameChange::MarkSet, 0, 0, after.Mark, 0.0, after.SuggestedFrequency});
  }
}

bool MapChange::IsNone() const {
  return frames_.empty() && points_.empty() && !HasKey();
}

bool MapChange::HasKey() const {
  return !SameBits(keyBefore_, keyAfter_);
}

bool MapChange::HasMarks() const {
  return std::ranges::any_of(frames_, [](const FrameChange& change) { return change.What != FrameChange::Frequency; });
}

std::vector<int> MapChange::ChangedFrames() const {
  std::vector<int> frames;
  frames.reserve(frames_.size());
  for (const FrameChange& change : frames_) {
    const int frame = static_cast<int>(change.Frame);
    if (frames.empty() || frames.back() != frame) frames.push_back(frame);
  }
  return frames;
}

std::size_t MapChange::Bytes() const {
  return sizeof(*this) + frames_.capacity() * sizeof(FrameChange) + points_.capacity() * sizeof(PointChange);
}

// The last of the changes reaches farthest.
bool MapChange::Reaches(const FrqMap& map) const {
  if (!map.Loaded || map.FrameCount != frameCount_) return false;
  if (!points_.empty() && points_.back().Point >= PointsOf(map).size()) return false;
  return frames_.empty() || frames_.back().Frame < map.Frames.size();
}

// The marks are left out: a check may have come in between, and they are no more than its opinion.
bool MapChange::Fits(const FrqMap& map, bool undone) const {
  return Reaches(map) && std::ranges::all_of(frames_, [&](const FrameChange& change) {
    if (change.What == FrameChange::MarkGone || change.What == FrameChange::MarkSet) return true;
    return SameBits(map.Frames[change.Frame].Frequency, undone ? change.Before : change.After);
  });
}

void MapChange::ApplyToFrame(FrqFrame& frame, const FrameChange& change, bool redo) const {
  const auto setMark = [&frame](std::uint32_t mark, double suggestion) {
    frame.Mark = mark;
    frame.SuggestedFrequency = suggestion;
  };
  switch (change.What) {
    case FrameChange::MarkGone: return redo ? setMark(0, 0.0) : setMark(change.Mark, change.Before);
    case FrameChange::MarkSet: return redo ? setMark(change.Mark, change.After) : setMark(0, 0.0);
    case FrameChange::Taken: redo ? setMark(0, 0.0) : setMark(change.Mark, change.After); break;
    default: break;
  }
  frame.Frequency = redo ? change.After : change.Before;
  frame.Voiced = (redo ? change.VoicedAfter : change.VoicedBefore) != 0;
}

// Backwards where it is undone: of a frame with two changes the later one goes first.
void MapChange::Apply(FrqMap& map, bool redo) const {
  std::vector<FrqFrame>& frames = map.Frames.Own();
  const auto apply = [&](const FrameChange& change) { ApplyToFrame(frames[change.Frame], change, redo); };
  if (redo) {
    std::for_each(frames_.begin(), frames_.end(), apply);
  } else {
    std::for_each(frames_.rbegin(), frames_.rend(), apply);
  }
  for (const PointChange& change : points_) {
    VsControlPoint& point = map.Project.ControlPoints[0][change.Point];
    const PointValue& value = redo ? change.After : change.Before;
    point.Pitch = value.Pitch;
    point.HasPitch = value.HasPitch;
    point.Dynamics = value.Dynamics;
  }
  if (HasKey()) map.Average = redo ? keyAfter_ : keyBefore_;
  map.Modified = redo ? modifiedAfter_ : modifiedBefore_;
  if (HasMarks()) map.HasMarks = std::ranges::any_of(map.Frames, [](const FrqFrame& frame) { return frame.Mark != 0; });
}

std::size_t Step::Bytes() const {
  std::size_t bytes = sizeof(*this);
  for (const MapChange& change : Maps) bytes += change.Bytes();
  return bytes;
}

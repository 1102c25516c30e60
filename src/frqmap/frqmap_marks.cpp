// FrqMap as the check uses it: the regions that sound, and the marks that the check leaves in frames.
//
// It stands apart from the rest of the map, which reads and writes neither.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "frqmap/frqmap.h"

namespace {

constexpr double kLeastThreshold = 500.0;
constexpr double kGreatestThreshold = 2000.0;

// The level of a frame. One that is no number has no order, and counts as the least there is, which never sounds.
double LevelOf(const FrqFrame& frame) {
  return std::isnan(frame.Amplitude) ? -std::numeric_limits<double>::infinity() : frame.Amplitude;
}

// The greater level of frames (0,1), (2,3) and so on; an odd last frame is left out.
std::vector<double> PairLevels(const FrqFrames& frames) {
  std::vector<double> levels(frames.size() / 2);
  for (std::size_t i = 0; i < levels.size(); ++i) {
    levels[i] = std::max(LevelOf(frames[2 * i]), LevelOf(frames[2 * i + 1]));
  }
  return levels;
}

// The level from which a frame sounds: the lower quartile of the pairs, within limits; 0.0 without a pair.
double SoundThreshold(std::vector<double> levels) {
  if (levels.empty()) return 0.0;
  const auto quartile = levels.begin() + static_cast<std::ptrdiff_t>(levels.size() * 25 / 100);
  std::ranges::nth_element(levels, quartile);
  return std::clamp(*quartile, kLeastThreshold, kGreatestThreshold);
}

// Sound spreads through all frames with a pitch: this one sounds too if the one that was looked at before it does.
void SpreadSound(std::vector<bool>& sounding, const FrqFrames& frames, std::size_t frame, std::size_t before) {
  if (sounding[before] && frames[frame].Frequency > FrqNoPitch) sounding[frame] = true;
}

bool IsWithin(const FrqMap& map, SampleCount frame) {
  return frame >= 0 && frame < map.FrameCount;
}

bool IsMarked(const FrqMap& map, SampleCount frame) {
  return IsWithin(map, frame) && map.Frames[static_cast<std::size_t>(frame)].Mark != 0;
}

// The first frame from `frame` on, in steps of 1 or -1, that is not marked; it may lie just outside the map.
SampleCount PastMarks(const FrqMap& map, SampleCount frame, SampleCount step) {
  while (IsMarked(map, frame)) frame += step;
  return frame;
}

void Unmark(FrqFrame& frame) {
  frame.Mark = 0;
  frame.SuggestedFrequency = 0.0;
}

// True if there was a suggestion to take; without one the mark stays, for the user to look at.
bool TakeSuggestion(FrqFrame& frame) {
  if (!(frame.SuggestedFrequency > 0.0)) return false;
  frame.Frequency = frame.SuggestedFrequency;
  frame.Voiced = frame.Frequency > FrqNoPitch;
  Unmark(frame);
  return true;
}

}  // namespace

std::vector<bool> FrqMap::ComputeSoundRegions() const {
  const std::vector<double> pairs = PairLevels(Frames);
  const double threshold = SoundThreshold(pairs);
  std::vector<bool> sounding(Frames.size());
  for (std::size_t i = 0; i < Frames.size(); ++i) {
    sounding[i] = (i / 2 < pairs.size() ? pairs[i / 2] : LevelOf(Frames[i])) >= threshold;
  }
  for (std::size_t i = 1; i < Frames.size(); ++i) SpreadSound(sounding, Frames, i, i - 1);
  for (std::size_t i = Frames.size(); i-- > 1;) SpreadSound(sounding, Frames, i - 1, i);
  return sounding;
}

int FrqMap::GetMarkRange(SampleCount position, SampleCount& first, SampleCount& last) const {
  const std::optional<SampleCount> frame = FrameAt(position);
  if (!frame || !IsWithin(*this, *frame)) return -1;
  if (!IsMarked(*this, *frame)) {
    first = last = -1;
    return -1;
  }
  first = PositionOf(PastMarks(*this, *frame, -1) + 1);
  last = PositionOf(PastMarks(*this, *frame, 1) - 1);
  return 0;
}

void FrqMap::ApplyMarks(SampleCount position, bool apply) {
  SampleCount first = 0;
  SampleCount end = FrameCount;
  if (position >= 0) {
    const std::optional<SampleCount> frame = FrameAt(position);
    if (!frame || !IsMarked(*this, *frame)) return;
    first = PastMarks(*this, *frame, -1) + 1;
    end = PastMarks(*this, *frame, 1);
  }
  for (SampleCount i = first; i < end; ++i) {
    FrqFrame& frame = Frames.Own()[static_cast<std::size_t>(i)];
    if (frame.Mark == 0) continue;
    if (!apply)
      Unmark(frame);
    else if (TakeSuggestion(frame))
      Modified = true;
  }
  HasMarks = std::ranges::any_of(Frames, [](const FrqFrame& frame) { return frame.Mark != 0; });
}

SampleCount FrqMap::FindNextMark(SampleCount position, bool forward) const {
  const SampleCount step = forward ? 1 : -1;
  std::optional<SampleCount> from = forward ? -1 : FrameCount;
  if (position >= 0) {
    from = FrameAt(position);
    if (!from || !IsWithin(*this, *from)) return -1;
  }
  // The run that the position stands in is left first, then the gap behind it.
  SampleCount frame = PastMarks(*this, *from, step) + step;
  while (IsWithin(*this, frame) && !IsMarked(*this, frame)) frame += step;
  return IsWithin(*this, frame) ? PositionOf(frame) : -1;
}

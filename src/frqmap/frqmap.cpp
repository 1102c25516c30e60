#include "frqmap/frqmap.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>

#include "base/note.h"
#include "frqmap/freq0003.h"
#include "frqmap/mapkind.h"

namespace {

constexpr double kMiddleC = 60.0;  // note number

// Pitch of a voiced frame in whole cents. A frequency may be infinite: it counts as the greatest number there is.
std::int32_t CentsOf(double hz) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  const double cents = HzToNote(hz) * 100.0;
  return cents < kMost ? static_cast<std::int32_t>(cents) : kMost;
}

std::vector<std::int32_t> VoicedCents(const FrqFrames& frames) {
  std::vector<std::int32_t> cents;
  cents.reserve(frames.size());
  for (const FrqFrame& frame : frames) {
    if (frame.Frequency > FrqNoPitch) cents.push_back(CentsOf(frame.Frequency));
  }
  return cents;
}

// Truncated mean, none of none. The sum takes 64 bits: a long map outgrows 32.
std::optional<std::int32_t> MeanOf(const std::vector<std::int32_t>& cents) {
  if (cents.empty()) return std::nullopt;
  std::int64_t sum = 0;
  for (const std::int32_t value : cents) sum += value;
  return static_cast<std::int32_t>(sum / static_cast<std::int64_t>(cents.size()));
}

struct PitchRange {
  double Least = 999999.0;
  double Greatest = FrqNoPitch;

  void Add(double hz) {
    if (!(hz > FrqNoPitch)) return;
    Least = std::min(Least, hz);
    Greatest = std::max(Greatest, hz);
  }
};

// Index of the frame at a sample position, none outside the map.
std::optional<std::size_t> IndexWithin(const FrqMap& map, SampleCount position) {
  const std::optional<SampleCount> frame = map.FrameAt(position);
  if (position < 0 || !frame || *frame >= map.FrameCount) return std::nullopt;
  return static_cast<std::size_t>(*frame);
}

}  // namespace

void FrqMap::Clear() {
  *this = FrqMap();
}

int FrqMap::Create(SampleCount frameCount, FrqType kind) {
  Clear();
  if (kind == FrqTypeFrq || kind == FrqTypeFrc) {
    Magic = Freq0003Magic;
    Tag = Freq0003Tag(kind);
  }
  if (const MapKind* const row = FindMapKind(kind)) Hop = row->NewHop;
  FrameCount = std::max(frameCount, 0);
  Frames.Own().resize(static_cast<std::size_t>(FrameCount));
  return 0;
}

int FrqMap::CopyTo(FrqMap& destination) const {
  destination = *this;
  destination.UpdateFrequencyRange();
  return 0;
}

bool FrqMap::Equals(const FrqMap& other) const {
  if (!Loaded || !other.Loaded || Average != other.Average || Hop != other.Hop) return false;
  return std::ranges::equal(Frames, other.Frames, [](const FrqFrame& a, const FrqFrame& b) {
    return a.Frequency == b.Frequency && a.Amplitude == b.Amplitude;
  });
}

std::optional<SampleCount> FrqMap::FrameAt(SampleCount position) const {
  if (Hop <= 0) return std::nullopt;
  return position / Hop;
}

SampleCount FrqMap::PositionOf(SampleCount frame) const {
  const std::int64_t position = std::int64_t{frame} * Hop;
  const bool reachable = Hop > 0 && frame >= 0 && position <= std::numeric_limits<SampleCount>::max();
  return reachable ? static_cast<SampleCount>(position) : -1;
}

double FrqMap::FrequencyAt(SampleCount position) const {
  const std::optional<std::size_t> index = IndexWithin(*this, position);
  return index ? Frames[*index].Frequency : FrqNoPitch;
}

void FrqMap::SetFrequency(SampleCount position, double hz) {
  const std::optional<std::size_t> index = IndexWithin(*this, position);
  if (!index) return;
  FrqFrame& frame = Frames.Own()[*index];
  frame.Voiced = hz > FrqNoPitch;
  frame.Frequency = frame.Voiced ? hz : FrqNoPitch;
  if (HasProject) Project.SetPoint(static_cast<SampleCount>(*index), frame);
  Modified = true;
}

void FrqMap::SelectRange(SampleCount first, SampleCount second, bool clearOthers) {
  std::optional<SampleCount> from = FrameAt(first);
  std::optional<SampleCount> to = FrameAt(second);
  if (FrameCount == 0 || !from || !to) return;
  // A range that begins before the map selects its first frame alone.
  if (*from < 0) from = to = 0;
  const auto [low, high] = std::minmax({std::min(*from, FrameCount - 1), std::clamp(*to, 0, FrameCount - 1)});
  if (clearOthers) ClearSelection();
  const std::span selected =
      std::span(Frames.Own()).subspan(static_cast<std::size_t>(low), static_cast<std::size_t>(high - low) + 1);
  for (FrqFrame& frame : selected) frame.Selected = true;
}

void FrqMap::ClearSelection() {
  if (std::ranges::none_of(Frames, &FrqFrame::Selected)) return;
  for (FrqFrame& frame : Frames.Own()) frame.Selected = false;
}

// Two frames at a time, each into a range of its own: with a single one each frame would wait for the one before.
void FrqMap::UpdateFrequencyRange() {
  PitchRange even, odd;
  const FrqFrame* frame = Frames.begin();
  for (; Frames.end() - frame >= 2; frame += 2) {
    even.Add(frame[0].Frequency);
    odd.Add(frame[1].Frequency);
  }
  if (frame != Frames.end()) even.Add(frame->Frequency);
  MinFrequency = std::min(even.Least, odd.Least);
  MaxFrequency = std::max(even.Greatest, odd.Greatest);
}

double FrqMap::ComputeAverage(int windowSemitones) const {
  std::vector<std::int32_t> cents = VoicedCents(Frames);
  std::optional<std::int32_t> mean = MeanOf(cents);
  if (mean && windowSemitones > 0) {
    const std::int64_t width = std::int64_t{windowSemitones} * 100;
    std::erase_if(cents, [&](std::int32_t value) { return std::abs(std::int64_t{value} - *mean) >= width; });
    mean = MeanOf(cents);
  }
  // Without a frame to go by the average is middle C, also where a wide split leaves none near the mean of all.
  return NoteToHz(mean ? *mean / 100.0 : kMiddleC);
}

double FrqMap::ShownAverage() const {
  return DerivedAverage ? ComputeAverage(2) : Average;
}

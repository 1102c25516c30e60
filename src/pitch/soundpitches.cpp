#include "pitch/soundpitches.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace {

// A map belongs to the recording if their lengths are so near.
constexpr double kLengthShare = 0.05, kLengthSeconds = 0.1;
constexpr SampleCount kFinestHop = 32;

constexpr double kReach = 3.0 / 12.0;      // [octaves] of the pencil
constexpr double kFarness = 0.3 / kReach;  // strength that an octave costs
constexpr double kLeastShare = 0.5;        // of the strongest candidate

constexpr SampleCount kBlock = 64;        // [frames]
constexpr double kWholeSeconds = 60.0;    // a recording that is not longer is made ready as a whole
constexpr double kStretchSeconds = 10.0;  // before and behind what is asked for, of a longer one

SampleCount BlockOf(SampleCount frame) {
  return frame - frame % kBlock;
}

}  // namespace

bool CanBeMapOf(std::int64_t samples, double sampleRate, SampleCount hop, SampleCount frameCount) {
  if (hop < kFinestHop || frameCount <= 0) return false;
  const double own = static_cast<double>(frameCount) * hop, whole = static_cast<double>(samples);
  return std::fabs(own - whole) <= kLengthShare * whole + kLengthSeconds * sampleRate + hop;
}

std::span<const PitchCandidate> BorneOut(const PitchFrame& frame) {
  const std::span<const PitchCandidate> all = frame.pitches;
  const auto isWeak = [&](const PitchCandidate& one) { return !(one.strength >= kLeastShare * all[0].strength); };
  return all.first(static_cast<std::size_t>(std::ranges::find_if(all, isWeak) - all.begin()));
}

SoundPitches::SoundPitches(Sound sound, SampleCount hop)
    : hop_(hop), rate_(sound.rate), size_(std::ssize(sound.samples)), samples_(std::move(sound.samples)) {
  if (static_cast<double>(size_) > kWholeSeconds * rate_) return;
  search_.emplace(samples_, rate_);
  last_ = Count() - 1;
  samples_ = {};
}

bool SoundPitches::CanBeOf(SampleCount hop, SampleCount frameCount) const {
  return hop == hop_ && CanBeMapOf(size_, rate_, hop, frameCount);
}

// The number of frames that the recording holds; beyond it is silence.
SampleCount SoundPitches::Count() const {
  return static_cast<SampleCount>((size_ + hop_ - 1) / hop_);
}

// `first` and `last` are frames of the recording.
void SoundPitches::MakeReady(SampleCount first, SampleCount last) {
  if (first >= first_ && last <= last_) return;
  const auto around = static_cast<SampleCount>(kStretchSeconds * rate_ / hop_);
  blocks_.clear();
  search_.reset();
  first_ = BlockOf(std::max(first - around, 0));
  last_ = std::min(BlockOf(std::min(last, Count() - around) + around) + kBlock, Count()) - 1;
  // The stretch has a block more at either end, where findings are not to be relied on.
  origin_ = std::max(first_ - kBlock, 0);
  const std::int64_t from = std::int64_t{origin_} * hop_;
  const std::int64_t to = std::min((std::int64_t{last_} + 1 + kBlock) * hop_, size_);
  search_.emplace(std::span(samples_).subspan(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)),
                  rate_);
}

bool SoundPitches::Prepare(SampleCount first, SampleCount count) {
  const SampleCount from = BlockOf(std::clamp(first, 0, Count())), to = std::clamp(first + count, from, Count());
  if (from == to) return false;
  MakeReady(from, to - 1);
  bool isNew = false;
  for (SampleCount block = from; block < to; block += kBlock) {
    if (blocks_.contains(block)) continue;
    blocks_.emplace(block, search_->Candidates(hop_, block - origin_, std::min(kBlock, Count() - block)));
    isNew = true;
  }
  return isNew;
}

const PitchFrame* SoundPitches::Known(SampleCount frame) const {
  if (frame < 0) return nullptr;
  const auto block = blocks_.find(BlockOf(frame));
  if (block == blocks_.end() || frame - block->first >= std::ssize(block->second)) return nullptr;
  return &block->second[static_cast<std::size_t>(frame - block->first)];
}

const PitchFrame& SoundPitches::At(SampleCount frame) {
  static const PitchFrame kSilence{.voiceless = 2.0, .pitches = {}};
  if (!Known(frame)) Prepare(frame, 1);
  const PitchFrame* const known = Known(frame);
  return known ? *known : kSilence;
}

std::optional<double> SoundPitches::NearestAt(SampleCount frame, double hz) {
  const double wanted = std::log2(hz);
  std::optional<double> found;
  double best = 0.0;
  for (const PitchCandidate& one : BorneOut(At(frame))) {
    const double away = std::fabs(one.logHz - wanted), worth = one.strength - kFarness * away;
    if (!(away <= kReach) || (found && worth <= best)) continue;
    found = std::exp2(one.logHz);
    best = worth;
  }
  return found;
}

std::vector<PitchFrame> SoundPitches::Candidates(SampleCount first, SampleCount count,
                                                 const PitchConstraint& constraint) {
  std::vector<PitchFrame> found;
  found.reserve(static_cast<std::size_t>(count));
  // The frames are taken piece by piece, because a long recording is not ready as a whole.
  const auto piece = std::max<SampleCount>(1, static_cast<SampleCount>(kStretchSeconds * rate_ / hop_));
  for (SampleCount at = first; at < first + count; at += piece) {
    const SampleCount size = std::min(piece, first + count - at);
    if (at < 0 || at >= Count()) {
      found.resize(found.size() + static_cast<std::size_t>(size), At(-1));
      continue;
    }
    MakeReady(at, std::min(at + size, Count()) - 1);
    PitchConstraint own = constraint;
    if (!own.line.empty()) {
      own.line = own.line.subspan(static_cast<std::size_t>(at - first), static_cast<std::size_t>(size));
    }
    std::ranges::move(search_->Candidates(hop_, at - origin_, size, own), std::back_inserter(found));
  }
  return found;
}

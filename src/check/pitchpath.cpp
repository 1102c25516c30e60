#include "check/pitchpath.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <utility>

namespace {

constexpr std::size_t kShifts = kPitchShifts.size();
constexpr double kNever = std::numeric_limits<double>::infinity();

// Costs. A jump costs half of its excess over the limit, so that a spike of two jumps beats the noise that it might be
// from some 2.5 semitones on; a change of the factor costs less than the largest jump, and more than one that is nearer
// to the limit than to an octave.
constexpr double kJumpCost = 0.5;  // per semitone beyond the limit
constexpr double kGreatestJump = 3.0;
constexpr double kOctaveChange = 1.5;
constexpr double kFifthChange = 2.0;  // rarer than octaves and twelfths
constexpr double kFirstNoise = 1.0, kFurtherNoise = 0.35;
constexpr double kSoftNoise = 0.6;  // share of the two that is left where the level is low
constexpr int kWidestGap = 5;       // [frames] beyond it the allowance of a step across a gap grows no more
constexpr double kFarthest = 36.0;  // [semitones] from the notes of the settings that counts
// A factor weighs as much as this distance from the notes: an octave is only moved if its other end is more than nine
// semitones off, because syllables of one voicebank may differ.
constexpr double kShiftPull = 6.0;
constexpr double kFifthPull = 10.0;  // more than a fifth: the notes alone never move by one

// The cheapest way to each state of one frame. The first half of the states have a pitch, by its factor; the second
// half are entered for frames without pitch and for noise, by the factor of the last pitch. The lists stand side by
// side, because the costs are looked through far more often than the rest.
struct Ways {
  std::array<double, 2 * kShifts> Cost;
  std::array<double, 2 * kShifts> LastNote;  // of the true course
  std::array<int, 2 * kShifts> FramesSince;  // since the last pitch; 0 where there was none yet

  void Set(std::size_t state, double itsCost, double note, int frames) {
    Cost[state] = itsCost;
    LastNote[state] = note;
    FramesSince[state] = frames;
  }
};
using Origins = std::array<std::uint8_t, 2 * kShifts>;

double StepCost(const Ways& before, std::size_t from, double note, double limit) {
  const double beyond =
      std::fabs(note - before.LastNote[from]) - limit * std::min(before.FramesSince[from], kWidestGap);
  return std::clamp(kJumpCost * beyond, 0.0, kGreatestJump);
}

bool IsFifth(std::size_t shift) {
  return shift >= kOctaveShifts;
}

double ChangeCost(std::size_t from, std::size_t to) {
  if (from == to) return 0.0;
  return IsFifth(from) || IsFifth(to) ? kFifthChange : kOctaveChange;
}

double PullCost(const PathFrame& frame, std::size_t shift, double lowNote, double highNote) {
  const double note = frame.Note + kPitchShifts[shift];
  const double off = std::max({lowNote - note, note - highNote, 0.0});
  const double moved = shift == 0 ? 0.0 : IsFifth(shift) ? kFifthPull : kShiftPull;
  return frame.Pull * (std::min(off, kFarthest) + moved);
}

double NoiseCost(const PathFrame& frame, bool follows) {
  if (!frame.Pitched || !std::isfinite(frame.Note)) return 0.0;
  return (follows ? kFurtherNoise : kFirstNoise) * (frame.Soft ? kSoftNoise : 1.0);
}

std::size_t Cheapest(const Ways& ways) {
  return static_cast<std::size_t>(std::ranges::min_element(ways.Cost) - ways.Cost.begin());
}

// The states from which a way to another factor can pay. Every state can be reached from the cheapest one at the price
// of the largest change and jump, so that those beyond that price are left out. On a calm contour two or three remain.
class Rivals {
 public:
  explicit Rivals(const Ways& ways) {
    const double limit = std::ranges::min(ways.Cost) + kFifthChange + kGreatestJump;
    for (std::size_t state = 0; state < ways.Cost.size(); ++state) {
      const double change = ways.FramesSince[state] == 0 ? 0.0 : kOctaveChange;
      if (ways.Cost[state] + change <= limit) states_[count_++] = static_cast<std::uint8_t>(state);
    }
  }
  std::span<const std::uint8_t> All() const { return {states_.data(), count_}; }

 private:
  Origins states_{};
  std::size_t count_ = 0;
};

// Enters the pitch of a frame by one factor, from the state where that is cheapest; `pullCost` is that of the pitch
// itself. Gives the state that it comes from.
std::uint8_t EnterPitch(const PathFrame& frame, std::size_t shift, const Ways& before, const Rivals& rivals,
                        double pullCost, Ways& ways) {
  const double note = frame.Note + kPitchShifts[shift];
  double least = kNever;
  std::size_t origin = shift;
  const auto tryFrom = [&](std::size_t from) {
    double cost = before.Cost[from];
    if (cost >= least) return;
    if (before.FramesSince[from] != 0) {
      cost += ChangeCost(from < kShifts ? from : from - kShifts, shift);
      cost += StepCost(before, from, note, frame.StepLimit);
    }
    if (cost >= least) return;
    least = cost;
    origin = from;
  };
  tryFrom(shift);
  tryFrom(kShifts + shift);
  for (const std::uint8_t from : rivals.All()) tryFrom(from);
  ways.Set(shift, least + pullCost, note, 1);
  return static_cast<std::uint8_t>(origin);
}

// Enters no pitch, or noise, after a pitch by one factor. Gives the state that it comes from.
std::uint8_t EnterNoise(const PathFrame& frame, std::size_t shift, const Ways& before, double first, double further,
                        Ways& ways) {
  const double begun = before.Cost[shift] + first;
  const double goneOn = before.Cost[kShifts + shift] + further;
  const std::size_t from = begun < goneOn ? shift : kShifts + shift;
  int frames = before.FramesSince[from];
  // Over noise the pitch may not stray as it may over silence: a jump would be bridged by calling its middle noise.
  if (frames > 0 && !frame.Pitched) frames = std::min(frames + 1, kWidestGap);
  ways.Set(kShifts + shift, std::min(begun, goneOn), before.LastNote[from], frames);
  return static_cast<std::uint8_t>(from);
}

}  // namespace

void FindPitchPath(std::vector<PathFrame>& frames, double lowNote, double highNote) {
  std::vector<Origins> origins(frames.size());
  Ways buffers[2];
  Ways *before = &buffers[0], *ways = &buffers[1];
  for (std::size_t state = 0; state < 2 * kShifts; ++state) before->Set(state, kNever, 0.0, 0);
  before->Cost[kShifts] = 0.0;  // ahead of the first frame there is nothing
  bool afterPitched = false;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const PathFrame& frame = frames[i];
    const Rivals rivals(*before);
    const double first = NoiseCost(frame, false), further = NoiseCost(frame, afterPitched);
    const bool isNumber = frame.Pitched && std::isfinite(frame.Note);
    for (std::size_t shift = 0; shift < kShifts; ++shift) {
      origins[i][kShifts + shift] = EnterNoise(frame, shift, *before, first, further, *ways);
      if (isNumber) {
        const double pullCost = PullCost(frame, shift, lowNote, highNote);
        origins[i][shift] = EnterPitch(frame, shift, *before, rivals, pullCost, *ways);
      } else {
        ways->Set(shift, kNever, 0.0, 0);
      }
    }
    std::swap(before, ways);
    afterPitched = frame.Pitched;
  }

  std::size_t state = Cheapest(*before);
  for (std::size_t i = frames.size(); i-- > 0;) {
    PathFrame& frame = frames[i];
    frame.Shift = static_cast<std::uint8_t>(state % kShifts);
    frame.State = state < kShifts ? PathState::Pitch : frame.Pitched ? PathState::Noise : PathState::NoPitch;
    state = origins[i][state];
  }
}

#include "check/soundrules.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <numeric>
#include <span>
#include <vector>

#include "check/checkrules.h"
#include "frqmap/frqtype.h"
#include "pitch/soundpitches.h"

namespace {

// The figures below come from measuring what they find and what they mark in vain: benchmarks/voices/check.py.

constexpr double kFarEnough = 120.0;   // [cents] beyond that are an error, and not another view of a glide
constexpr SampleCount kLooseness = 2;  // [frames] that an analysis may be early or late
constexpr double kSmoothStep = 150.0;  // [cents] from frame to frame

// A voice is heard that has another pitch.
constexpr double kHeard = 0.5;     // mean support of the pitch that is heard
constexpr double kFainter = 0.02;  // less support than a higher map, at most, where the map leaves it by a step
constexpr double kClearer = 0.1;   // more support than the map, where that goes on without a step
// More support than a higher map that gives no other sign: a sound that repeats itself does so after twice the time as
// well, so that a pitch that is heard an octave too low has as much support as the map. Measured: 0.15 and more where
// the map was an octave too high, 0.10 and less where it was right.
constexpr double kClearlyBelow = 0.12;

// No voice is heard.
constexpr double kUnheard = 0.5;             // mean support of the map, at most
constexpr double kUnheardBesideVoice = 0.2;  // likewise where the map only holds on to a voice for longer
constexpr double kHeldOnMs = 40.0;           // so long at least
// A hum repeats itself after any time, and a hiss may: a pitch that the candidates do not speak for is no voice either.
constexpr double kUnlikely = 0.25;  // strength of a candidate, at most,
constexpr double kNear = 60.0;      // that lies so near to the map [cents]
constexpr double kBorneOut = 0.75;  // support of a single frame that is not marked

// A voice is heard in a gap.
constexpr double kGapHeard = 0.6;       // mean support within a tone
constexpr double kOpenGapHeard = 0.85;  // at the edge of one, or where the map has none at all
constexpr double kOpenGapMs = 80.0;

// A recording that was heard cannot be read any more.
struct NoSound {};

enum class Claim : std::uint8_t { None, Moved, Noise, Gap };

double CentsBetween(double a, double b) {
  return 1200.0 * std::fabs(std::log2(a / b));
}

bool IsVoice(double hz) {
  return hz > FrqNoPitch && std::isfinite(hz);
}

class SoundCheck {
 public:
  SoundCheck(const CheckFrameRecord& record, const Hearing& hearing, const std::function<const PitchSearch*()>& search)
      : frames_(record.Frames, static_cast<std::size_t>(record.FrameCount)),
        hop_(record.Hop),
        hopMs_(record.Hop * 1000.0 / hearing.Rate),
        hearing_(hearing),
        search_(search),
        claims_(frames_.size(), Claim::None),
        marks_(claims_) {}

  void Run() {
    for (SampleCount i = 0; i < Count(); ++i) claims_[Index(i)] = ClaimAt(i);
    for (SampleCount first = 0, end = 0; first < Count(); first = end) {
      while (end < Count() && claims_[Index(end)] == claims_[Index(first)]) ++end;
      if (!Holds(first, end)) continue;
      if (claims_[Index(first)] == Claim::Noise && !HoldsOn(first, end)) {
        MarkNoise(first, end);
      } else {
        std::fill(marks_.begin() + first, marks_.begin() + end, claims_[Index(first)]);
      }
    }
  }

  std::int32_t WriteTo(std::span<CheckFrame> frames) const {
    std::int32_t count = 0;
    for (std::size_t i = 0; i < frames.size(); ++i) {
      frames[i].Mark = MarkOf(i);
      frames[i].SuggestedFrequency = frames[i].Mark == CheckMarkNone ? 0.0 : Heard(static_cast<SampleCount>(i));
      if (frames[i].Mark != CheckMarkNone) ++count;
    }
    return count;
  }

 private:
  static std::size_t Index(SampleCount i) { return static_cast<std::size_t>(i); }
  SampleCount Count() const { return static_cast<SampleCount>(frames_.size()); }
  double Map(SampleCount i) const { return frames_[Index(i)].Frequency; }
  double Heard(SampleCount i) const { return hearing_.At(i).Hz; }
  bool IsMapVoice(SampleCount i) const { return i >= 0 && i < Count() && IsVoice(Map(i)); }
  bool IsHeard(SampleCount i) const { return i >= 0 && i < Count() && IsVoice(Heard(i)); }

  // Whether the pitch that is heard around a frame comes so near to the map, or goes past it.
  bool Agrees(SampleCount i, double cents) const {
    double lowest = 0.0, highest = 0.0;
    for (SampleCount at = i - kLooseness; at <= i + kLooseness; ++at) {
      if (!IsHeard(at)) continue;
      if (CentsBetween(Map(i), Heard(at)) <= cents) return true;
      lowest = lowest == 0.0 ? Heard(at) : std::min(lowest, Heard(at));
      highest = std::max(highest, Heard(at));
      // A jump in the hearing is no way past.
      if (CentsBetween(lowest, highest) > 4 * kSmoothStep) return false;
    }
    return lowest > 0.0 && lowest <= Map(i) && Map(i) <= highest;
  }

  Claim ClaimAt(SampleCount i) const {
    const bool hasPitch = !(Map(i) <= FrqNoPitch);
    if (!hasPitch) return IsHeard(i) ? Claim::Gap : Claim::None;
    if (!std::isfinite(Map(i))) return IsHeard(i) ? Claim::Moved : Claim::Noise;
    if (Agrees(i, kFarEnough)) return Claim::None;
    return IsHeard(i) ? Claim::Moved : Claim::Noise;
  }

  bool Holds(SampleCount first, SampleCount end) const {
    switch (claims_[Index(first)]) {
      case Claim::Moved: return HoldsMoved(first, end);
      case Claim::Noise: return HoldsNoise(first, end);
      case Claim::Gap: return HoldsGap(first, end);
      default: return false;
    }
  }

  const PitchSearch& Search() const {
    const PitchSearch* const search = search_();
    if (!search) throw NoSound();
    return *search;
  }

  // The mean support of a pitch, that is how well the sound bears it out: of the one heard, and of the map's.
  double SupportOfHeard(SampleCount first, SampleCount end) const {
    double sum = 0.0;
    for (SampleCount i = first; i < end; ++i) sum += hearing_.At(i).Support;
    return sum / (end - first);
  }
  double SupportOfMap(SampleCount first, SampleCount end) const {
    const PitchSearch& search = Search();
    double sum = 0.0;
    for (SampleCount i = first; i < end; ++i) sum += search.SupportAt(i * hop_, Map(i), kSupportReach);
    return sum / (end - first);
  }

  // The strength of the map's pitch in each frame. In silence it is nothing, and the recording is not needed.
  std::vector<double> LikelihoodsOfMap(SampleCount first, SampleCount end) const {
    if (IsSilent(first, end)) return std::vector<double>(Index(end - first), 0.0);
    const std::vector<PitchFrame> frames = Search().Candidates(hop_, first, end - first);
    std::vector<double> likelihoods;
    for (SampleCount i = first; i < end; ++i) {
      double likeliest = 0.0;
      for (const PitchCandidate& one : frames[Index(i - first)].pitches) {
        if (CentsBetween(Map(i), std::exp2(one.logHz)) <= kNear) likeliest = std::max(likeliest, one.strength);
      }
      likelihoods.push_back(likeliest);
    }
    return likelihoods;
  }

  // Whether the map runs on to a neighbour that agrees with the hearing.
  bool RunsOnTo(SampleCount i, SampleCount neighbour) const {
    return IsRight(neighbour) && CentsBetween(Map(i), Map(neighbour)) <= kSmoothStep;
  }
  bool IsRight(SampleCount i) const { return IsMapVoice(i) && claims_[Index(i)] == Claim::None; }
  bool IsSmooth(SampleCount first, SampleCount end) const {
    for (SampleCount i = first + 1; i < end; ++i) {
      if (!(CentsBetween(Map(i), Map(i - 1)) <= kSmoothStep)) return false;
    }
    return true;
  }
  bool HoldsOn(SampleCount first, SampleCount end) const {
    return (RunsOnTo(first, first - 1) || RunsOnTo(end - 1, end)) && IsSmooth(first, end);
  }

  // The hearing may have jumped where the map goes on without a step.
  bool HoldsMoved(SampleCount first, SampleCount end) const {
    const double heard = SupportOfHeard(first, end);
    if (heard < kHeard || IsLoneEnd(first, end)) return false;
    const double clearer = heard - SupportOfMap(first, end);
    const bool isAbove = IsMapAbove(first, end);
    if (HoldsOn(first, end)) return clearer > (HasJumped(first, end) ? 0.0 : kClearer);
    if (HasJumped(first, end)) return !isAbove || clearer > -kFainter;
    return !isAbove || clearer > kClearlyBelow;
  }
  // Whether the map leaves the pitch that is heard, at either end, by a step that the sound does not make.
  bool HasJumped(SampleCount first, SampleCount end) const { return IsJump(first, -1) || IsJump(end - 1, 1); }
  bool IsJump(SampleCount i, SampleCount step) const {
    SampleCount neighbour = i + step;
    while (IsHeard(neighbour) && !IsMapVoice(neighbour) && IsSteadyFrom(neighbour - step, neighbour)) neighbour += step;
    return IsRight(neighbour) && !RunsOnTo(i, neighbour) && IsSteadyFrom(neighbour - step, neighbour);
  }
  bool IsSteadyFrom(SampleCount i, SampleCount next) const {
    return IsHeard(i) && IsHeard(next) && CentsBetween(Heard(i), Heard(next)) <= kSmoothStep;
  }
  bool IsMapAbove(SampleCount first, SampleCount end) const {
    SampleCount above = 0;
    for (SampleCount i = first; i < end; ++i) above += Map(i) > Heard(i) ? 1 : 0;
    return 2 * above > end - first;
  }
  // Whether a run is but the first or the last frame of a tone: half of such a frame is the pause beside it.
  bool IsLoneEnd(SampleCount first, SampleCount end) const {
    return end - first == 1 && ((IsRight(first - 1) && !IsMapVoice(end)) || (IsRight(end) && !IsMapVoice(first - 1)));
  }

  bool HoldsNoise(SampleCount first, SampleCount end) const {
    if (IsLoneEnd(first, end)) return false;
    if (!HoldsOn(first, end)) return true;
    return (end - first) * hopMs_ >= kHeldOnMs && SupportOfMap(first, end) < kUnheardBesideVoice;
  }
  // A run that goes on from no voice is judged in pieces, from one step of the map to the next, and single frames in
  // which a voice is likely are left out: an analysis that errs in a noise may find its way into the voice behind it.
  void MarkNoise(SampleCount first, SampleCount end) {
    const std::vector<double> likelihoods = LikelihoodsOfMap(first, end);
    for (SampleCount from = first, to = first; from < end; from = to) {
      for (++to; to < end && CentsBetween(Map(to), Map(to - 1)) <= kSmoothStep;) ++to;
      const auto begin = likelihoods.begin() + (from - first);
      const double mean = std::accumulate(begin, begin + (to - from), 0.0) / (to - from);
      if (!IsSilent(from, to) && SupportOfMap(from, to) >= kUnheard && mean >= kUnlikely) continue;
      for (SampleCount i = from; i < to; ++i) {
        const bool isLikely = likelihoods[Index(i - first)] >= kUnlikely && SupportOfMap(i, i + 1) >= kBorneOut;
        if (!isLikely) marks_[Index(i)] = Claim::Noise;
      }
    }
  }
  bool IsSilent(SampleCount first, SampleCount end) const {
    for (SampleCount i = first; i < end; ++i) {
      if (!hearing_.At(i).IsSilent) return false;
    }
    return true;
  }

  bool HoldsGap(SampleCount first, SampleCount end) const {
    const double heard = SupportOfHeard(first, end);
    if (IsMapVoice(first - 1) && IsMapVoice(end)) return heard >= kGapHeard;
    return (end - first) * hopMs_ >= kOpenGapMs && heard >= kOpenGapHeard;
  }

  CheckMark MarkOf(std::size_t i) const {
    switch (marks_[i]) {
      case Claim::Moved:
        return IsByFactor(frames_[i].Frequency, Heard(static_cast<SampleCount>(i)))
                   ? MarkOfFactor(frames_[i].Frequency / Heard(static_cast<SampleCount>(i)))
                   : CheckMarkFar;
      case Claim::Noise: return CheckMarkNoise;
      case Claim::Gap: return CheckMarkGap;
      default: return CheckMarkNone;
    }
  }
  static bool IsByFactor(double hz, double heard) {
    for (const double factor : {2.0, 3.0, 1.5}) {
      if (CentsBetween(hz, heard * factor) <= kFarEnough || CentsBetween(hz * factor, heard) <= kFarEnough) return true;
    }
    return false;
  }

  const std::span<const CheckFrame> frames_;
  const SampleCount hop_;  // [samples]
  const double hopMs_;
  const Hearing& hearing_;
  const std::function<const PitchSearch*()>& search_;
  std::vector<Claim> claims_;  // against each frame, by itself
  std::vector<Claim> marks_;   // the claims that have held
};

}  // namespace

bool IsMapOf(const CheckFrameRecord& record, const Hearing& hearing) {
  return record.Hop == hearing.Hop && CanBeMapOf(hearing.Samples, hearing.Rate, record.Hop, record.FrameCount);
}

std::optional<std::int32_t> MarkBySound(CheckFrameRecord& frames, const Hearing& hearing,
                                        const std::function<const PitchSearch*()>& search) {
  SoundCheck check(frames, hearing, search);
  try {
    check.Run();
  } catch (const NoSound&) {
    return std::nullopt;
  }
  return check.WriteTo({frames.Frames, static_cast<std::size_t>(frames.FrameCount)});
}

#include "check/checkrules.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "base/note.h"
#include "check/pitchpath.h"
#include "frqmap/frqtype.h"

namespace {

// The figures below come from the sources named and from measuring what they find and what they mark in vain.

// A step of more than this is no glide: somewhat above what voices do (Sundberg 1973: 0.73 semitones up and 1.0 down in
// 5.8 ms), because vibrato and jitter come on top.
constexpr double kStepPerMs = 0.2;  // [semitones]
constexpr double kLeastStep = 1.0, kGreatestStep = 3.5;
constexpr double kTransitionSteps = 2.0;  // times as much where the settings tell of transitions
constexpr double kFreeSteps = 2.5;        // and in a stretch where they tell of large ones
constexpr double kFreeMs = 200.0;         // the longest such stretch
constexpr double kFreeShare = 0.4;        // of a region's pitch
constexpr double kPull = 0.005, kTransitionPull = 0.001;
constexpr double kFarthestOff = 11.0;  // [semitones] from the middle of the map

// Islands of pitch.
constexpr double kShortestMs = 15.0;
constexpr double kFewestPeriods = 2.2;    // that of Morise 2017 for sections of pitch
constexpr double kShortMs = 60.0;         // an island that must lie near its neighbours to be believed
constexpr double kRoughMs = 90.0;         // and one that must be smooth
constexpr double kRough = 0.5;            // [semitones], see Roughness
constexpr double kStrayOff = 5.0;         // [semitones]
constexpr double kLinkMs = 30.0;          // without pitch, within an island
constexpr double kLinkSlack = 2.0;        // [semitones] beyond the limit of a step
constexpr double kSoftLevel = 0.1;        // of the map's greatest level: -20 dB
constexpr double kShortSoftLevel = 0.18;  // -15 dB
constexpr double kSilentLevel = 0.03;     // -30 dB

// Gaps in a tone.
constexpr double kGapMs = 50.0;  // a closure lasts longer
constexpr double kGapMsAtAnyLevel = 9.0, kGapMsWithoutLevels = 20.0;
constexpr double kGapAgreement = 1.0;  // [semitones] between the ends,
constexpr double kGapSteps = 0.5;      // and this much of the limit for each step between them
constexpr double kGapLevel = 0.5;      // of the softer end
constexpr double kGapLeast = 0.15;     // of the map's greatest level

// Suggestions.
constexpr double kFactorFit = 1.5;   // [semitones] between a frame moved by a factor and the pitch around it
constexpr double kSpikeMs = 120.0;   // noise that is drawn over, and not taken for a consonant
constexpr double kSpikeLevel = 0.3;  // of the softer end

// A map of one frame per point of a project claims a hop of 1; no analysis steps so finely, and points are 5 ms apart.
constexpr SampleCount kFinestHop = 32;
constexpr double kPointHop = 220.5;

// A stretch of frames with pitch that belong together, from the first to the last, and the facts that rules ask for.
struct Island {
  SampleCount First, Last, Count;
  double PeakLevel;
  bool Sounds;  // touches a sound region
};

bool HoldsRegions(const CheckRegionRecord& record, SampleCount frameCount) {
  // Between two regions lies a frame that is in neither; more cannot be there, whatever the count says.
  if (record.RegionCount > (static_cast<std::uint32_t>(frameCount) + 1) / 2) return false;
  SampleCount free = 0;
  for (const CheckRegion& region : std::span(record.Regions, record.RegionCount)) {
    if (region.First < free || region.Last < region.First || region.Last >= frameCount) return false;
    free = region.Last + 1;
  }
  return true;
}

class MapCheck {
 public:
  MapCheck(const CheckFrqSettings& settings, const CheckFrameRecord& record, const CheckRegionRecord* regions)
      : settings_(settings),
        frames_(record.Frames, static_cast<std::size_t>(record.FrameCount)),
        hop_(record.Hop < kFinestHop ? kPointHop : record.Hop),
        hopMs_(hop_ * 1000.0 / FrqSampleRate),
        path_(frames_.size()),
        marks_(frames_.size(), CheckMarkNone),
        suggestions_(frames_.size(), 0.0) {
    if (regions && regions->RegionCount > 0) regions_ = {regions->Regions, regions->RegionCount};
  }

  void Run() {
    FindLevels();
    PreparePath();
    const auto [low, high] = std::minmax(settings_.LowNote, settings_.HighNote);
    FindPitchPath(path_, low, high);
    ReclaimNoise();
    DropSpecks();
    DropIslands();
    MarkFactors();
    MarkFar();
    MarkNoise();
    MarkGaps();
  }

  std::int32_t WriteTo(std::span<CheckFrame> frames) const {
    std::int32_t count = 0;
    for (std::size_t i = 0; i < frames.size(); ++i) {
      frames[i].Mark = marks_[i];
      frames[i].SuggestedFrequency = suggestions_[i];
      if (marks_[i] != CheckMarkNone) ++count;
    }
    return count;
  }

 private:
  SampleCount Count() const { return static_cast<SampleCount>(frames_.size()); }
  const CheckFrame& Frame(SampleCount i) const { return frames_[static_cast<std::size_t>(i)]; }
  PathFrame& Path(SampleCount i) { return path_[static_cast<std::size_t>(i)]; }
  bool IsPitch(SampleCount i) { return i >= 0 && i < Count() && Path(i).State == PathState::Pitch; }
  double Level(SampleCount i) const { return std::isfinite(Frame(i).Amplitude) ? Frame(i).Amplitude : 0.0; }
  SampleCount FramesIn(double ms) const { return static_cast<SampleCount>(ms / hopMs_); }

  void FindLevels() {
    for (SampleCount i = 0; i < Count(); ++i) peakLevel_ = std::max(peakLevel_, Level(i));
  }

  void PreparePath() {
    const bool transition = settings_.HasPitchTransition != 0;
    const double step = std::clamp(kStepPerMs * hopMs_, kLeastStep, kGreatestStep);
    for (SampleCount i = 0; i < Count(); ++i) {
      PathFrame& frame = Path(i);
      frame.Pitched = !(Frame(i).Frequency <= FrqNoPitch);
      // No pitch lies beyond half the rate; a note that is no number is noise.
      const bool isHeard = Frame(i).Frequency <= FrqSampleRate / 2;
      if (frame.Pitched) frame.Note = isHeard ? HzToNote(Frame(i).Frequency) : std::nan("");
      frame.StepLimit = transition ? step * kTransitionSteps : step;
      frame.Pull = transition ? kTransitionPull : kPull;
      frame.Soft = Level(i) < kSoftLevel * peakLevel_;
    }
    free_.assign(frames_.size(), false);
    const CheckRegion whole{0, Count() - 1};
    for (const CheckRegion& region : regions_.empty() ? std::span(&whole, 1) : regions_) FreeEndsOf(region, step);
  }

  // The stretches where the settings tell of large transitions: the first and the last part of a region's pitch.
  void FreeEndsOf(const CheckRegion& region, double step) {
    SampleCount first = region.First, last = region.Last;
    while (first <= last && !Path(first).Pitched) ++first;
    while (first <= last && !Path(last).Pitched) --last;
    const auto share = static_cast<SampleCount>(kFreeShare * (last - first + 1));
    const SampleCount length = std::min(FramesIn(kFreeMs), share);
    for (SampleCount i = 0; i < length; ++i) {
      if (settings_.LargeTransitionAtBeginning != 0) Free(first + i, step);
      if (settings_.LargeTransitionAtEnd != 0) Free(last - i, step);
    }
  }

  void Free(SampleCount i, double step) {
    Path(i).StepLimit = step * kFreeSteps;
    Path(i).Pull = 0.0;
    free_[static_cast<std::size_t>(i)] = true;
  }

  // The path takes a frame or two at the edge of a run for noise where that is cheaper than to enter the run. A frame
  // that goes on from the pitch beside it is no noise.
  void ReclaimNoise() {
    for (const std::size_t shifts : {std::size_t{1}, kOctaveShifts}) {
      for (SampleCount i = 1; i < Count(); ++i) ReclaimBeside(i, i - 1, shifts);
      for (SampleCount i = Count() - 2; i >= 0; --i) ReclaimBeside(i, i + 1, shifts);
    }
  }

  // Makes noise a pitch again if one of the first `shifts` brings it near the neighbour's.
  void ReclaimBeside(SampleCount i, SampleCount neighbour, std::size_t shifts) {
    if (Path(i).State != PathState::Noise || !IsPitch(neighbour)) return;
    const double off = Path(neighbour).TrueNote() - Path(i).Note;
    const auto fits = [&](double shift) { return std::fabs(off - shift) <= Path(i).StepLimit; };
    const std::span tried(kPitchShifts.data(), shifts);
    const auto shift = std::ranges::find_if(tried, fits);
    if (shift == tried.end()) return;
    Path(i).State = PathState::Pitch;
    Path(i).Shift = static_cast<std::uint8_t>(shift - tried.begin());
  }

  bool AreLinked(SampleCount a, SampleCount b) {
    const double limit = Path(b).StepLimit * (b - a) + kLinkSlack;
    return (b - a - 1) * hopMs_ <= kLinkMs && std::fabs(Path(b).TrueNote() - Path(a).TrueNote()) <= limit;
  }

  std::vector<Island> FindIslands() {
    std::vector<Island> islands;
    auto region = regions_.begin();
    for (SampleCount i = 0; i < Count(); ++i) {
      if (!IsPitch(i)) continue;
      while (region != regions_.end() && region->Last < i) ++region;
      const bool sounds = regions_.empty() || (region != regions_.end() && region->First <= i);
      if (islands.empty() || !AreLinked(islands.back().Last, i)) islands.push_back({i, i, 0, 0.0, false});
      Island& island = islands.back();
      island.Last = i;
      ++island.Count;
      island.PeakLevel = std::max(island.PeakLevel, Level(i));
      island.Sounds = island.Sounds || sounds;
    }
    return islands;
  }

  // The distance of an island to the nearer of its neighbours' ends [semitones]; 0 without a neighbour.
  double Stray(const std::vector<Island>& islands, std::size_t at) {
    std::optional<double> least;
    const auto compare = [&](SampleCount own, SampleCount other) {
      const double off = std::fabs(Path(own).TrueNote() - Path(other).TrueNote());
      least = std::min(off, least.value_or(off));
    };
    if (at > 0) compare(islands[at].First, islands[at - 1].Last);
    if (at + 1 < islands.size()) compare(islands[at].Last, islands[at + 1].First);
    return least.value_or(0.0);
  }

  // Mean change of the step from frame to frame [semitones]: a voice that slides does so evenly.
  double Roughness(const Island& island) {
    double sum = 0.0, previous[2] = {};
    SampleCount count = 0;
    for (SampleCount i = island.First; i <= island.Last; ++i) {
      if (!IsPitch(i)) continue;
      const double note = Path(i).TrueNote();
      if (count >= 2) sum += std::fabs(note - 2.0 * previous[1] + previous[0]);
      previous[0] = std::exchange(previous[1], note);
      ++count;
    }
    return count > 2 ? sum / (count - 2) : 0.0;
  }

  bool IsNoise(const std::vector<Island>& islands, std::size_t at) {
    const Island& island = islands[at];
    const double ms = island.Count * hopMs_;
    if (IsSpeck(island.First, island.Count)) return true;
    if (!island.Sounds && island.PeakLevel < kSoftLevel * peakLevel_) return true;
    if (ms < kRoughMs && Roughness(island) > kRough) return true;
    return ms < kShortMs && (island.PeakLevel < kShortSoftLevel * peakLevel_ || Stray(islands, at) > kStrayOff);
  }

  bool IsSpeck(SampleCount first, SampleCount count) {
    const double periods = count * hop_ / FrqSampleRate * NoteToHz(Path(first).TrueNote());
    return count * hopMs_ < kShortestMs || periods < kFewestPeriods;
  }

  bool IsSilent(SampleCount first, SampleCount end) const {
    for (SampleCount i = first; i < end; ++i) {
      if (Level(i) >= kSilentLevel * peakLevel_) return false;
    }
    return true;
  }

  // A pitch that stands alone for a moment, or in silence, is noise wherever it lies.
  void DropSpecks() {
    for (SampleCount i = 0; i < Count(); ++i) {
      const SampleCount first = i;
      while (i < Count() && Path(i).Pitched) ++i;
      if (first == i || !(IsSpeck(first, i - first) || IsSilent(first, i))) continue;
      for (SampleCount j = first; j < i; ++j) Path(j).State = PathState::Noise;
    }
  }

  void DropIslands() {
    const std::vector<Island> islands = FindIslands();
    for (std::size_t at = 0; at < islands.size(); ++at) {
      if (!IsNoise(islands, at)) continue;
      for (SampleCount i = islands[at].First; i <= islands[at].Last; ++i) {
        if (IsPitch(i)) Path(i).State = PathState::Noise;
      }
    }
  }

  void Mark(SampleCount i, CheckMark mark, double suggestion) {
    marks_[static_cast<std::size_t>(i)] = mark;
    suggestions_[static_cast<std::size_t>(i)] = suggestion;
  }

  double Moved(SampleCount i, std::size_t shift) const {
    return Frame(i).Frequency * std::exp2(kPitchShifts[shift] / 12.0);
  }

  void MarkFactors() {
    for (SampleCount i = 0; i < Count(); ++i) {
      if (IsPitch(i) && Path(i).Shift != 0)
        Mark(i, MarkOfFactor(Frame(i).Frequency / Moved(i, Path(i).Shift)), Moved(i, Path(i).Shift));
    }
  }

  void MarkFar() {
    if (settings_.HasPitchTransition != 0) return;
    std::vector<double> notes;
    for (SampleCount i = 0; i < Count(); ++i) {
      if (IsPitch(i)) notes.push_back(Path(i).TrueNote());
    }
    if (notes.empty()) return;
    const auto middle = notes.begin() + std::ssize(notes) / 2;
    std::ranges::nth_element(notes, middle);
    for (SampleCount i = 0; i < Count(); ++i) {
      const bool isMarked = marks_[static_cast<std::size_t>(i)] != CheckMarkNone;
      if (!IsPitch(i) || isMarked || free_[static_cast<std::size_t>(i)]) continue;
      if (std::fabs(Path(i).TrueNote() - *middle) > kFarthestOff) Mark(i, CheckMarkFar, 0.0);
    }
  }

  // Calls for each run of frames in one state: first frame and the one behind the last.
  template <typename Visit>
  void ForRuns(PathState state, Visit visit) {
    for (SampleCount i = 0; i < Count(); ++i) {
      if (Path(i).State != state) continue;
      const SampleCount first = i;
      while (i < Count() && Path(i).State == state) ++i;
      visit(first, i);
    }
  }

  // Note at frame i on a straight line between the pitches at both ends.
  double Between(SampleCount before, SampleCount after, SampleCount i) {
    const double share = static_cast<double>(i - before) / (after - before);
    return std::lerp(Path(before).TrueNote(), Path(after).TrueNote(), share);
  }

  // Whether a run is nowhere softer than a share of the softer of its ends.
  bool IsAsLoud(SampleCount first, SampleCount end, double share) const {
    return IsAbove(first, end, share * std::min(Level(first - 1), Level(end)));
  }
  bool IsAbove(SampleCount first, SampleCount end, double level) const {
    for (SampleCount i = first; i < end; ++i) {
      if (Level(i) < level) return false;
    }
    return true;
  }

  bool Agree(SampleCount before, SampleCount after, double semitones) {
    return IsPitch(before) && IsPitch(after) &&
           std::fabs(Path(before).TrueNote() - Path(after).TrueNote()) <= semitones;
  }

  // A spike within a tone is drawn over; noise at the edge of one, or in a consonant, has no pitch.
  void MarkNoise() {
    ForRuns(PathState::Noise, [this](SampleCount first, SampleCount end) {
      const bool isSpike =
          end - first <= FramesIn(kSpikeMs) && Agree(first - 1, end, kStrayOff) && IsAsLoud(first, end, kSpikeLevel);
      for (SampleCount i = first; i < end; ++i) {
        Mark(i, CheckMarkNoise, isSpike ? SuggestWithin(i, Between(first - 1, end, i)) : FrqNoPitch);
      }
    });
  }

  // The frame's own pitch by a factor that fits it to the tone around it; the tone's pitch where none does.
  double SuggestWithin(SampleCount i, double note) {
    for (std::size_t shift = 1; shift < kPitchShifts.size(); ++shift) {
      if (std::fabs(Path(i).TrueNoteBy(shift) - note) <= kFactorFit) return Moved(i, shift);
    }
    return NoteToHz(note);
  }

  void MarkGaps() {
    ForRuns(PathState::NoPitch, [this](SampleCount first, SampleCount end) {
      if (!Agree(first - 1, end, kGapAgreement + kGapSteps * Path(first).StepLimit * (end - first + 1))) return;
      const bool isLoud = IsAsLoud(first, end, kGapLevel) && IsAbove(first, end, kGapLeast * peakLevel_);
      const double limit = peakLevel_ <= 0.0 ? kGapMsWithoutLevels : isLoud ? kGapMs : kGapMsAtAnyLevel;
      if ((end - first) * hopMs_ > limit) return;
      for (SampleCount i = first; i < end; ++i) Mark(i, CheckMarkGap, NoteToHz(Between(first - 1, end, i)));
    });
  }

  const CheckFrqSettings& settings_;
  const std::span<const CheckFrame> frames_;
  std::span<const CheckRegion> regions_;
  const double hop_;    // [samples]
  const double hopMs_;  //
  double peakLevel_ = 0.0;
  std::vector<PathFrame> path_;
  std::vector<bool> free_;  // whether a frame lies in a stretch that may move largely
  std::vector<CheckMark> marks_;
  std::vector<double> suggestions_;
};

}  // namespace

bool AreCheckRecords(const CheckFrqSettings* settings, const CheckFrameRecord* frames,
                     const CheckRegionRecord* regions) noexcept {
  return settings && settings->Size == sizeof(CheckFrqSettings) && frames && frames->FrameCount >= 0 &&
         (!regions || HoldsRegions(*regions, frames->FrameCount));
}

std::int32_t CheckMap(const CheckFrqSettings* settings, CheckFrameRecord* frames,
                      const CheckRegionRecord* regions) noexcept {
  if (!AreCheckRecords(settings, frames, regions)) return -1;
  try {
    MapCheck check(*settings, *frames, regions);
    check.Run();
    return check.WriteTo({frames->Frames, static_cast<std::size_t>(frames->FrameCount)});
  } catch (const std::bad_alloc&) {
    return -1;
  }
}

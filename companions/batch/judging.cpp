#include "batch/judging.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "batch/reporttexts.h"
#include "batch/survey.h"
#include "check/checkrules.h"
#include "check/markedruns.h"
#include "check/soundrules.h"
#include "frqmap/checkmark.h"
#include "frqmap/mapkind.h"
#include "voicebank/soundfile.h"

namespace {

constexpr int kLowestNote = 24, kHighestNote = 107;

FrqType FirstKindOf(Bank& bank, const std::wstring& wave, std::optional<FrqType> kind) {
  for (const FrqType each : KindNumbers()) {
    if ((!kind || each == *kind) && bank.HasMap(wave, each)) return each;
  }
  return FrqTypeUnknown;
}

// False without a recording that the map can be of.
bool MarkByEar(CheckFrameRecord& frames, const std::wstring& mapPath) {
  const std::optional<Sound> sound = ReadSound(WavePathFromMapW(mapPath), kMostSecondsHeard);
  if (!sound || frames.Hop <= 0) return false;
  const Hearing unheard = {frames.Hop, static_cast<double>(sound->rate), std::ssize(sound->samples), {}};
  if (!IsMapOf(frames, unheard)) return false;
  const PitchSearch search(sound->samples, sound->rate);
  const Hearing hearing = HearingOf(search, sound->samples.size(), sound->rate, frames.Hop);
  return MarkBySound(frames, hearing, [&] { return &search; }).has_value();
}

}  // namespace

const CheckFrqSettings& CheckSettings::OfBank() {
  std::call_once(asked_, [this] {
    settings_.LowNote = settings_.HighNote = call_.Note ? *call_.Note : MiddleNote();
    settings_.HasPitchTransition = call_.HasTransition;
    settings_.LargeTransitionAtBeginning = call_.BeginsFar;
    settings_.LargeTransitionAtEnd = call_.EndsFar;
  });
  return settings_;
}

int CheckSettings::MiddleNote() {
  std::vector<double> notes;
  for (const std::wstring& wave : bank_.Waves()) {
    FrqMap map;
    const FrqType kind = FirstKindOf(bank_, wave, call_.Kind);
    const auto facts = kind == FrqTypeUnknown ? std::nullopt : LookAtMap(bank_, wave, kind, map);
    if (facts && facts->Voiced > 0) notes.push_back(69.0 + 12.0 * std::log2(facts->Key / 440.0));
  }
  if (notes.empty()) return CheckFrqSettings().LowNote;
  const auto middle = notes.begin() + static_cast<std::ptrdiff_t>(notes.size() / 2);
  std::ranges::nth_element(notes, middle);
  return std::clamp(static_cast<int>(std::lround(*middle)), kLowestNote, kHighestNote);
}

bool JudgeMap(FrqMap& map, const std::wstring& mapPath, CheckSettings& settings) {
  const CheckRecordPtr<CheckFrameRecord> frames = MakeCheckFrames(map, mapPath);
  if (!frames || map.FrameCount <= 0) return false;
  if (!MarkByEar(*frames, mapPath)) {
    const CheckRecordPtr<CheckRegionRecord> regions = MakeCheckRegions(map);
    if (CheckMap(&settings.OfBank(), frames.get(), regions.get()) < 0) return false;
  }
  TakeCheckResults(*frames, map);
  return true;
}

std::vector<Finding> TakeFindings(FrqMap& map, int leastFrames) {
  const FrqMap* const maps[] = {&map};
  std::vector<Finding> findings;
  for (const MarkedRun& run : MarkedRunsOf(maps)) {
    if (run.Last - run.First + 1 < leastFrames) {
      map.ApplyMarks(map.PositionOf(run.First), false);
      continue;
    }
    const double hop = static_cast<double>(map.Hop) / FrqSampleRate;
    findings.push_back({run.First, run.Last, run.First * hop, (run.Last + 1) * hop, run.Mark, run.From, run.To});
  }
  return findings;
}

std::string ReasonText(std::int32_t mark) {
  std::string text(TextOfReason(ReasonOf(mark), ReportLanguage::English));
  text.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(text.front())));
  return text;
}

std::string ReasonName(std::int32_t mark) {
  switch (mark) {
    case CheckMarkOctaveHigh: return "octave-high";
    case CheckMarkOctaveLow: return "octave-low";
    case CheckMarkTwelfth: return "twelfth";
    case CheckMarkFactor: return "factor";
    case CheckMarkNoise: return "noise";
    case CheckMarkGap: return "gap";
    case CheckMarkFar: return "far";
    default: return "other";
  }
}

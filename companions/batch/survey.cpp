#include "batch/survey.h"

#include <algorithm>

#include "base/filesystem.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mapkind.h"
#include "voicebank/waveheader.h"

namespace {

SyllableFacts LookAtWave(const std::wstring& wave) {
  SyllableFacts facts;
  facts.Wave = wave;
  WaveHeader header;
  facts.HasSound = header.Load(wave, true) == 0;
  if (facts.HasSound) facts.Seconds = header.LengthSeconds();
  return facts;
}

}  // namespace

std::optional<MapFacts> LookAtMap(Bank& bank, const std::wstring& wave, FrqType kind, FrqMap& map) {
  if (!bank.HasMap(wave, kind)) return std::nullopt;
  MapFacts facts;
  facts.Kind = kind;
  MrqStore* const entries = kind == FrqTypeMrq ? &bank.Entries() : nullptr;
  if (LoadMap(map, wave, kind, entries) != 0) {
    facts.Fault = FindMapFault(Disk(), MapPathFromWaveW(wave, kind), kind);
    // A file with which nothing is wrong has met what cannot be seen in it.
    if (facts.Fault.Why == MapFault::None) {
      facts.Fault.Why = kind == FrqTypeVs4ufrq ? MapFault::NoLibrary : MapFault::Foreign;
    }
    return facts;
  }
  facts.Frames = map.FrameCount;
  facts.Hop = map.Hop;
  facts.Voiced = static_cast<SampleCount>(
      std::ranges::count_if(map.Frames, [](const FrqFrame& frame) { return frame.Frequency > FrqNoPitch; }));
  facts.Key = map.ShownAverage();
  if (facts.Voiced > 0) {
    facts.Low = map.MinFrequency;
    facts.High = map.MaxFrequency;
  }
  return facts;
}

bool ReadMap(const WaveTask& task, FrqType kind, FrqMap& map, Outcome& outcome) {
  const std::optional<MapFacts> facts = LookAtMap(task.Of, task.Wave, kind, map);
  if (!facts) return false;
  if (facts->Fault.Why == MapFault::None) return true;
  outcome.Faults.push_back(ReadFault(task, *facts));
  return false;
}

SyllableFacts LookAtSyllable(Bank& bank, const std::wstring& wave, std::optional<FrqType> kind) {
  SyllableFacts facts = LookAtWave(wave);
  for (const FrqType each : KindNumbers()) {
    if (kind && each != *kind) continue;
    FrqMap map;
    if (const std::optional<MapFacts> found = LookAtMap(bank, wave, each, map)) facts.Maps.push_back(*found);
  }
  return facts;
}

SyllableFacts LookAtSyllable(Bank& bank, const std::wstring& wave, FrqType shown, FrqMap& shownMap) {
  SyllableFacts facts = LookAtWave(wave);
  for (const FrqType each : KindNumbers()) {
    FrqMap other;
    const auto found = LookAtMap(bank, wave, each, each == shown ? shownMap : other);
    if (found) facts.Maps.push_back(*found);
  }
  return facts;
}

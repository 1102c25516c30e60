// check: what is wrong in the maps of a bank, and with --fix the taking over of what is suggested.
#include <array>
#include <cstdio>
#include <map>

#include "batch/commands.h"
#include "batch/judging.h"
#include "batch/keeping.h"
#include "batch/machine.h"
#include "batch/survey.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mapkind.h"

namespace {

std::string SuggestionText(const Finding& finding) {
  if (finding.To == 0.0) return "";
  const std::string to = finding.To > FrqNoPitch ? NoteText(finding.To) : "no pitch";
  return ", " + (finding.From > 0.0 ? NoteText(finding.From) : std::string("no pitch")) + " -> " + to;
}

std::string LineOfFinding(const WaveTask& task, FrqType kind, const Finding& finding) {
  std::array<char, 96> place{};
  std::snprintf(place.data(), place.size(), ": %.3f..%.3f s, frames %ld..%ld: ", finding.Begin, finding.End,
                static_cast<long>(finding.First), static_cast<long>(finding.Last));
  return task.Name + " (" + NameOfKind(kind) + ')' + place.data() + ReasonText(finding.Mark) + SuggestionText(finding) +
         '\n';
}

Json JsonOfFinding(const WaveTask& task, FrqType kind, const Finding& finding) {
  Json line = {{"type", "finding"},
               {"bank", Printable(TypedForm(task.Of.Folder()))},
               {"wave", Printable(TypedForm(task.Of.NameOf(task.Wave)))},
               {"kind", NameOfKind(kind)},
               {"begin", finding.Begin},
               {"end", finding.End},
               {"first", finding.First},
               {"last", finding.Last},
               {"reason", ReasonName(finding.Mark)}};
  line["from"] = finding.From > 0.0 ? Json(finding.From) : Json();
  line["to"] = finding.To > FrqNoPitch ? Json(finding.To) : Json();
  line["takesPitchAway"] = finding.To == FrqNoPitch;
  return line;
}

class Check {
 public:
  Check(const Order& call, const std::vector<std::unique_ptr<Bank>>& banks) : call_(call) {
    for (const auto& bank : banks) settings_.try_emplace(bank.get(), *bank, call);
  }

  Outcome One(const WaveTask& task) {
    Outcome outcome;
    outcome.Sum.Syllables = 1;
    for (const FrqType kind : KindNumbers()) {
      if (!call_.Kind || kind == *call_.Kind) CheckKind(task, kind, outcome);
    }
    outcome.Sum.Affected = outcome.Sum.Found > 0 ? 1 : 0;
    return outcome;
  }

 private:
  void CheckKind(const WaveTask& task, FrqType kind, Outcome& outcome) {
    FrqMap map;
    if (!ReadMap(task, kind, map, outcome)) return;
    ++outcome.Sum.Maps;
    if (!JudgeMap(map, MapPathFromWaveW(task.Wave, kind), settings_.at(&task.Of))) return;
    const std::vector<Finding> findings = TakeFindings(map, call_.LeastFrames);
    outcome.Sum.Found += findings.size();
    for (const Finding& finding : findings) {
      outcome.Lines += call_.IsJson ? LineOf(JsonOfFinding(task, kind, finding)) : LineOfFinding(task, kind, finding);
    }
    if (call_.Fixes && !findings.empty()) Fix(task, kind, map, outcome);
  }

  // As all that is suggested is taken over in the windows, and then saved.
  void Fix(const WaveTask& task, FrqType kind, FrqMap& map, Outcome& outcome) const {
    const auto isTaken = [](const FrqFrame& frame) { return frame.Mark != 0 && frame.SuggestedFrequency != 0.0; };
    const auto frames = static_cast<std::size_t>(std::ranges::count_if(map.Frames, isTaken));
    if (frames == 0) return;
    map.ApplyMarks(-1, true);
    outcome.Sum.Frames += frames;
    if (call_.IsDryRun) return;
    MrqStore* const entries = kind == FrqTypeMrq ? &task.Of.Entries() : nullptr;
    if (SaveMap(map, task.Wave, kind, entries) == 0) return;
    outcome.Faults.push_back(task.Name + ": the " + NameOfKind(kind) + " map cannot be written: " + LastFault());
  }

  const Order& call_;
  std::map<const Bank*, CheckSettings> settings_;
};

}  // namespace

void CheckBanks(Context& context, Keeping& keeping) {
  const auto banks = BanksOf(context);
  Check check(context.Call, banks);
  const KeptBecauseScope because(keeping.Safety(), KeptBecause::Saved);
  ForEachWave(context, banks, "checking", [&](const WaveTask& task) { return check.One(task); });
  const Tally& sum = context.Sum;
  if (context.Call.IsJson) {
    context.Out.Write(LineOf({{"type", "sum"},
                              {"banks", banks.size()},
                              {"syllables", sum.Syllables},
                              {"maps", sum.Maps},
                              {"findings", sum.Found},
                              {"affected", sum.Affected},
                              {"fixedFrames", sum.Frames},
                              {"faults", sum.Failed}}));
    return;
  }
  std::string fixed;
  if (context.Call.Fixes) {
    fixed = std::string(context.Call.IsDryRun ? ", would fix " : ", fixed ") + Counted(sum.Frames, "frame");
  }
  context.Out.Say(Counted(sum.Maps, "map") + " checked, " + Counted(sum.Found, "finding") + " in " +
                  Counted(sum.Affected, "syllable") + fixed + ", " + Counted(sum.Failed, "fault"));
}

#include "batch/mapchange.h"

#include "batch/machine.h"
#include "batch/survey.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mapkind.h"

std::string LineOfChange(const Context& context, const WaveTask& task, FrqType kind, const std::string& what) {
  if (!context.Call.IsJson) return task.Name + " (" + NameOfKind(kind) + "): " + what + '\n';
  return LineOf({{"type", "change"},
                 {"bank", Printable(TypedForm(task.Of.Folder()))},
                 {"wave", Printable(TypedForm(task.Of.NameOf(task.Wave)))},
                 {"kind", NameOfKind(kind)},
                 {"change", what},
                 {"written", !context.Call.IsDryRun}});
}

std::string WriteFault(const WaveTask& task, FrqType kind) {
  return task.Name + ": the " + NameOfKind(kind) + " map cannot be written: " + LastFault();
}

Outcome ChangeMaps(const Context& context, const WaveTask& task, const MapChange& change) {
  Outcome outcome;
  outcome.Sum.Syllables = 1;
  for (const FrqType kind : KindNumbers()) {
    if (context.Call.Kind && kind != *context.Call.Kind) continue;
    FrqMap map;
    if (!ReadMap(task, kind, map, outcome)) continue;
    const std::string what = change(map, kind);
    if (what.empty()) continue;
    MrqStore* const entries = kind == FrqTypeMrq ? &task.Of.Entries() : nullptr;
    if (!context.Call.IsDryRun && SaveMap(map, task.Wave, kind, entries) != 0) {
      outcome.Faults.push_back(WriteFault(task, kind));
      continue;
    }
    ++outcome.Sum.Maps;
    outcome.Lines += LineOfChange(context, task, kind, what);
  }
  return outcome;
}

void SayChanges(Context& context, const std::string& done) {
  const Tally& sum = context.Sum;
  if (context.Call.IsJson) {
    context.Out.Write(LineOf({{"type", "sum"},
                              {"syllables", sum.Syllables},
                              {"maps", sum.Maps},
                              {"written", !context.Call.IsDryRun},
                              {"faults", sum.Failed}}));
    return;
  }
  const std::string would = context.Call.IsDryRun ? " would be " : " ";
  context.Out.Say(Counted(sum.Maps, "map") + " of " + Counted(sum.Syllables, "syllable") + would + done + ", " +
                  Counted(sum.Failed, "fault"));
}

// convert: the maps of one kind as maps of another, which are made anew; the first stay.
#include "batch/commands.h"
#include "batch/keeping.h"
#include "batch/mapchange.h"
#include "batch/survey.h"
#include "frqmap/mapfiles.h"

namespace {

Outcome ConvertOne(const Context& context, const WaveTask& task) {
  const Order& call = context.Call;
  Outcome outcome;
  outcome.Sum.Syllables = 1;
  FrqMap map;
  if (!ReadMap(task, call.From, map, outcome)) return outcome;
  if (!call.IsDryRun) {
    MrqStore* const entries = call.To == FrqTypeMrq ? &task.Of.Entries() : nullptr;
    if (SaveMap(map, task.Wave, call.To, entries) != 0) {
      outcome.Faults.push_back(WriteFault(task, call.To));
      return outcome;
    }
  }
  outcome.Sum.Maps = 1;
  outcome.Lines = LineOfChange(context, task, call.To, "from " + NameOfKind(call.From));
  return outcome;
}

}  // namespace

void ConvertMaps(Context& context, Keeping& keeping) {
  if (context.Call.From == FrqTypeVs4ufrq || context.Call.To == FrqTypeVs4ufrq) {
    return context.Fail("maps of the kind vs4ufrq are read and made by a library that this program does not use");
  }
  const auto banks = BanksOf(context);
  const KeptBecauseScope because(keeping.Safety(), KeptBecause::Converted);
  ForEachWave(context, banks, "converting", [&](const WaveTask& task) { return ConvertOne(context, task); });
  SayChanges(context, "converted");
}

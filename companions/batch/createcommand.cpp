// create: maps for waves, by the analysis in this program or by a resampler.
#include <mutex>

#include "base/filesystem.h"
#include "base/path.h"
#include "batch/commands.h"
#include "batch/keeping.h"
#include "batch/machine.h"
#include "batch/mapchange.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqmap.h"
#include "resampler/mrqentry.h"
#include "resampler/render.h"
#include "resampler/resamplerkind.h"
#include "voicebank/soundfile.h"

namespace {

class Creation {
 public:
  Creation(const Context& context, FrqType kind) : context_(context), kind_(kind) {}

  Outcome One(const WaveTask& task) {
    Outcome outcome;
    outcome.Sum.Syllables = 1;
    const bool isThere = task.Of.HasMap(task.Wave, kind_);
    if (isThere && !context_.Call.MakesAll) return outcome;
    const std::string fault = context_.Call.IsDryRun ? std::string() : Make(task);
    if (!fault.empty()) {
      outcome.Faults.push_back(task.Name + ": " + fault);
      return outcome;
    }
    outcome.Sum.Maps = 1;
    outcome.Lines = LineOfChange(context_, task, kind_, isThere ? "made anew" : "made");
    return outcome;
  }

 private:
  std::string Make(const WaveTask& task) {
    const std::wstring map = MapPathFromWaveW(task.Wave, kind_);
    MrqStore* const entries = kind_ == FrqTypeMrq ? &task.Of.Entries() : nullptr;
    if (!KeepMapFile(map, entries)) return "the map that is there could not be kept, and stays";
    if (!context_.Call.Resampler.empty()) {
      std::string reason;
      const std::wstring resampler = FullPathOfTyped(context_.Call.Resampler);
      return RunResampler(resampler, task.Wave, kind_, task.Of.Entries(), reason) ? "" : reason;
    }
    const std::optional<Sound> sound = ReadRecording(task.Wave);
    if (!sound) return "the wave cannot be read";
    FrqMap made = MakeMap(*sound);
    // The files that an analysis kept beside the old map are not of this one.
    for (const std::wstring& companion : MapCompanions(map)) Disk().Delete(companion);
    const bool isWritten =
        kind_ == FrqTypeMrq ? WriteEntry(task.Wave, made) : SaveMap(made, task.Wave, kind_, nullptr) == 0;
    return isWritten ? "" : "the map cannot be written: " + LastFault();
  }

  // Writes an entry of desc.mrq as the bundled resampler does.
  bool WriteEntry(const std::wstring& wave, const FrqMap& made) {
    Disk().Delete(LlsmPathFromWave(wave));
    const std::lock_guard lock(entries_);
    return SaveMrqEntry(Disk(), PathIn(FolderOf(wave), L"desc.mrq"), MrqNameOf(wave), EntryOfMade(made),
                        MrqStore::PresentTime());
  }

  const Context& context_;
  const FrqType kind_;
  std::mutex entries_;
};

}  // namespace

void CreateMaps(Context& context, Keeping& keeping) {
  const Order& call = context.Call;
  const FrqType kind =
      !call.Resampler.empty() ? GetResamplerKind(FullPathOfTyped(call.Resampler)) : call.Kind.value_or(FrqTypeFrq);
  if (kind == FrqTypeVs4ufrq) {
    return context.Fail("maps of the kind vs4ufrq are made by a library that this program does not use");
  }
  const auto banks = BanksOf(context);
  Creation creation(context, kind);
  const KeptBecauseScope because(keeping.Safety(), KeptBecause::MadeAnew);
  ForEachWave(context, banks, "making maps", [&](const WaveTask& task) { return creation.One(task); });
  SayChanges(context, "made");
}

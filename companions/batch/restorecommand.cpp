// restore: maps as they were before a run of this program wrote over them.
#include <chrono>
#include <ctime>

#include "base/filesystem.h"
#include "base/path.h"
#include "batch/commands.h"
#include "batch/keeping.h"
#include "batch/machine.h"
#include "frqmap/mapfiles.h"

namespace {

std::string TimeText(std::int64_t seconds) {
  const auto time = static_cast<std::time_t>(seconds);
  char text[32] = "";
  if (const std::tm* const local = std::localtime(&time)) std::strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", local);
  return text;
}

void TellRuns(Context& context, const std::vector<Keeping::Run>& runs) {
  for (std::size_t i = 0; i < runs.size(); ++i) {
    const std::string time = TimeText(runs[i].Time);
    context.Out.Write(context.Call.IsJson
                          ? LineOf({{"type", "run"}, {"run", i + 1}, {"time", time}, {"maps", runs[i].Maps.size()}})
                          : std::to_string(i + 1) + ": " + time + ", " + Counted(runs[i].Maps.size(), "map") + "\n");
  }
}

void PutBack(Context& context, Keeping& keeping, MrqStore& entries, const KeptMap& kept) {
  const std::string name = Printable(TypedForm(kept.MapPath));
  if (!context.Call.IsDryRun) {
    const std::optional<Bytes> bytes = keeping.Safety().Kept().Read(kept);
    keeping.Safety().Kept().Forget(kept.MapPath);
    if (!bytes) return context.Fail(name + ": what was kept is damaged");
    if (RestoreMapFile(kept.MapPath, *bytes, &entries) != 0) {
      return context.Fail(name + ": cannot be written: " + LastFault());
    }
  }
  ++context.Sum.Maps;
  context.Out.Write(context.Call.IsJson
                        ? LineOf({{"type", "restored"}, {"map", name}, {"written", !context.Call.IsDryRun}})
                        : name + '\n');
}

}  // namespace

// The maps that are there now are kept in turn, so that a restore can be taken back as well.
void RestoreMaps(Context& context, Keeping& keeping) {
  const KeptBecauseScope because(keeping.Safety(), KeptBecause::PutBack);
  for (const std::string& typed : context.Call.Folders) {
    const std::wstring folder = FullPathOfTyped(typed);
    const std::vector<Keeping::Run> runs = keeping.RunsBelow(folder);
    if (context.Call.ListsRuns) {
      TellRuns(context, runs);
      continue;
    }
    if (static_cast<std::size_t>(context.Call.Run) > runs.size()) {
      context.Fail(Printable(TypedForm(folder)) + ": nothing is kept of such a run");
      continue;
    }
    MrqStore entries;
    for (const KeptMap& kept : runs[static_cast<std::size_t>(context.Call.Run) - 1].Maps) {
      if (FrqTypeFromPathW(kept.MapPath) == FrqTypeMrq && !entries.HasFolder(FolderOf(kept.MapPath))) {
        entries.LoadFolder(FolderOf(kept.MapPath));
      }
      if (!context.Stop) PutBack(context, keeping, entries, kept);
    }
  }
  if (context.Call.ListsRuns) return;
  if (context.Call.IsJson) {
    context.Out.Write(LineOf({{"type", "sum"},
                              {"maps", context.Sum.Maps},
                              {"written", !context.Call.IsDryRun},
                              {"faults", context.Sum.Failed}}));
    return;
  }
  context.Out.Say(Counted(context.Sum.Maps, "map") + (context.Call.IsDryRun ? " would be put back, " : " put back, ") +
                  Counted(context.Sum.Failed, "fault"));
}

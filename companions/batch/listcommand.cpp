// list: each wave with its maps.
#include <array>
#include <cmath>
#include <cstdio>

#include "batch/commands.h"
#include "batch/machine.h"
#include "batch/survey.h"

namespace {

int PercentVoiced(const MapFacts& map) {
  return map.Frames > 0 ? static_cast<int>(std::lround(100.0 * map.Voiced / map.Frames)) : 0;
}

std::string TableLine(const std::string& name, double seconds, const MapFacts& map) {
  std::array<char, 160> text{};
  if (map.Fault.Why != MapFault::None) {
    std::snprintf(text.data(), text.size(), "%-7s cannot be read: %-38s", NameOfKind(map.Kind).c_str(),
                  FaultText(map.Fault).c_str());
  } else {
    const std::string range = NoteText(map.Low) + ".." + NoteText(map.High);
    std::snprintf(text.data(), text.size(), "%-7s %7.2f s %6ld %4d %% %-8s %-18s", NameOfKind(map.Kind).c_str(),
                  seconds, static_cast<long>(map.Frames), PercentVoiced(map), NoteText(map.Key).c_str(), range.c_str());
  }
  return std::string(text.data()) + ' ' + name + '\n';
}

Json JsonOf(const WaveTask& task, const SyllableFacts& syllable, const MapFacts* map) {
  Json line = {{"type", "map"},
               {"bank", Printable(TypedForm(task.Of.Folder()))},
               {"wave", Printable(TypedForm(task.Of.NameOf(task.Wave)))}};
  line["seconds"] = syllable.HasSound ? Json(syllable.Seconds) : Json();
  line["kind"] = map ? Json(NameOfKind(map->Kind)) : Json();
  if (!map) return line;
  if (map->Fault.Why != MapFault::None) {
    line["fault"] = FaultText(map->Fault);
    return line;
  }
  line["frames"] = map->Frames;
  line["hop"] = map->Hop;
  line["voiced"] = map->Frames > 0 ? static_cast<double>(map->Voiced) / map->Frames : 0.0;
  line["key"] = map->Key;
  line["lowest"] = map->Voiced > 0 ? Json(map->Low) : Json();
  line["highest"] = map->Voiced > 0 ? Json(map->High) : Json();
  return line;
}

Outcome ListOne(const WaveTask& task, const Order& call) {
  const SyllableFacts syllable = LookAtSyllable(task.Of, task.Wave, call.Kind);
  Outcome outcome;
  outcome.Sum.Syllables = 1;
  if (!syllable.HasSound) outcome.Faults.push_back(task.Name + ": the wave cannot be read");
  for (const MapFacts& map : syllable.Maps) {
    ++outcome.Sum.Maps;
    if (map.Fault.Why != MapFault::None) outcome.Faults.push_back(ReadFault(task, map));
    outcome.Lines += call.IsJson ? LineOf(JsonOf(task, syllable, &map)) : TableLine(task.Name, syllable.Seconds, map);
  }
  if (syllable.Maps.empty()) {
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%-7s %7.2f s %-42s", "-", syllable.Seconds, "no map");
    outcome.Lines =
        call.IsJson ? LineOf(JsonOf(task, syllable, nullptr)) : std::string(text.data()) + ' ' + task.Name + '\n';
  } else {
    ++outcome.Sum.Affected;  // has a map
  }
  return outcome;
}

}  // namespace

void ListBanks(Context& context) {
  const auto banks = BanksOf(context);
  if (!context.Call.IsJson && !banks.empty()) {
    context.Out.Write("kind     seconds frames voiced key      range              wave\n");
  }
  ForEachWave(context, banks, "reading", [&](const WaveTask& task) { return ListOne(task, context.Call); });
  const Tally& sum = context.Sum;
  if (context.Call.IsJson) {
    context.Out.Write(LineOf({{"type", "sum"},
                              {"banks", banks.size()},
                              {"syllables", sum.Syllables},
                              {"withMap", sum.Affected},
                              {"maps", sum.Maps},
                              {"faults", sum.Failed}}));
    return;
  }
  context.Out.Say(Counted(sum.Syllables, "syllable") + " in " + Counted(banks.size(), "bank") + ", " +
                  TextOfCount(static_cast<std::int64_t>(sum.Syllables - sum.Affected)) + " without a map, " +
                  Counted(sum.Maps, "map") + ", " + Counted(sum.Failed, "fault"));
}

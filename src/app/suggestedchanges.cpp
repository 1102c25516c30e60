#include "app/suggestedchanges.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include "base/path.h"
#include "base/text.h"
#include "check/markedruns.h"
#include "dialogs/suggestionsdlg.h"
#include "frqctrl/tabletip.h"
#include "frqmap/frqmap.h"
#include "resources/ids.h"

namespace {

std::vector<MarkedRun> RunsOf(Document& syllables) {
  const std::lock_guard reading(syllables);
  std::vector<const FrqMap*> maps;
  for (int index = 0; index < syllables.State().Entries; ++index) maps.push_back(syllables.Maps(index).Map);
  return MarkedRunsOf(maps);
}

std::wstring NameOf(Document& syllables, int index) {
  return FileNameOf(syllables.Facts(index).Path);
}

CSuggestionsDlg::Line LineOf(Document& syllables, const MarkedRun& run) {
  return {NameOf(syllables, run.Index), FormatText(L"%d - %d", run.First + 1, run.Last + 1),
          PitchText(ReadPitch(run.From)), PitchText(ReadPitch(run.To)),
          TextOfMark(static_cast<std::uint32_t>(run.Mark), std::nullopt)};
}

}  // namespace

std::wstring TextOfRun(Document& syllables, int index, SampleCount sample) {
  SampleCount frame = -1;
  {
    const std::lock_guard reading(syllables);
    const FrqMap* const map = syllables.Maps(index).Map;
    if (map && map->Hop > 0) frame = sample / map->Hop;
  }
  const std::vector<MarkedRun> runs = RunsOf(syllables);
  const auto run = std::ranges::find_if(
      runs, [&](const MarkedRun& each) { return each.Index == index && each.First <= frame && frame <= each.Last; });
  if (run == runs.end()) return {};
  const std::wstring why =
      TextOfMark(static_cast<std::uint32_t>(run->Mark), run->Changes() ? ReadPitch(run->To) : std::nullopt);
  return FormatText(LoadResString(IDS_RUN).c_str(), static_cast<int>(run - runs.begin()) + 1,
                    static_cast<int>(runs.size()), NameOf(syllables, index).c_str(), why.c_str());
}

bool ShowSuggestions(HWND editor, const FileListSender& list, Document& syllables, FramePane& frames) {
  std::vector<MarkedRun> runs = RunsOf(syllables);
  std::erase_if(runs, [](const MarkedRun& run) { return !run.Changes(); });
  if (runs.empty()) return false;
  CSuggestionsDlg dialog;
  dialog.ParentWindow = editor;
  dialog.List = list.Window();
  for (const MarkedRun& run : runs) dialog.Lines.push_back(LineOf(syllables, run));
  dialog.Show = [&](std::size_t line) {
    const MarkedRun& run = runs[line];
    list.SelectSyllable(run.Index);
    SampleCount first = 0, last = -1;
    {
      const std::lock_guard reading(syllables);
      if (const FrqMap* const map = syllables.Maps(run.Index).Map) {
        first = map->PositionOf(run.First);
        last = map->PositionOf(run.Last);
      }
    }
    if (first <= last) frames.ShowMarks(first, last);
  };
  if (dialog.Run(false) != IDOK) return true;
  list.Modify(-1, 0);
  list.ShowModifyBar(false, true);
  return true;
}

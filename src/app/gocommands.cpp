#include "app/gocommands.h"

#include "resources/ids.h"
#include "window/waitcursor.h"

namespace {

bool IsWanted(UINT command, Voicebank& bank, int index) {
  const EntryFacts facts = bank.Maps.Facts(index);
  switch (command) {
    case ID_GO_NEXTUNSAVED: return facts.Edited;
    case ID_GO_NEXTUNREADABLE: return facts.HasMap && !bank.Maps.EnsureLoaded(index, Document::OnFailure::KeepSaved);
    default: return !facts.HasMap;
  }
}

}  // namespace

bool GoToSyllable(UINT command, const FileListSender& list, Voicebank& bank) {
  const WaitCursor waiting;
  const int count = bank.Maps.State().Entries, from = bank.Maps.Current();
  for (int step = 1; step <= count; ++step) {
    const int index = (from + step) % count;
    if (index == from || !IsWanted(command, bank, index)) continue;
    list.SelectSyllable(index);
    return true;
  }
  return false;
}

bool GoToMark(bool forward, const FileListSender& list, int index, SampleCount sample) {
  FindFailureRecord record{index, sample, forward, kShowWithBar, false};
  list.FindFailure(record);
  return record.Found && (record.Index != index || record.Sample != sample);
}

// What the bar asks for that goes through the marks of a check.
#include <windows.h>

#include "app/filelistdlg.h"
#include "check/failuresearch.h"

void CFileListDlg::FindFailure(FindFailureRecord& record) {
  record.Found = false;
  std::vector<const FrqMap*> maps;
  for (const SyllableEntry& entry : Entries) maps.push_back(&entry.Map);
  const auto found = ::FindFailure(maps, {record.Index, record.Sample}, record.Forward != 0);
  if (!found) return;
  record.Index = found->Index;
  record.Sample = found->Sample;
  record.Found = true;
  if (record.Show) LocateFailure(record.Index, record.Sample);
}

// The syllable comes first, so that the run is selected in its own map.
void CFileListDlg::LocateFailure(int index, SampleCount sample) {
  const SyllableEntry* const entry = EntryAt(index);
  SampleCount first = 0, last = 0;
  if (!entry || !IsWindowEnabled(Hwnd) || entry->Map.GetMarkRange(sample, first, last) != 0) return;
  SelectSyllable(index);
  ToEditor().ShowFailure(first, last);
}

void CFileListDlg::ApplyFailure(int index, SampleCount sample, bool apply) {
  if (index < 0) {
    for (int each = 0; each < static_cast<int>(Entries.size()); ++each) ApplyToEntry(each, -1, apply, false);
    Windows.ToThumbnail().PostRefreshAll();
  } else {
    if (!ApplyToEntry(index, sample, apply, true)) return;
    Windows.ToThumbnail().PostRefreshItem(index);
  }
  ToEditor().RefreshMap(true);
}

// False for an entry without marks. With marks, but no run at the position, the average is computed anew all the same,
// whatever it was, and the entry is edited.
bool CFileListDlg::ApplyToEntry(int index, SampleCount sample, bool apply, bool notify) {
  SyllableEntry* const entry = EntryAt(index);
  if (!entry || !entry->Map.HasMarks) return false;
  entry->Map.ApplyMarks(sample, apply);
  if (apply) {
    entry->Map.Average = entry->Map.ComputeAverage(-1);
    SetEdited(index, true, notify);
  }
  SetMarkedCell(index, entry->Map.HasMarks);
  return true;
}

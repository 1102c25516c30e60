// What the list does with the maps that it owns: loading them when they are first needed, bringing them to the editor,
// and saving them.
#include <new>

#include "app/filelistdlg.h"
#include "frqmap/mapfiles.h"

// The road from a click to the editor: both sends come back only when the editor has taken the syllable over, and it
// asks back through messages meanwhile. A folder that is opened in between ends it: the entry has gone then.
void CFileListDlg::ShowSyllable(int index) {
  SyllableEntry* const entry = EntryAt(index);
  if (!entry) return;
  const bool shown = index == CurrentIndex && !entry->Map.Loaded;
  CurrentIndex = index;
  EnsureLoaded(*entry);
  const bool loadedLate = shown && entry->Map.Loaded;
  const int fill = FillCount;
  const std::wstring path = entry->Path;
  ToEditor().SetSyllable(path.c_str());
  if (fill != FillCount) return;
  ToEditor().SetMap(&entry->SavedMap, &entry->Map);
  // To the editor this is the map that it shows already.
  if (loadedLate && fill == FillCount) ToEditor().RefreshMap(true);
}

// A load that fails leaves an empty map and says nothing: a row without a map goes this way as well, and the load is
// tried again the next time.
void CFileListDlg::EnsureLoaded(SyllableEntry& entry) {
  if (!entry.Map.Loaded) RereadMap(entry);
}

// A map that memory does not hold twice is as good as one that cannot be read.
void CFileListDlg::RereadMap(SyllableEntry& entry) {
  try {
    LoadMap(entry.Map, entry.Path, FrqType, &Store);
    entry.Map.CopyTo(entry.SavedMap);
  } catch (const std::exception&) {
    entry.Map.Clear();
    entry.SavedMap.Clear();
  }
}

DWORD CFileListDlg::SaveCurrent(bool deleteLlsm) {
  DWORD error = 0;
  SyllableEntry* const entry = EntryAt(CurrentIndex);
  if (entry && entry->Edited) SaveEntry(*entry, CurrentIndex, deleteLlsm, error);
  return error;
}

// Stops at the first failure: the entries behind it stay edited.
DWORD CFileListDlg::SaveAll(bool deleteLlsm) {
  DWORD error = 0;
  for (int index = 0; index < static_cast<int>(Entries.size()); ++index) {
    SyllableEntry& entry = Entries[static_cast<std::size_t>(index)];
    if (entry.Edited && SaveEntry(entry, index, deleteLlsm, error) != 0) break;
  }
  return error;
}

// The code is what the file layer left behind. A save that fails before it touches a file leaves none, and then nobody
// hears of it: the entry just stays edited.
int CFileListDlg::SaveEntry(SyllableEntry& entry, int index, bool deleteLlsm, DWORD& error) {
  SetLastError(ERROR_SUCCESS);
  if (SaveMap(entry.Map, entry.Path, FrqType, &Store) != 0) {
    error = GetLastError();
    return -1;
  }
  SetEdited(index, false, true);
  ++SavedCount;
  if (deleteLlsm) {
    // Whatever the kind of map: the analysis beside the wave is out of date.
    DeleteFileW(LlsmPathFromWave(entry.Path).c_str());
    UpdateLlsmCell(index);
  }
  return 0;
}

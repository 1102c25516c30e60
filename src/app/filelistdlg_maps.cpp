// What the list does with the maps that it owns: loading them when they are first needed, bringing them to the editor,
// and saving them.
#include <exception>

#include "app/filelistdlg.h"
#include "base/path.h"
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

void CFileListDlg::RereadMap(SyllableEntry& entry) {
  // A load that fails makes its empty map the saved one too.
  if (LoadEntry(entry) != 0) entry.Map.CopyTo(entry.SavedMap);
}

// Reads both maps of an entry; a failure leaves the working one empty and the saved one as it was. A map that memory
// does not hold twice is as good as one that cannot be read.
int CFileListDlg::LoadEntry(SyllableEntry& entry) {
  try {
    const int result = LoadMap(entry.Map, entry.Path, FrqType, &Store);
    if (result == 0) entry.Map.CopyTo(entry.SavedMap);
    return result;
  } catch (const std::exception&) {
    entry.Map.Clear();
    return -1;
  }
}

// The maps that have edits, or all. True if the current one came. One whose file cannot be read is left empty and as
// edited as it was, and nobody hears of it.
bool CFileListDlg::ReloadMaps(bool all) {
  bool current = false;
  for (int index = 0; index < static_cast<int>(Entries.size()); ++index) {
    SyllableEntry& entry = Entries[static_cast<std::size_t>(index)];
    if (!all && !(entry.Map.Loaded && entry.Edited)) continue;
    const std::wstring folder = FolderOf(entry.Path);
    if (FrqType == FrqTypeMrq && !Store.HasFolder(folder)) Store.LoadFolder(folder);
    if (LoadEntry(entry) != 0) continue;
    current = current || index == CurrentIndex;
    SetEdited(index, false, true);
  }
  return current;
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
  try {
    if (SaveMap(entry.Map, entry.Path, FrqType, &Store) != 0) {
      error = GetLastError();
      return -1;
    }
  } catch (const std::exception&) {
    error = ERROR_NOT_ENOUGH_MEMORY;  // a file is made whole in memory first
    return -1;
  }
  SetEdited(index, false, true);
  ++SavedCount;
  if (deleteLlsm) {
    // Whatever the kind of map: the analysis beside the wave is out of date.
    DeleteFileW(LlsmPathFromWave(entry.Path).c_str());
    Rows.UpdateLlsm(index, entry.Path, FrqType);
  }
  return 0;
}

// What the messages of the editor and of jobs ask of the maps: to save them, to read them again, to say how they are.
#include "app/filelistdlg.h"

#include <mutex>

#include "app/mapsearch.h"

DWORD CFileListDlg::SaveCurrent(bool deleteLlsm) {
  DWORD error = 0;
  const int current = Syllables.Current();
  if (Syllables.Facts(current).Edited) SaveEntry(current, deleteLlsm, error);
  return error;
}

// Stops at the first failure: the syllables behind it stay edited.
DWORD CFileListDlg::SaveAll(bool deleteLlsm) {
  DWORD error = 0;
  for (int index = 0; index < Syllables.State().Entries; ++index) {
    if (Syllables.Facts(index).Edited && SaveEntry(index, deleteLlsm, error) != 0) break;
  }
  return error;
}

// A save that fails before it touches a file leaves no code, and then nobody hears of it: the syllable just stays
// edited.
int CFileListDlg::SaveEntry(int index, bool deleteLlsm, DWORD& error) {
  std::uint32_t code = 0;
  const int result = Syllables.Save(index, deleteLlsm, code);
  if (result != 0) error = code;
  if (result == 0 && deleteLlsm) Rows.UpdateLlsm(index, Syllables.Facts(index).Path, Bank.Files.Kind);
  return result;
}

// The maps that have edits, as one gesture, or all of them, as their files are now. True if the current one came. One
// whose file cannot be read is left empty and as edited as it was.
bool CFileListDlg::ReloadMaps(bool all) {
  using enum Document::OnFailure;
  bool current = false;
  const Document::Scope gesture(Syllables, Gesture::ReloadAll);
  for (int index = 0; index < Syllables.State().Entries; ++index) {
    const EntryFacts facts = Syllables.Facts(index);
    if (!all && !(facts.Loaded && facts.Edited)) continue;
    const int result =
        all ? Syllables.ReadAfresh(index, KeepSaved, false) : Syllables.Reload(index, KeepSaved, false);
    if (result == 0 && index == Syllables.Current()) current = true;
  }
  return current;
}

// The sender may name the map that it means: a click on another row may be under way.
void CFileListDlg::SetCurrentEdited(bool edited, const FrqMap* map) {
  const int named = Syllables.IndexOf(map);
  Syllables.SetEdited(named >= 0 ? named : Syllables.Current(), edited);
}

// To clear the flag of an edited syllable is to say that the memory no longer counts: its map is read again.
void CFileListDlg::SetEditedByMessage(int index, bool edited) {
  const int meant = index < 0 ? Syllables.Current() : index;
  if (Syllables.Facts(meant).Edited && !edited) {
    Syllables.ReadAfresh(meant, Document::OnFailure::EmptySaved, true);
  } else {
    Syllables.SetEdited(meant, edited);
  }
}

void CFileListDlg::SetHasMap(int index, bool hasMap, bool notify) {
  const EntryFacts facts = Syllables.Facts(index);
  Syllables.SetHasMap(index, hasMap, facts.FrameEstimate);
  if (notify && facts.HasMap && !hasMap) Windows.ToThumbnail().PostRefreshItem(index);
  if (!facts.Path.empty()) Rows.UpdateLlsm(index, facts.Path, Bank.Files.Kind);
}

// To clear the cell is to clear the marks; a set one leaves the map alone.
void CFileListDlg::SetFailed(int index, bool failed) {
  if (failed) return Rows.SetCell(index, kMarkedColumn, true);
  Syllables.Mark(index, [](FrqMap& map) { map.ApplyMarks(-1, false); }, true);
}

// A negative index asks for any syllable.
bool CFileListDlg::IsFailed(int index) const {
  if (index >= 0) return Syllables.Facts(index).Marked;
  return Syllables.IsAnyMarked();
}

// What happened on the disk since the last look. Nothing watches the folder, so an outside change shows only here. Edits
// outlive their file, and a save makes it again.
void CFileListDlg::RefreshMaps() {
  const FrqType kind = Bank.Files.Kind;
  Rows.UpdateColumns(kind);
  if (kind == FrqTypeMrq) Bank.Files.Store.Reload();
  const int count = Syllables.State().Entries;
  ListedFolders listed;
  std::vector<FoundMap> found;
  for (int index = 0; index < count; ++index) {
    found.push_back(FindMap(Syllables.Facts(index).Path, kind, listed, Bank.Files.Store));
  }
  {
    const std::lock_guard many(Syllables);
    for (int index = 0; index < count; ++index) {
      const FoundMap& map = found[static_cast<std::size_t>(index)];
      const EntryFacts facts = Syllables.Facts(index);
      if (!map.exists && facts.Edited && facts.Loaded) continue;
      Syllables.SetHasMap(index, map.exists, map.frameEstimate);
    }
  }
  for (int index = 0; index < count; ++index) {
    const EntryFacts facts = Syllables.Facts(index);
    Rows.UpdateLlsm(index, facts.Path, kind);
    Rows.SetCell(index, kMarkedColumn, facts.Marked);
  }
}

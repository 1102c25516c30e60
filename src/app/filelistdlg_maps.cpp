// The answers to messages about maps: saving them, reading them again, saying how they are.
#include "app/filelistdlg.h"

#include <algorithm>
#include <mutex>

#include "app/mapsearch.h"

// Other programs that send for a save cannot be asked anything.
DWORD CFileListDlg::SaveByMessage(int index, bool deleteLlsm) {
  SaveRecord record{.Index = index, .DeleteLlsm = deleteLlsm};
  Save(record, Document::OutsideChange::Overwrite);
  return record.Error;
}

// Stops at the first syllable that is not saved: those behind it stay edited.
void CFileListDlg::Save(SaveRecord& record, Document::OutsideChange change) {
  record.Changed = -1;
  record.Error = 0;
  const int first = std::max(record.Index, 0);
  const int end = record.Index < 0 ? Syllables.State().Entries : record.Index + 1;
  for (int index = first; index < end; ++index) {
    if (Syllables.Facts(index).Edited && !SaveEntry(index, record, change)) return;
  }
}

// A save that fails before it touches a file leaves no code, and then nobody hears of it: the syllable just stays
// edited.
bool CFileListDlg::SaveEntry(int index, SaveRecord& record, Document::OutsideChange change) {
  if (index == record.Overwrite) change = Document::OutsideChange::Overwrite;
  std::uint32_t code = 0;
  const int result = Syllables.Save(index, record.DeleteLlsm, code, change);
  if (result == Document::kChangedOutside) record.Changed = index;
  if (result != 0) record.Error = code;
  if (result == 0 && record.DeleteLlsm) Rows.UpdateLlsm(index, Syllables.Facts(index).Path, Bank.Files.Kind);
  return result == 0;
}

// Reads the maps that have edits from their files, as one gesture, or all maps. True if the current one came. A map
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

void CFileListDlg::ForgetMarks(int index) {
  Syllables.Mark(index, [](FrqMap& map) { map.ApplyMarks(-1, false); }, true);
}

// A negative index asks for any syllable.
bool CFileListDlg::IsMarked(int index) const {
  if (index >= 0) return Syllables.Facts(index).Marked;
  return Syllables.IsAnyMarked();
}

// Takes in what happened on the disk since the last look. Nothing watches the folder, so an outside change shows only
// here. Edits outlive their file, and a save makes it again.
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

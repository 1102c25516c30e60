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
  const int end = record.Index < 0 ? syllables_.State().Entries : record.Index + 1;
  for (int index = first; index < end; ++index) {
    if (syllables_.Facts(index).Edited && !SaveEntry(index, record, change)) return;
  }
}

// A save that fails before it touches a file leaves no code, and then nobody hears of it: the syllable just stays
// edited.
bool CFileListDlg::SaveEntry(int index, SaveRecord& record, Document::OutsideChange change) {
  if (index == record.Overwrite) change = Document::OutsideChange::Overwrite;
  std::uint32_t code = 0;
  const int result = syllables_.Save(index, record.DeleteLlsm, code, change);
  if (result == Document::kChangedOutside) record.Changed = index;
  if (result != 0) record.Error = code;
  if (result == 0 && record.DeleteLlsm) rows_.UpdateLlsm(index, syllables_.Facts(index).Path, bank_.Files.Kind);
  return result == 0;
}

// Reads the maps that have edits from their files, as one gesture, or all maps. True if the current one came. A map
// whose file cannot be read is left empty and as edited as it was.
bool CFileListDlg::ReloadMaps(bool all) {
  using enum Document::OnFailure;
  bool current = false;
  const Document::Scope gesture(syllables_, Gesture::ReloadAll);
  for (int index = 0; index < syllables_.State().Entries; ++index) {
    const EntryFacts facts = syllables_.Facts(index);
    if (!all && !(facts.Loaded && facts.Edited)) continue;
    const int result =
        all ? syllables_.ReadAfresh(index, KeepSaved, false) : syllables_.Reload(index, KeepSaved, false);
    if (result == 0 && index == syllables_.Current()) current = true;
  }
  return current;
}

// The sender may name the map that it means: a click on another row may be under way.
void CFileListDlg::SetCurrentEdited(bool edited, const FrqMap* map) {
  const int named = syllables_.IndexOf(map);
  syllables_.SetEdited(named >= 0 ? named : syllables_.Current(), edited);
}

// To clear the flag of an edited syllable is to say that the memory no longer counts: its map is read again.
void CFileListDlg::SetEditedByMessage(int index, bool edited) {
  const int meant = index < 0 ? syllables_.Current() : index;
  if (syllables_.Facts(meant).Edited && !edited) {
    syllables_.ReadAfresh(meant, Document::OnFailure::EmptySaved, true);
  } else {
    syllables_.SetEdited(meant, edited);
  }
}

void CFileListDlg::SetHasMap(int index, bool hasMap, bool notify) {
  const EntryFacts facts = syllables_.Facts(index);
  syllables_.SetHasMap(index, hasMap, facts.FrameEstimate);
  if (notify && facts.HasMap && !hasMap) Windows.ToThumbnail().PostRefreshItem(index);
  if (!facts.Path.empty()) rows_.UpdateLlsm(index, facts.Path, bank_.Files.Kind);
}

void CFileListDlg::ForgetMarks(int index) {
  syllables_.Mark(index, [](FrqMap& map) { map.ApplyMarks(-1, false); }, true);
}

// A negative index asks for any syllable.
bool CFileListDlg::IsMarked(int index) const {
  if (index >= 0) return syllables_.Facts(index).Marked;
  return syllables_.IsAnyMarked();
}

// Takes in what happened on the disk since the last look. Nothing watches the folder, so an outside change shows only
// here. Edits outlive their file, and a save makes it again.
void CFileListDlg::RefreshMaps() {
  const FrqType kind = bank_.Files.Kind;
  rows_.UpdateColumns(kind);
  if (kind == FrqTypeMrq) bank_.Files.Store.Reload();
  const int count = syllables_.State().Entries;
  ListedFolders listed;
  std::vector<FoundMap> found;
  for (int index = 0; index < count; ++index) {
    found.push_back(FindMap(syllables_.Facts(index).Path, kind, listed, bank_.Files.Store));
  }
  {
    const std::lock_guard many(syllables_);
    for (int index = 0; index < count; ++index) {
      const FoundMap& map = found[static_cast<std::size_t>(index)];
      const EntryFacts facts = syllables_.Facts(index);
      if (!map.Exists && facts.Edited && facts.Loaded) continue;
      syllables_.SetHasMap(index, map.Exists, map.FrameEstimate);
    }
  }
  for (int index = 0; index < count; ++index) {
    const EntryFacts facts = syllables_.Facts(index);
    rows_.UpdateLlsm(index, facts.Path, kind);
    rows_.SetCell(index, kMarkedColumn, facts.Marked);
  }
}

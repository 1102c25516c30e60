// What the list does with the maps for the window of thumbnails, which never touches them itself.
#include <exception>

#include "app/filelistdlg.h"

void CFileListDlg::ListMaps(std::vector<ListedMap>& maps) const {
  for (std::size_t i = 0; i < Entries.size(); ++i) {
    const SyllableEntry& entry = Entries[i];
    if (entry.HasMap) maps.push_back({static_cast<int>(i), entry.FrameEstimate, entry.Path});
  }
}

// The editor may change frames meanwhile: it asks for the thumbnail anew when it has, so that one that is half changed
// does not stay. What it must not do is to read the map again, whose frames lie elsewhere then.
void CFileListDlg::CopyMaps(const MapCopy* copies, std::size_t count) {
  const std::lock_guard lock(ReloadLock);
  for (std::size_t i = 0; i < count; ++i) {
    const SyllableEntry* const entry = EntryAt(copies[i].Index);
    try {
      if (entry && entry->Map.Loaded) {
        entry->Map.CopyTo(*copies[i].Target);
        continue;
      }
    } catch (const std::exception&) {
      // without memory there is nothing to show
    }
    copies[i].Target->Clear();
  }
}

// The map that the editor shows is not replaced under it: selecting its syllable reads it.
void CFileListDlg::TakeMap(const ReadMapRecord& record) {
  SyllableEntry* const entry = EntryAt(record.Index);
  if (!entry || entry->Path != record.Path) return;
  if (entry->Map.Loaded) {
    const MapCopy copy{record.Index, record.Map};
    CopyMaps(&copy, 1);
    return;
  }
  if (!entry->HasMap || record.Index == CurrentIndex) return;
  try {
    record.Map->CopyTo(entry->Map);
    entry->Map.CopyTo(entry->SavedMap);
  } catch (const std::exception&) {
    entry->Map.Clear();
  }
}

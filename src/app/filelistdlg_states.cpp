// The states of entries, each of which changes together with its cell in the rows.
#include "app/filelistdlg.h"
#include "app/mapsearch.h"

void CFileListDlg::SetEdited(int index, bool edited, bool notify) {
  SyllableEntry* const entry = EntryAt(index);
  if (!entry) return;
  if (notify) Windows.ToThumbnail().PostRefreshItem(index);
  if (entry->Edited == edited) return;
  entry->Edited = edited;
  Rows.SetCell(index, kEditedColumn, edited);
}

void CFileListDlg::SetHasMap(int index, bool hasMap, bool notify) {
  SyllableEntry* const entry = EntryAt(index);
  if (!entry) return;
  if (entry->HasMap != hasMap) {
    entry->HasMap = hasMap;
    Rows.SetCell(index, kMapColumn, hasMap);
    if (!hasMap) {
      entry->Map.Clear();
      entry->SavedMap.Clear();
      SetMarkedCell(index, false);
      SetEdited(index, false, notify);
    }
  }
  Rows.UpdateLlsm(index, entry->Path, FrqType);
}

// To clear the cell is to clear the marks; a set one leaves the map alone.
void CFileListDlg::SetMarkedCell(int index, bool marked) {
  SyllableEntry* const entry = EntryAt(index);
  if (!entry) return;
  if (!marked) entry->Map.ApplyMarks(-1, false);
  Rows.SetCell(index, kMarkedColumn, marked);
}

// What happened on the disk since the last look. Nothing watches the folder, so an outside change shows only here.
void CFileListDlg::RefreshMaps() {
  Rows.UpdateColumns(FrqType);
  if (FrqType == FrqTypeMrq) Store.Reload();
  ListedFolders listed;
  for (int row = 0; row < Rows.Count(); ++row) {
    const int index = Rows.IndexOf(row);
    SyllableEntry* const entry = EntryAt(index);
    if (!entry) continue;
    const FoundMap found = FindMap(entry->Path, FrqType, listed, Store);
    SetHasMap(index, found.exists, true);
    entry->FrameEstimate = found.exists ? found.frameEstimate : 0;
    SetMarkedCell(index, entry->Map.HasMarks);
  }
}

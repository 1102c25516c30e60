// What the list answers: the FLM_ messages, taken apart once and handed to what they ask for.
//
// An index in a message is a position in Entries. One that is none is ignored, and what the sender put into its answer
// stays; the questions that are asked of any index (has it a map) answer 0 then.
#include <algorithm>

#include "app/filelistdlg.h"
#include "frqmap/mapfiles.h"

namespace {

// Some senders want no answer and give no place for it.
template <typename T>
void Answer(LPARAM target, T value) {
  if (target) *reinterpret_cast<T*>(target) = value;
}

void AnswerNumber(LPARAM target, std::uint32_t value) {
  Answer(target, value);
}

}  // namespace

INT_PTR CFileListDlg::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message < FLM_SETCURRENTEDITED || message > FLM_SHOWMODIFYBAR) {
    return CDlgBase::OnDialogMessage(message, wParam, lParam);
  }
  ServeMessage(message, wParam, lParam);
  return Answered();
}

void CFileListDlg::ServeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const int index = static_cast<int>(wParam);
  SyllableEntry* const entry = EntryAt(index);
  const SyllableEntry* const current = EntryAt(CurrentIndex);
  switch (message) {
    case FLM_SETCURRENTEDITED: return SetEdited(CurrentIndex, wParam != 0, true);
    case FLM_ISCURRENTEDITED: return AnswerNumber(lParam, current && current->Edited);
    case FLM_ISANYEDITED: return AnswerNumber(lParam, IsAnyEdited());
    case FLM_SAVECURRENT: return AnswerNumber(lParam, SaveCurrent(wParam != 0));
    case FLM_SAVEALL: return AnswerNumber(lParam, SaveAll(wParam != 0));
    case FLM_SELECTNEIGHBOUR: return SelectNeighbour(wParam != 0);
    case FLM_OPENFOLDER: return OpenFolder(reinterpret_cast<const wchar_t*>(lParam));
    case FLM_GETCOUNT: return AnswerNumber(lParam, static_cast<std::uint32_t>(RowCount()));
    case FLM_GETSELECTION: return AnswerNumber(lParam, static_cast<std::uint32_t>(SelectedRow()));
    case FLM_GETPATH:
      if (entry) lstrcpynW(reinterpret_cast<wchar_t*>(lParam), entry->Path.c_str(), kPathBufferSize);
      return;
    case FLM_SETHASMAP: return SetHasMap(index, LOWORD(lParam) != 0, HIWORD(lParam) == 0);
    case FLM_GETHASMAP: return AnswerNumber(lParam, entry && entry->HasMap);
    case FLM_REFRESHMAPS: return RefreshMaps();
    case FLM_COUNTMAPS: return AnswerNumber(lParam, static_cast<std::uint32_t>(CountMaps()));
    case FLM_GETMAP: return entry ? Answer(lParam, &entry->Map) : void();
    case FLM_GETSAVEDMAP: return entry ? Answer(lParam, &entry->SavedMap) : void();
    case FLM_GETFRAMEESTIMATE: return entry ? Answer(lParam, entry->FrameEstimate) : void();
    case FLM_SETEDITED: return SetEditedByMessage(index, lParam != 0);
    case FLM_GETEDITED: return entry ? AnswerNumber(lParam, entry->Edited) : void();
    case FLM_SELECTSYLLABLE: return SelectSyllable(index);
    case FLM_SETFAILED: return SetMarkedCell(index, lParam != 0);
    case FLM_GETFAILED: return AnswerNumber(lParam, index < 0 ? IsAnyFailed() : entry && entry->Map.HasMarks);
    default: return;
  }
}

SyllableEntry* CFileListDlg::EntryAt(int index) {
  return index >= 0 && index < static_cast<int>(Entries.size()) ? &Entries[static_cast<std::size_t>(index)] : nullptr;
}

bool CFileListDlg::IsAnyEdited() const {
  return std::any_of(Entries.begin(), Entries.end(), [](const SyllableEntry& entry) { return entry.Edited; });
}

bool CFileListDlg::IsAnyFailed() const {
  return std::any_of(Entries.begin(), Entries.end(), [](const SyllableEntry& entry) { return entry.Map.HasMarks; });
}

int CFileListDlg::CountMaps() {
  int count = 0;
  for (int row = 0; row < RowCount(); ++row) {
    const SyllableEntry* const entry = EntryAt(IndexOfRow(row));
    if (entry && entry->HasMap) ++count;
  }
  return count;
}

// With nothing selected, the next one is row 0 and there is none before it.
void CFileListDlg::SelectNeighbour(bool previous) {
  const int row = SelectedRow() + (previous ? -1 : 1);
  if (row >= 0 && row < RowCount()) SelectRow(row);
}

void CFileListDlg::SelectSyllable(int index) {
  const SyllableEntry* const entry = EntryAt(index);
  if (entry && entry->ListRow >= 0) SelectRow(entry->ListRow);
}

// To clear the flag of an edited entry is to say that the memory no longer counts: its map is read again.
void CFileListDlg::SetEditedByMessage(int index, bool edited) {
  const int meant = index < 0 ? CurrentIndex : index;
  SyllableEntry* const entry = EntryAt(meant);
  if (!entry) return;
  if (entry->Edited && !edited) RereadMap(*entry);
  SetEdited(meant, edited, true);
}

// A load that fails leaves an empty map and says nothing: a row without a map goes this way as well, and the load is
// tried again the next time.
void CFileListDlg::EnsureLoaded(SyllableEntry& entry) {
  if (!entry.Map.Loaded) RereadMap(entry);
}

void CFileListDlg::RereadMap(SyllableEntry& entry) {
  LoadMap(entry.Map, entry.Path, FrqType, Store);
  entry.Map.CopyTo(entry.SavedMap);
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
  if (SaveMap(entry.Map, entry.Path, FrqType, Store) != 0) {
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

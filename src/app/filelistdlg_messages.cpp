// What the list answers: the FLM_ messages, taken apart once and handed to what they ask for.
//
// An index in a message is a position in Entries. One that is none is ignored, and what the sender put into its answer
// stays; the questions that are asked of any index (has it a map) answer 0 then.
#include <algorithm>

#include "app/filelistdlg.h"

namespace {

// Some senders want no answer and give no place for it.
template <typename T>
void Answer(LPARAM target, T value) {
  if (target) *reinterpret_cast<T*>(target) = value;
}

void AnswerNumber(LPARAM target, std::uint32_t value) {
  Answer(target, value);
}

bool IsAnyEdited(const std::vector<SyllableEntry>& entries) {
  return std::any_of(entries.begin(), entries.end(), [](const SyllableEntry& entry) { return entry.Edited; });
}

bool IsEdited(const SyllableEntry* entry) {
  return entry && entry->Edited;
}

bool HasMap(const SyllableEntry* entry) {
  return entry && entry->HasMap;
}

}  // namespace

INT_PTR CFileListDlg::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message < FLM_SETCURRENTEDITED || message > FLM_TAKEMAP) {
    return CDlgBase::OnDialogMessage(message, wParam, lParam);
  }
  ServeMessage(message, wParam, lParam);
  return Answered();
}

void CFileListDlg::ServeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const int index = static_cast<int>(wParam);
  const bool flag = wParam != 0;
  switch (message) {
    case FLM_SETCURRENTEDITED: return SetCurrentEdited(flag, reinterpret_cast<const FrqMap*>(lParam));
    case FLM_ISCURRENTEDITED: return AnswerNumber(lParam, IsEdited(EntryAt(CurrentIndex)));
    case FLM_ISANYEDITED: return AnswerNumber(lParam, IsAnyEdited(Entries));
    case FLM_SAVECURRENT: return AnswerNumber(lParam, SaveCurrent(flag));
    case FLM_SAVEALL: return AnswerNumber(lParam, SaveAll(flag));
    case FLM_RELOADMAPS: return AnswerNumber(lParam, ReloadMaps(flag));
    case FLM_SELECTNEIGHBOUR: return Rows.SelectNeighbour(flag);
    case FLM_OPENFOLDER: return OpenFolder(reinterpret_cast<const wchar_t*>(lParam));
    case FLM_GETCOUNT: return AnswerNumber(lParam, static_cast<std::uint32_t>(Rows.Count()));
    case FLM_GETSELECTION: return AnswerNumber(lParam, static_cast<std::uint32_t>(Rows.Selected()));
    case FLM_SETHASMAP: return SetHasMap(index, LOWORD(lParam) != 0, HIWORD(lParam) == 0);
    case FLM_GETHASMAP: return AnswerNumber(lParam, HasMap(EntryAt(index)));
    case FLM_REFRESHMAPS: return RefreshMaps();
    case FLM_COUNTMAPS: return AnswerNumber(lParam, static_cast<std::uint32_t>(CountMaps()));
    case FLM_SHOWTHUMBNAIL: return Windows.ShowThumbnail(flag, Hwnd);
    case FLM_ISTHUMBNAILVISIBLE: return AnswerNumber(lParam, IsWindowVisible(Thumbnail.Hwnd));
    case FLM_GETTHUMBNAILWINDOW: return Answer(lParam, Thumbnail.Hwnd.load());
    case FLM_REFRESHTHUMBNAIL: return Windows.ToThumbnail().PostRefreshAll();
    case FLM_LISTMAPS: return ListMaps(*reinterpret_cast<std::vector<ListedMap>*>(lParam));
    case FLM_COPYMAPS: return CopyMaps(reinterpret_cast<const MapCopy*>(lParam), wParam);
    case FLM_TAKEMAP: return TakeMap(*reinterpret_cast<const ReadMapRecord*>(lParam));
    case FLM_SETEDITED: return SetEditedByMessage(index, lParam != 0);
    case FLM_SELECTSYLLABLE: return SelectSyllable(index);
    case FLM_RUNCHECK: return RunCheck(*reinterpret_cast<const CheckFrqSettings*>(lParam));
    case FLM_MODIFY: return ApplyFailure(index, static_cast<SampleCount>(lParam), true);
    case FLM_IGNORE: return ApplyFailure(index, static_cast<SampleCount>(lParam), false);
    case FLM_FINDFAILURE: return FindFailure(*reinterpret_cast<FindFailureRecord*>(lParam));
    case FLM_SHOWMODIFYBAR: return Windows.ShowModifyBar(lParam != 0 ? IsFailed(-1) : flag, Hwnd);
    case FLM_SETFAILED: return SetMarkedCell(index, lParam != 0);
    case FLM_GETFAILED: return AnswerNumber(lParam, IsFailed(index));
    case FLM_GETPATH:
    case FLM_GETMAP:
    case FLM_GETSAVEDMAP:
    case FLM_GETFRAMEESTIMATE:
    case FLM_GETEDITED: return AnswerOfEntry(message, index, lParam);
    default: return;
  }
}

// The questions whose answer stays as it was for an index that is none.
void CFileListDlg::AnswerOfEntry(UINT message, int index, LPARAM target) {
  SyllableEntry* const entry = EntryAt(index);
  if (!entry) return;
  switch (message) {
    case FLM_GETPATH: lstrcpynW(reinterpret_cast<wchar_t*>(target), entry->Path.c_str(), kPathBufferSize); return;
    case FLM_GETMAP: return Answer(target, &entry->Map);
    case FLM_GETSAVEDMAP: return Answer(target, &entry->SavedMap);
    case FLM_GETFRAMEESTIMATE: return AnswerNumber(target, entry->FrameEstimate);
    case FLM_GETEDITED: return AnswerNumber(target, entry->Edited);
    default: return;
  }
}

SyllableEntry* CFileListDlg::EntryAt(int index) {
  return index >= 0 && index < static_cast<int>(Entries.size()) ? &Entries[static_cast<std::size_t>(index)] : nullptr;
}

// A negative index asks for any entry.
bool CFileListDlg::IsFailed(int index) {
  const auto marked = [](const SyllableEntry& entry) { return entry.Map.HasMarks; };
  if (index < 0) return std::any_of(Entries.begin(), Entries.end(), marked);
  const SyllableEntry* const entry = EntryAt(index);
  return entry && marked(*entry);
}

// Of the rows, told without asking the list view for each.
int CFileListDlg::CountMaps() const {
  int count = 0;
  for (std::size_t i = 0; i < Entries.size(); ++i) {
    if (Entries[i].HasMap && Rows.RowOf(static_cast<int>(i)) >= 0) ++count;
  }
  return count;
}

// Thumbnails and bar are no part of the editor, which waits for a job with its list disabled: another syllable would
// take its place under the job, and lose its edits when that one is done.
void CFileListDlg::SelectSyllable(int index) {
  if (!IsWindowEnabled(Hwnd)) return;
  const int row = Rows.RowOf(index);
  if (row >= 0) Rows.Select(row);
}

// The editor names the map that it changed: a click on another row may be under way, and has moved CurrentIndex then.
void CFileListDlg::SetCurrentEdited(bool edited, const FrqMap* map) {
  const SyllableEntry* const current = EntryAt(CurrentIndex);
  if (current && &current->Map == map) return SetEdited(CurrentIndex, edited, true);
  const auto found =
      std::find_if(Entries.begin(), Entries.end(), [map](const SyllableEntry& entry) { return &entry.Map == map; });
  SetEdited(found == Entries.end() ? CurrentIndex : static_cast<int>(found - Entries.begin()), edited, true);
}

// To clear the flag of an edited entry is to say that the memory no longer counts: its map is read again.
void CFileListDlg::SetEditedByMessage(int index, bool edited) {
  const int meant = index < 0 ? CurrentIndex : index;
  SyllableEntry* const entry = EntryAt(meant);
  if (!entry) return;
  if (entry->Edited && !edited) RereadMap(*entry);
  SetEdited(meant, edited, true);
}

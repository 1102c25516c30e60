// The FLM_ messages that the list answers, taken apart once and handed on.
//
// An index in a message is a position in the document. An index out of range is ignored, and the sender's answer keeps
// its value; the questions that are asked of any index (has it a map) answer 0 then. A pointer that leads nowhere gets
// no answer, and a message that wants nothing else does nothing: any program may send any of the numbers.
#include "app/filelistdlg.h"

#include <shlwapi.h>

#include "base/files.h"
#include "base/foreignpointer.h"
#include "check/checkrecords.h"

namespace {

// The system raises a new window once more when its messages are done with: a word before that would lie behind it.
constexpr UINT_PTR kWordTimer = 1;
constexpr UINT kWordMs = 300;

// Some senders want no answer and give no place for it.
template <typename T>
void Answer(LPARAM target, T value) {
  if (T* const place = WritableAt<T>(target)) *place = value;
}

void AnswerNumber(LPARAM target, std::uint32_t value) {
  Answer(target, value);
}

// A path that is cut would name another file: one that does not fit leaves an empty text.
template <std::size_t Size>
void PutPath(wchar_t (&buffer)[Size], const std::wstring& path) {
  lstrcpynW(buffer, path.size() < Size ? path.c_str() : L"", Size);
}

// A full path names a folder, though that may have gone. Any other text would cost the syllables that are listed.
bool NamesFolder(const wchar_t* path) {
  return path && (!PathIsRelativeW(path) || FolderExists(path));
}

}  // namespace

// The window has no close command of its own. The system sends one all the same, for Alt+F4 and from its lists of
// windows.
INT_PTR CFileListDlg::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_TIMER && wParam == kWordTimer) {
    KillTimer(Hwnd, kWordTimer);
    TellIfNoWaves();
    return Answered();
  }
  const bool isClose = message == WM_CLOSE || (message == WM_SYSCOMMAND && (wParam & 0xFFF0) == SC_CLOSE);
  if (isClose) return Answered();
  if (message < FLM_SETCURRENTEDITED || message > FLM_HASCOME) {
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
    case FLM_ISCURRENTEDITED: return AnswerNumber(lParam, syllables_.State().CurrentEdited);
    case FLM_ISANYEDITED: return AnswerNumber(lParam, syllables_.State().Edited > 0);
    case FLM_SAVECURRENT: return AnswerNumber(lParam, SaveByMessage(syllables_.Current(), flag));
    case FLM_SAVEALL: return AnswerNumber(lParam, SaveByMessage(-1, flag));
    case FLM_RELOADMAPS: return AnswerNumber(lParam, ReloadMaps(flag));
    case FLM_SELECTNEIGHBOUR: return rows_.SelectNeighbour(flag);
    case FLM_OPENFOLDER:
      if (const wchar_t* const path = PathAt(lParam); NamesFolder(path) || path == Folder.c_str()) OpenFolder(path);
      return;
    case FLM_GETCOUNT: return AnswerNumber(lParam, static_cast<std::uint32_t>(rows_.Count()));
    case FLM_GETSELECTION: return AnswerNumber(lParam, static_cast<std::uint32_t>(rows_.Selected()));
    case FLM_SETHASMAP: return SetHasMap(index, LOWORD(lParam) != 0, HIWORD(lParam) == 0);
    case FLM_GETHASMAP: return AnswerNumber(lParam, syllables_.Facts(index).HasMap);
    case FLM_REFRESHMAPS: return RefreshMaps();
    case FLM_COUNTMAPS: return AnswerNumber(lParam, static_cast<std::uint32_t>(syllables_.State().Maps));
    case FLM_SHOWTHUMBNAIL: return Windows.ShowThumbnail(flag, Hwnd);
    case FLM_ISTHUMBNAILVISIBLE: return AnswerNumber(lParam, IsWindowVisible(Windows.Thumbnail.Hwnd));
    case FLM_GETTHUMBNAILWINDOW: return Answer(lParam, Windows.Thumbnail.Hwnd.load());
    case FLM_REFRESHTHUMBNAIL: return Windows.ToThumbnail().PostRefreshAll();
    case FLM_SHOWCHANGES:
      for (const DocumentChanges& changes : waiting_.Take()) ShowChanges(changes);
      return;
    case FLM_GETSTATE: return Answer(lParam, State());
    case FLM_END:
      if (wParam == GetCurrentProcessId()) EndList();
      return;
    case FLM_SAVE:
      if (auto* const record = WritableAt<SaveRecord>(lParam)) Save(*record, Document::OutsideChange::Refuse);
      return;
    case FLM_HASCOME:
      if (!argument_.empty()) SetTimer(Hwnd, kWordTimer, kWordMs, nullptr);
      return ToEditor().PostAskOfLeftEdits();
    case FLM_SETEDITED: return SetEditedByMessage(index, lParam != 0);
    case FLM_SELECTSYLLABLE: return SelectSyllable(index);
    case FLM_RUNCHECK:
      if (const auto* const settings = ReadableAt<CheckFrqSettings>(lParam)) RunCheck(*settings);
      return;
    case FLM_MODIFY: return ApplyFailure(index, static_cast<SampleCount>(lParam), true);
    case FLM_IGNORE: return ApplyFailure(index, static_cast<SampleCount>(lParam), false);
    case FLM_FINDFAILURE:
      if (auto* const record = WritableAt<FindFailureRecord>(lParam)) FindFailure(*record);
      return;
    case FLM_SHOWMODIFYBAR: return Windows.ShowModifyBar(lParam != 0 ? IsMarked(-1) : flag, Hwnd);
    // A mark that another program sets is shown, and no more: the map knows of none.
    case FLM_SETFAILED: return lParam != 0 ? rows_.SetCell(index, kMarkedColumn, true) : ForgetMarks(index);
    case FLM_GETFAILED: return AnswerNumber(lParam, IsMarked(index));
    case FLM_GETPATH:
    case FLM_GETLONGPATH:
    case FLM_GETMAP:
    case FLM_GETSAVEDMAP:
    case FLM_GETFRAMEESTIMATE:
    case FLM_GETEDITED: return AnswerOfEntry(message, index, lParam);
    default: return;
  }
}

// Answers the questions whose answer keeps its value for an index out of range.
void CFileListDlg::AnswerOfEntry(UINT message, int index, LPARAM target) const {
  const MapPair maps = syllables_.Maps(index);
  if (!maps.Map) return;
  const EntryFacts facts = syllables_.Facts(index);
  switch (message) {
    case FLM_GETPATH:
      if (auto* const buffer = WritableAt<PathBuffer>(target)) PutPath(*buffer, facts.Path);
      return;
    case FLM_GETLONGPATH:
      if (auto* const buffer = WritableAt<LongPathBuffer>(target)) PutPath(*buffer, facts.Path);
      return;
    case FLM_GETMAP: return Answer(target, maps.Map);
    case FLM_GETSAVEDMAP: return Answer(target, maps.Saved);
    case FLM_GETFRAMEESTIMATE: return AnswerNumber(target, facts.FrameEstimate);
    case FLM_GETEDITED: return AnswerNumber(target, facts.Edited);
    default: return;
  }
}

ListState CFileListDlg::State() const {
  const int row = rows_.Selected();
  return {rows_.Count(), row, row < 0 ? -1 : rows_.IndexOf(row), Windows.Thumbnail.Hwnd};
}

// Thumbnails and bar are no part of the editor, which waits for a job with its list disabled: another syllable would
// take its place under the job, and lose its edits when that one is done.
void CFileListDlg::SelectSyllable(int index) const {
  if (!IsWindowEnabled(Hwnd)) return;
  const int row = rows_.RowOf(index);
  if (row >= 0) rows_.Select(row);
}

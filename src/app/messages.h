// The private messages between the editor, the syllable list and the thumbnail window, which run on threads of their
// own, and a typed sender for each receiver.
//
// A number is unique within its receiver only. Every message gives 0 and answers through a pointer in lParam. A sender
// to a window that is not there, or no longer, is harmless: the message is lost and the answer is 0 or empty. A send
// blocks the sender, which serves sends to itself meanwhile: the two threads may well wait for each other.
//
// This header knows plain types only, so that any module that must talk to the windows can take it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

class FrqMap;
struct CheckFrqSettings;

enum FileListMessage : UINT {
  FLM_SETCURRENTEDITED = 32769,    // flag, FrqMap* or null: the current syllable's
  FLM_ISCURRENTEDITED = 32770,     // -, u32 out
  FLM_ISANYEDITED = 32771,         // -, u32 out
  FLM_SAVECURRENT = 32772,         // delete .llsm, error out
  FLM_SAVEALL = 32773,             // delete .llsm, error out
  FLM_RELOADMAPS = 32774,          // all, u32 out or null      out: 1 if the current syllable was reloaded
  FLM_SELECTNEIGHBOUR = 32775,     // 1 previous, 0 next
  FLM_OPENFOLDER = 32776,          // -, path                   the caller has asked about unsaved edits
  FLM_GETCOUNT = 32777,            // -, u32 out or null        rows of the list
  FLM_GETSELECTION = 32778,        // -, i32 out or null        selected row, -1 none
  FLM_GETPATH = 32779,             // index, buffer of 260      empty for a path that is longer, see FLM_GETLONGPATH
  FLM_SETHASMAP = 32780,           // index, low word flag, high word: nonzero keeps the thumbnails as they are
  FLM_GETHASMAP = 32781,           // index, u32 out
  FLM_REFRESHMAPS = 32782,         // -, -                      looks at the disk again
  FLM_COUNTMAPS = 32783,           // -, u32 out
  FLM_GETMAP = 32784,              // index, FrqMap* out
  FLM_GETFRAMEESTIMATE = 32785,    // index, u32 out
  FLM_SHOWTHUMBNAIL = 32786,       // show, -
  FLM_ISTHUMBNAILVISIBLE = 32787,  // -, u32 out
  FLM_GETTHUMBNAILWINDOW = 32788,  // -, HWND out
  FLM_SETEDITED = 32789,           // index or -1: current, flag   false on an edited one reads its map again
  FLM_GETEDITED = 32790,           // index, u32 out
  FLM_REFRESHTHUMBNAIL = 32791,    // -, -
  FLM_GETSAVEDMAP = 32792,         // index, FrqMap* out
  FLM_SELECTSYLLABLE = 32793,      // index, -
  FLM_RUNCHECK = 32794,            // -, CheckFrqSettings*
  FLM_SETFAILED = 32795,           // index, marked
  FLM_GETFAILED = 32796,           // index or -1: any, u32 out
  FLM_MODIFY = 32797,              // index or -1: all, sample position
  FLM_IGNORE = 32798,              // index, sample position
  FLM_FINDFAILURE = 32799,         // -, FindFailureRecord*
  FLM_SHOWMODIFYBAR = 32800,       // show, by need
  // Messages of our own: showing what has changed, and the state of the list that commands depend on.
  FLM_SHOWCHANGES = 32801,  // -, -
  FLM_GETSTATE = 32802,     // -, ListState* out
  FLM_GETLONGPATH = 32803,  // index, buffer of 32768
  FLM_END = 32806,          // process, -                this one alone, which has asked about unsaved edits
  FLM_SAVE = 32807,         // -, SaveRecord*
  FLM_HASCOME = 32808,      // -, -                      to itself: its window is shown
};

enum EditorMessage : UINT {
  EDM_SETMAP = 32769,        // saved map or null, map or null
  EDM_SETSYLLABLE = 32770,   // -, path of the wave
  EDM_UPDATESTATE = 32771,   // -, -
  WM_PREVIEW_DONE = 32772,   // -, -
  EDM_FOLDEROPENED = 32773,  // -, path of the folder
  EDM_REFRESHMAP = 32774,    // -, nonzero: rebuild the frame list too
  EDM_SHOWFAILURE = 32775,   // first and last sample position
  // Messages of our own: the list has come, so that the user can be asked about the edits of an earlier run.
  EDM_ASKOFLEFTEDITS = 32780,  // -, -
  // The editor paints what has to be painted though it waits for the list.
  EDM_PAINT = 32781,  // -, -
  // A sound that is listened to has begun or ended.
  EDM_LISTENING = 32785,  // -, -
};

enum ThumbnailMessage : UINT {
  TNM_REFRESHITEM = 32769,  // index, -
  TNM_REFRESHALL = 32770,   // -, -
};

// Question and answer of FLM_FINDFAILURE.
struct FindFailureRecord {
  std::int32_t Index;    // in: where to start, negative for the first in the direction; out: where it was found
  std::int32_t Sample;   // in: position to start after, negative for the start of that syllable; out: position found
  std::uint8_t Forward;  // direction
  std::uint8_t Show;     // also select the syllable and show the run of marks; kShowWithBar: the bar goes there too
  std::uint8_t Found;    // out
};

// Question and answer of FLM_SAVE. FLM_SAVECURRENT and FLM_SAVEALL overwrite whatever has become of a file; this stops
// at a map that another program has changed since it was read here.
struct SaveRecord {
  std::int32_t Index;           // in: the syllable, saved if it is edited; negative for all that are
  std::uint8_t DeleteLlsm;      // in
  std::int32_t Overwrite = -1;  // in: the syllable that is saved even so
  std::int32_t Changed = -1;    // out: the one where it stopped, -1 for none
  std::uint32_t Error = 0;      // out: as of FLM_SAVECURRENT
};

// The answer of FLM_GETSTATE.
struct ListState {
  std::int32_t Rows;
  std::int32_t SelectedRow;    // -1: none
  std::int32_t SelectedIndex;  // of its syllable, -1: none
  HWND ThumbnailWindow;        // null: none
};

inline constexpr int kPathBufferSize = 260;
using PathBuffer = wchar_t[kPathBufferSize];
inline constexpr int kLongPathBufferSize = 32768;
using LongPathBuffer = wchar_t[kLongPathBufferSize];

namespace messages_detail {

template <typename T>
LPARAM Pointer(T* pointer) {
  return reinterpret_cast<LPARAM>(pointer);
}

// Sends a question and gives what the receiver wrote; `fallback` if nobody did.
template <typename T>
T Ask(HWND window, UINT message, WPARAM wParam, T fallback) {
  T answer = fallback;
  SendMessageW(window, message, wParam, Pointer(&answer));
  return answer;
}

// A null window would stand for the sender's own thread.
inline void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam = 0) {
  if (window) PostMessageW(window, message, wParam, lParam);
}

}  // namespace messages_detail

class FileListSender {
 public:
  explicit FileListSender(HWND list) : list_(list) {}

  // The error is the system's code of the first save that failed, 0 if none did or none left a code.
  void Save(SaveRecord& record) const { Send(FLM_SAVE, 0, messages_detail::Pointer(&record)); }
  // True if the current syllable was reloaded; all: also those that are not edited.
  bool ReloadMaps(bool all) const { return AskNumber(FLM_RELOADMAPS, all) != 0; }
  void PostSelectNeighbour(bool previous) const { messages_detail::Post(list_, FLM_SELECTNEIGHBOUR, previous); }
  void OpenFolder(const wchar_t* folder) const { Send(FLM_OPENFOLDER, 0, messages_detail::Pointer(folder)); }
  int Count() const { return static_cast<int>(AskNumber(FLM_GETCOUNT)); }
  int Selection() const { return messages_detail::Ask<std::int32_t>(list_, FLM_GETSELECTION, 0, -1); }
  std::wstring Path(int index) const {
    PathBuffer path = L"";
    Send(FLM_GETPATH, static_cast<WPARAM>(index), messages_detail::Pointer(path));
    return path[0] ? path : LongPath(index);
  }
  bool HasMap(int index) const { return AskNumber(FLM_GETHASMAP, index) != 0; }
  void RefreshMaps() const { Send(FLM_REFRESHMAPS); }
  void PostRefreshMaps() const { messages_detail::Post(list_, FLM_REFRESHMAPS, 0); }
  // A negative index is the current syllable. False on an edited one throws its edits away: its map is read again.
  void SetEdited(int index, bool edited) const { Send(FLM_SETEDITED, static_cast<WPARAM>(index), edited); }
  // The editor shows the syllable when SelectSyllable comes back.
  void SelectSyllable(int index) const { Send(FLM_SELECTSYLLABLE, static_cast<WPARAM>(index)); }
  void PostSelectSyllable(int index) const {
    messages_detail::Post(list_, FLM_SELECTSYLLABLE, static_cast<WPARAM>(index));
  }
  void PostShowThumbnail(bool show) const { messages_detail::Post(list_, FLM_SHOWTHUMBNAIL, show); }
  bool IsThumbnailVisible() const { return AskNumber(FLM_ISTHUMBNAILVISIBLE) != 0; }
  HWND ThumbnailWindow() const { return messages_detail::Ask<HWND>(list_, FLM_GETTHUMBNAILWINDOW, 0, nullptr); }
  void PostRefreshThumbnail() const { messages_detail::Post(list_, FLM_REFRESHTHUMBNAIL, 0); }
  void RunCheck(const CheckFrqSettings& settings) const { Send(FLM_RUNCHECK, 0, messages_detail::Pointer(&settings)); }
  void ForgetMarks(int index) const { Send(FLM_SETFAILED, static_cast<WPARAM>(index), 0); }
  // A negative index is all syllables; else the run of marks at a sample position.
  void Modify(int index, int position) const { Send(FLM_MODIFY, static_cast<WPARAM>(index), position); }
  void Ignore(int index, int position) const { Send(FLM_IGNORE, static_cast<WPARAM>(index), position); }
  void FindFailure(FindFailureRecord& record) const { Send(FLM_FINDFAILURE, 0, messages_detail::Pointer(&record)); }
  void ShowModifyBar(bool show, bool byNeed) const { Send(FLM_SHOWMODIFYBAR, show, byNeed); }
  // Has the list show what has changed in the document since it last did.
  void ShowChanges() const { Send(FLM_SHOWCHANGES); }
  ListState State() const {
    ListState state{0, -1, -1, nullptr};
    Send(FLM_GETSTATE, 0, messages_detail::Pointer(&state));
    return state;
  }
  HWND Window() const { return list_; }
  // Ends the list's window as its own Cancel would, but for the question about unsaved edits.
  void End() const { Send(FLM_END, GetCurrentProcessId()); }

 private:
  void Send(FileListMessage message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    SendMessageW(list_, message, wParam, lParam);
  }
  std::uint32_t AskNumber(FileListMessage message, int wParam = 0) const {
    return messages_detail::Ask<std::uint32_t>(list_, message, static_cast<WPARAM>(wParam), 0);
  }
  std::wstring LongPath(int index) const {
    std::wstring path(kLongPathBufferSize, L'\0');
    Send(FLM_GETLONGPATH, static_cast<WPARAM>(index), messages_detail::Pointer(path.data()));
    return path.c_str();
  }

  HWND list_;
};

class EditorSender {
 public:
  explicit EditorSender(HWND editor) : editor_(editor) {}

  // The maps stay the list's; both null: the editor has no map any more.
  void SetMap(FrqMap* saved, FrqMap* map) const {
    SendMessageW(editor_, EDM_SETMAP, reinterpret_cast<WPARAM>(saved), messages_detail::Pointer(map));
  }
  void SetSyllable(const wchar_t* wavePath) const {
    SendMessageW(editor_, EDM_SETSYLLABLE, 0, messages_detail::Pointer(wavePath));
  }
  void UpdateState() const { SendMessageW(editor_, EDM_UPDATESTATE, 0, 0); }
  void FolderOpened(const wchar_t* folder) const {
    SendMessageW(editor_, EDM_FOLDEROPENED, 0, messages_detail::Pointer(folder));
  }
  void RefreshMap(bool rebuildFrames) const { SendMessageW(editor_, EDM_REFRESHMAP, 0, rebuildFrames); }
  // Shows the run of marks between two sample positions.
  void ShowMarkedRun(int first, int last) const {
    SendMessageW(editor_, EDM_SHOWFAILURE, static_cast<WPARAM>(first), last);
  }
  void Paint() const { SendMessageW(editor_, EDM_PAINT, 0, 0); }
  void PostPreviewDone() const { messages_detail::Post(editor_, WM_PREVIEW_DONE, 0); }
  void PostListening() const { messages_detail::Post(editor_, EDM_LISTENING, 0); }
  void PostAskOfLeftEdits() const { messages_detail::Post(editor_, EDM_ASKOFLEFTEDITS, 0); }
  void PostCancel() const { messages_detail::Post(editor_, WM_COMMAND, IDCANCEL); }

 private:
  HWND editor_;
};

// The list posts to the thumbnail window; while there is none the posts are dropped, since the window reads all afresh
// when it opens.
class ThumbnailSender {
 public:
  explicit ThumbnailSender(HWND thumbnail) : thumbnail_(thumbnail) {}

  void PostRefreshItem(int index) const {
    messages_detail::Post(thumbnail_, TNM_REFRESHITEM, static_cast<WPARAM>(index));
  }
  void PostRefreshAll() const { messages_detail::Post(thumbnail_, TNM_REFRESHALL, 0); }

 private:
  HWND thumbnail_;
};

// How the list is filled: from the argument of the process, from a folder, in which order, and with what is known of a
// map without reading it.
#include <windows.h>
#include <shlwapi.h>

#include <algorithm>
#include <utility>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "app/mapsearch.h"
#include "base/path.h"
#include "frqmap/mapfiles.h"
#include "voicebank/otoini.h"
#include "voicebank/pluginfile.h"
#include "window/waitcursor.h"

namespace {

bool IsSoundFile(const std::wstring& name) {
  const wchar_t* const extension = PathFindExtensionW(name.c_str());
  for (const wchar_t* const known : {L".wav", L".wave", L".aif", L".aiff"}) {
    if (lstrcmpiW(extension, known) == 0) return true;
  }
  return false;
}

// A window that takes no input for the length of the scope. One that took none before stays so.
class DisabledWindow {
 public:
  explicit DisabledWindow(HWND window) : window_(window && IsWindowEnabled(window) ? window : nullptr) {
    Enable(FALSE);
  }
  ~DisabledWindow() { Enable(TRUE); }
  DisabledWindow(const DisabledWindow&) = delete;
  DisabledWindow& operator=(const DisabledWindow&) = delete;

 private:
  void Enable(BOOL enabled) const {
    if (window_) EnableWindow(window_, enabled);
  }

  HWND window_;
};

}  // namespace

// False if the argument names nothing that exists.
bool CFileListDlg::FillFromArguments() {
  if (Argument.empty()) return true;
  Store.Clear();
  const int fill = FillCount;
  const std::wstring& path = Argument;
  // By its attributes, as the root of a drive is found by no search.
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return false;
  if (attributes & FILE_ATTRIBUTE_DIRECTORY) {
    Folder = path;
    ScanFolderWaiting(path, true);
    WaitForEditorWindow();
    ToEditor().FolderOpened(path.c_str());
  } else if (IsPluginFile(path)) {
    FillFromPluginFile(path);
  } else {
    Folder = FolderOf(path);
    ListedFolders listed;
    AddSyllable(path, listed);
  }
  // The editor may have opened another folder while it was told of this one.
  if (fill == FillCount) SortAndShow();
  return true;
}

// The syllables of the notes that the host handed over, once each, and not the whole voicebank.
void CFileListDlg::FillFromPluginFile(const std::wstring& path) {
  PluginAnswer = true;
  UtauCommon::NOTELIST list;
  list.Load(path);
  const std::wstring voicebank = list.GetVoiceDir();
  UtauCommon::OTOINI syllables;
  // Without a folder its file would be looked for in the root of the drive.
  if (!voicebank.empty()) syllables.Load(voicebank);
  Folder = voicebank;
  ListedFolders listed;
  const UtauCommon::NOTE* note = list.FindFirstNumbered();
  for (; note && note->GetType() == UtauCommon::NoteTypeNumbered; note = note->next) {
    AddSyllable(ResolveNoteWavePath(*note, syllables), listed);
  }
  WaitForEditorWindow();
  ToEditor().FolderOpened(Folder.c_str());
}

// The editor is being built on the main thread; it is sure to come.
void CFileListDlg::WaitForEditorWindow() const {
  while (!Editor->Hwnd) Sleep(100);
}

int CFileListDlg::ScanFolderWaiting(const std::wstring& folder, bool withSubfolders) {
  const WaitCursor waiting;
  const DisabledWindow thumbnail(Thumbnail.Hwnd);
  return ScanFolder(folder, withSubfolders);
}

// A voicebank is its folder and the folders directly in it; what lies deeper is not looked at.
int CFileListDlg::ScanFolder(const std::wstring& folder, bool withSubfolders) {
  if (FrqType == FrqTypeMrq) Store.LoadFolder(folder);
  ListedFolders listed;
  const FolderListing* const listing = listed.Find(folder);
  if (!listing) return -1;
  for (const std::wstring& name : listing->Files()) {
    if (IsSoundFile(name)) AddSyllable(PathIn(folder, name), listed);
  }
  if (!withSubfolders) return 0;
  for (const std::wstring& name : listing->Folders()) ScanFolderWaiting(PathIn(folder, name), false);
  return 0;
}

// A wave that cannot be read gets its row all the same: no wave is opened here.
void CFileListDlg::AddSyllable(const std::wstring& path, ListedFolders& listed) {
  if (path.empty() || !SeenPaths.insert(path).second) return;
  // The host's syllables may lie in folders that no scan has come through.
  const std::wstring folder = FolderOf(path);
  if (FrqType == FrqTypeMrq && !Store.HasFolder(folder)) Store.LoadFolder(folder);
  SyllableEntry& entry = Entries.emplace_back();
  entry.Path = path;
  const FoundMap found = FindMap(path, FrqType, listed, Store);
  entry.HasMap = found.exists;
  entry.FrameEstimate = found.frameEstimate;
}

// Folders go by the words of the user's language, names within a folder by code units. The two differ on purpose: all
// files of a folder stay together, and users know the order of the names from their other tools.
void CFileListDlg::SortEntries() {
  struct Key {
    std::wstring folder;
    SyllableEntry* entry;
  };
  std::vector<Key> keys;
  keys.reserve(Entries.size());
  for (SyllableEntry& entry : Entries) keys.push_back({FolderOf(entry.Path), &entry});
  std::sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) {
    // The comparison by language is slow, and the same folder needs none.
    const int folders = a.folder == b.folder ? 0 : lstrcmpW(a.folder.c_str(), b.folder.c_str());
    return folders != 0 ? folders < 0 : a.entry->Path < b.entry->Path;
  });
  std::vector<SyllableEntry> sorted;
  sorted.reserve(Entries.size());
  for (const Key& key : keys) sorted.push_back(std::move(*key.entry));
  Entries = std::move(sorted);
}

// Whoever opens a folder has asked about unsaved edits before: they end here. The old entries stay until the editor has
// taken the null maps: it points into them, and may paint while it waits in its send. A row that is on its way to the
// editor when this comes in between is given up (ShowSyllable).
void CFileListDlg::OpenFolder(const wchar_t* path) {
  const std::vector<SyllableEntry> old = std::exchange(Entries, {});
  ++FillCount;
  CurrentIndex = -1;
  SeenPaths.clear();
  if (path != Folder.c_str()) Folder = path;
  const std::wstring opened = Folder;
  Store.Clear();
  ScanFolderWaiting(opened, true);
  SeenPaths.clear();
  UpdateColumns();
  SortAndShow();
  ToEditor().SetMap(nullptr, nullptr);
  ToEditor().FolderOpened(opened.c_str());
  SelectRow(0);
  ToThumbnail().PostRefreshAll();
}

// What happened on the disk since the last look. Nothing watches the folder, so an outside change shows only here.
void CFileListDlg::RefreshMaps() {
  UpdateColumns();
  if (FrqType == FrqTypeMrq) Store.Reload();
  ListedFolders listed;
  for (int row = 0; row < RowCount(); ++row) {
    const int index = IndexOfRow(row);
    SyllableEntry* const entry = EntryAt(index);
    if (!entry) continue;
    const FoundMap found = FindMap(entry->Path, FrqType, listed, Store);
    SetHasMap(index, found.exists, true);
    entry->FrameEstimate = found.exists ? found.frameEstimate : 0;
    SetMarkedCell(index, entry->Map.HasMarks);
  }
}

// How the list is filled: from the argument of the process, from a folder, in which order, and with what is known of a
// map without reading it.
#include <windows.h>
#include <shlwapi.h>

#include <algorithm>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "base/files.h"
#include "frqmap/mapfiles.h"
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

std::wstring FolderOf(const std::wstring& path) {
  const std::size_t separator = path.find_last_of(L'\\');
  return separator == std::wstring::npos ? std::wstring() : path.substr(0, separator);
}

// A wave of 16 bits in one channel, 44 bytes of header and 256 samples a frame: .pmk has no size that tells.
std::uint32_t EstimateFromWaveSize(std::uint32_t size) {
  return size < 44 ? 0 : (size - 44) / 512;
}

std::uint32_t FrameEstimate(const std::wstring& wavePath, FrqType kind, ListedFolders& listed) {
  if (kind == FrqTypePmk) return EstimateFromWaveSize(listed.SizeOf(wavePath).value_or(0));
  return FrameCountFromFileSize(listed.SizeOf(MapPathFromWaveW(wavePath, kind)).value_or(0), kind);
}

// MapFileExists over what the folders hold, without a call for each file.
bool HasMapFile(const std::wstring& wavePath, FrqType kind, ListedFolders& listed) {
  return listed.SizeOf(MapPathFromWaveW(wavePath, kind)).has_value();
}

// The process may change its current folder, and paths are kept for long.
std::wstring FullPath(const std::wstring& path) {
  if (!PathIsRelativeW(path.c_str())) return path;
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

}  // namespace

// False if the argument names nothing that exists.
bool CFileListDlg::FillFromArguments() {
  if (Argument.empty()) return true;
  const std::wstring path = FullPath(Argument);
  WIN32_FIND_DATAW item;
  if (!FindHandle(FindFirstFileW(path.c_str(), &item))) return false;
  if (item.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
    Folder = path;
    ScanFolderWaiting(Folder, true);
    SortAndShow();
    WaitForEditorWindow();
    ToEditor().FolderOpened(Folder.c_str());
    return true;
  }
  Folder = FolderOf(path);
  ListedFolders listed;
  AddSyllable(path, listed);
  SortAndShow();
  return true;
}

// The editor is being built on the main thread; it is sure to come.
void CFileListDlg::WaitForEditorWindow() const {
  while (!Editor->Hwnd) Sleep(100);
}

int CFileListDlg::ScanFolderWaiting(const std::wstring& folder, bool withSubfolders) {
  const WaitCursor waiting;
  return ScanFolder(folder, withSubfolders);
}

// A voicebank is its folder and the folders directly in it; what lies deeper is not looked at.
int CFileListDlg::ScanFolder(const std::wstring& folder, bool withSubfolders) {
  ListedFolders listed;
  const FolderListing* const listing = listed.Find(folder);
  if (!listing) return -1;
  for (const std::wstring& name : listing->Files()) {
    if (IsSoundFile(name)) AddSyllable(folder + L"\\" + name, listed);
  }
  if (!withSubfolders) return 0;
  for (const std::wstring& name : listing->Folders()) ScanFolderWaiting(folder + L"\\" + name, false);
  return 0;
}

// A wave that cannot be read gets its row all the same: no wave is opened here.
void CFileListDlg::AddSyllable(const std::wstring& path, ListedFolders& listed) {
  if (path.empty() || !SeenPaths.insert(path).second) return;
  SyllableEntry& entry = Entries.emplace_back();
  entry.Path = path;
  entry.HasMap = HasMapFile(path, FrqType, listed);
  entry.FrameEstimate = FrameEstimate(path, FrqType, listed);
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

// Whoever opens a folder has asked about unsaved edits before: they end here. The editor still holds pointers into the
// entries while they go; it waits in its send and is told to forget them before anything is selected.
void CFileListDlg::OpenFolder(const wchar_t* path) {
  Entries.clear();
  CurrentIndex = -1;
  SeenPaths.clear();
  if (path != Folder.c_str()) Folder = path;
  ScanFolderWaiting(Folder, true);
  SeenPaths.clear();
  UpdateColumns();
  SortAndShow();
  ToEditor().SetMap(nullptr, nullptr);
  ToEditor().FolderOpened(Folder.c_str());
  SelectRow(0);
  ToThumbnail().PostRefreshAll();
}

// What happened on the disk since the last look. Nothing watches the folder, so an outside change shows only here.
void CFileListDlg::RefreshMaps() {
  UpdateColumns();
  ListedFolders listed;
  for (int row = 0; row < RowCount(); ++row) {
    const int index = IndexOfRow(row);
    SyllableEntry* const entry = EntryAt(index);
    if (!entry) continue;
    SetHasMap(index, HasMapFile(entry->Path, FrqType, listed), true);
    entry->FrameEstimate = entry->HasMap ? FrameEstimate(entry->Path, FrqType, listed) : 0;
    SetMarkedCell(index, entry->Map.HasMarks);
  }
}

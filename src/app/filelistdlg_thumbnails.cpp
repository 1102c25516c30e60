// The window of thumbnails: its thread, and what the list does for it with the maps, which it never touches itself.
#include <windows.h>
#include <process.h>

#include <algorithm>
#include <exception>

#include "app/filelistdlg.h"

// A window that is not there is opened, whatever was asked.
void CFileListDlg::ShowThumbnail(bool show) {
  if (Thumbnail.Hwnd) {
    ShowWindow(Thumbnail.Hwnd, show ? SW_SHOW : SW_HIDE);
    return;
  }
  const EventHandle ready(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  Thumbnail.Owner = Hwnd;
  Thumbnail.Store = &Store;
  Thumbnail.ReadyEvent = ready.get();
  StartWindow(ThumbnailThread, ready.get());
}

unsigned WINAPI CFileListDlg::ThumbnailThread(void* list) {
  static_cast<CFileListDlg*>(list)->RunThumbnail();
  return 0;
}

// The editor's menu has a check mark for the window.
void CFileListDlg::RunThumbnail() {
  Thumbnail.Run(false);
  ToEditor().UpdateState();
}

// Comes back when the window is there, which it tells ahead of everything that it asks of the list, or when its thread
// has ended without one. So no second one is begun while the first is on its way.
void CFileListDlg::StartWindow(unsigned(WINAPI* thread)(void*), HANDLE ready) {
  std::erase_if(Threads, [](const ThreadHandle& each) { return WaitForSingleObject(each.get(), 0) == WAIT_OBJECT_0; });
  ThreadHandle started(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, thread, this, 0, nullptr)));
  if (!started) return;
  const HANDLE either[] = {ready, started.get()};
  WaitForMultipleObjects(2, either, FALSE, INFINITE);
  Threads.push_back(std::move(started));
}

// A window may still be on its way, so that it is told to go until its thread has ended.
void CFileListDlg::EndThreads() {
  constexpr DWORD kPauseMs = 50;
  for (const ThreadHandle& thread : Threads) {
    do {
      for (const HWND window : {Thumbnail.Hwnd.load(), ModifyBar.Hwnd.load()}) {
        if (window) PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
      }
    } while (WaitForSingleObject(thread.get(), kPauseMs) == WAIT_TIMEOUT);
  }
  Threads.clear();
}

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

#include "app/sidewindows.h"

#include <process.h>

#include <utility>

#include "app/suggestedchanges.h"

SideWindows::SideWindows(Document& syllables, DocumentFiles& files, std::function<void()> thumbnailEnded)
    : thumbnailEnded_(std::move(thumbnailEnded)) {
  Thumbnail.Syllables = &syllables;
  Thumbnail.Files = &files;
  modifyBar_.TextOfRun = [&syllables](int index, int sample) { return TextOfRun(syllables, index, sample); };
}

void SideWindows::ShowThumbnail(bool show, HWND list) {
  if (Thumbnail.Hwnd) {
    ShowWindow(Thumbnail.Hwnd, show ? SW_SHOW : SW_HIDE);
    return;
  }
  const EventHandle ready(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  Thumbnail.Owner = list;
  Thumbnail.Commands = Commands;
  Thumbnail.ReadyEvent = ready.get();
  StartWindow(ThumbnailThread, ready.get());
}

void SideWindows::ShowModifyBar(bool show, HWND list) {
  const HWND bar = modifyBar_.Hwnd;
  if (!show) {
    if (bar) SendMessageW(bar, WM_CLOSE, 0, 0);
    return;
  }
  if (bar) return;
  const EventHandle ready(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  modifyBar_.List = list;
  modifyBar_.Commands = Commands;
  modifyBar_.ReadyEvent = ready.get();
  StartWindow(ModifyBarThread, ready.get());
}

// The message is posted, as the bar may be waiting for the list.
void SideWindows::MoveModifyBar(int index, SampleCount sample) const {
  const HWND bar = modifyBar_.Hwnd;
  if (bar) PostMessageW(bar, CModifyFailureDlg::kMoveMessage, static_cast<WPARAM>(index), sample);
}

unsigned WINAPI SideWindows::ThumbnailThread(void* windows) {
  auto& self = *static_cast<SideWindows*>(windows);
  self.Thumbnail.Run(false);
  self.thumbnailEnded_();
  return 0;
}

unsigned WINAPI SideWindows::ModifyBarThread(void* windows) {
  static_cast<SideWindows*>(windows)->modifyBar_.Run(false);
  return 0;
}

// Comes back when the window is there, which it tells ahead of everything that it asks of the list, or when its thread
// has ended without one. So no second one is begun while the first is on its way.
void SideWindows::StartWindow(unsigned(WINAPI* thread)(void*), HANDLE ready) {
  std::erase_if(threads_, [](const ThreadHandle& each) { return WaitForSingleObject(each.get(), 0) == WAIT_OBJECT_0; });
  ThreadHandle started(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, thread, this, 0, nullptr)));
  if (!started) return;
  const HANDLE either[] = {ready, started.get()};
  WaitForMultipleObjects(2, either, FALSE, INFINITE);
  threads_.push_back(std::move(started));
}

// A window may still be on its way, so that it is told to go until its thread has ended.
void SideWindows::EndThreads() {
  constexpr DWORD kPauseMs = 50;
  for (const ThreadHandle& thread : threads_) {
    do {
      for (const HWND window : {Thumbnail.Hwnd.load(), modifyBar_.Hwnd.load()}) {
        if (window) PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
      }
    } while (WaitForSingleObject(thread.get(), kPauseMs) == WAIT_TIMEOUT);
  }
  threads_.clear();
}

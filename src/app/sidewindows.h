// SideWindows: the two windows that the list opens beside itself, thumbnails and modify bar, with the thread that each
// runs on.
//
// The list thread opens them, shows and hides them; each runs on its own thread until the user or the end of the
// process closes it, and may be opened again. What they ask of the list goes through messages to its window.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include "app/messages.h"
#include "base/handle.h"
#include "dialogs/modifydlg.h"
#include "dialogs/thumbnaildlg.h"

class SideWindows {
 public:
  // `syllables` and `files` are what the thumbnails show and read. `thumbnailEnded` is called on the thread of the
  // thumbnails, when their window has gone.
  SideWindows(Document& syllables, DocumentFiles& files, std::function<void()> thumbnailEnded);
  SideWindows(const SideWindows&) = delete;
  SideWindows& operator=(const SideWindows&) = delete;

  // Its window handle is null while there is no window.
  CThumbnailDlg Thumbnail;

  // The window whose keys act in both.
  HWND Commands = nullptr;

  // A window that is not there is opened, whatever was asked. `list` is the window that it asks.
  void ShowThumbnail(bool show, HWND list);

  // A bar that is open stays as it is, with its position; one that is not to be shown is closed.
  void ShowModifyBar(bool show, HWND list);

  // Takes the bar to a run of marks that is shown already. Without a bar nothing happens.
  void MoveModifyBar(int index, SampleCount sample) const;

  ThumbnailSender ToThumbnail() const { return ThumbnailSender(Thumbnail.Hwnd); }

  // Closes both and waits for their threads, on the main thread. To be called when the windows of the list and the
  // editor have gone: a send to either comes back at once then, so that no thread is waited for that waits itself.
  void EndThreads();

 private:
  static unsigned WINAPI ThumbnailThread(void* windows);
  static unsigned WINAPI ModifyBarThread(void* windows);
  void StartWindow(unsigned(WINAPI* thread)(void*), HANDLE ready);

  CModifyFailureDlg modifyBar_;
  std::function<void()> thumbnailEnded_;
  std::vector<ThreadHandle> threads_;  // the ended ones go when another one begins
};

// The commands that look at the whole voicebank: the thumbnails.
#include <windows.h>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "window/waitforwindow.h"

// The window goes in its own time, and its thread tells this one when it has gone.
void CEditorDlg::OnThumbnail(UINT) {
  if (!ToList().IsThumbnailVisible()) {
    ToList().PostShowThumbnail(true);
    return;
  }
  const HWND thumbnail = ToList().ThumbnailWindow();
  PostMessageW(thumbnail, WM_COMMAND, IDCANCEL, 0);
  WaitForWindowToGo(thumbnail);
}

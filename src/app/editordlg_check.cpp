// The commands that look at the whole voicebank: the thumbnails, and the check.
#include <windows.h>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "dialogs/checkdlg.h"
#include "window/waitcursor.h"
#include "window/waitforwindow.h"

// The window goes in its own time, and its thread tells this one when it has gone.
void CEditorDlg::OnThumbnail() {
  if (!ToList().IsThumbnailVisible()) {
    ToList().PostShowThumbnail(true);
    return;
  }
  const HWND thumbnail = ToList().ThumbnailWindow();
  PostMessageW(thumbnail, WM_COMMAND, IDCANCEL, 0);
  WaitForWindowToGo(thumbnail);
}

// The list checks while this thread waits for it and shows the marks of its own map.
void CEditorDlg::OnCheck() {
  CCheckFrqDlg dialog(CheckSettings);
  if (dialog.Run(false) != IDOK) return;
  CheckSettings = dialog.Settings;
  const WaitCursor waiting;
  ToList().RunCheck(CheckSettings);
}

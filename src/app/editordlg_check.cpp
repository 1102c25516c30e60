// The commands that look at the whole voicebank: the thumbnails, and the check with what it found.
#include <windows.h>

#include <algorithm>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "dialogs/checkdlg.h"
#include "resources/ids.h"
#include "window/waitcursor.h"
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

// The list checks while this thread waits for it, which shows the marks of its own map meanwhile.
void CEditorDlg::OnCheck(UINT) {
  CCheckFrqDlg dialog(CheckSettings);
  if (dialog.Run(false) != IDOK) return;
  CheckSettings = dialog.Settings;
  const WaitCursor waiting;
  ToList().RunCheck(CheckSettings);
}

void CEditorDlg::OnModifyAll(UINT) {
  ToList().Modify(-1, 0);
  Table().DropLayer();
  Table().RepaintNow();
}

// The run of marks between two sample positions is selected alone and stands a few columns in from the left.
void CEditorDlg::OnShowFailure(SampleCount first, SampleCount last) {
  constexpr SampleCount kColumnsBefore = 5;
  if (!CurrentMap) return;
  CurrentMap->SelectRange(first, last, true);
  const SampleCount column = std::max(0, CurrentMap->FrameAt(first).value_or(0) - kColumnsBefore);
  SendDlgItemMessageW(Hwnd, IDC_EDITOR_TABLE, FCM_SETSCROLLCOLUMN, static_cast<WPARAM>(column), 0);
  Table().DropLayer();
  Table().RepaintNow();
  SyncSelectionFromMap();
}

// What becomes of edits: saved, or thrown away after a question.
#include <windows.h>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "base/text.h"
#include "frqmap/mapfiles.h"
#include "resources/ids.h"
#include "window/messagebox.h"

// True if nothing is edited or the user lets it go. No is the default, and saving is not offered.
bool CEditorDlg::ConfirmDiscard() {
  if (!ToList().IsAnyEdited()) return true;
  return ShowMessage(Hwnd, LoadResString(IDS_DISCARD), MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

void CEditorDlg::OnSave(UINT) {
  if (!ToList().IsCurrentEdited()) return;
  FinishSave(ToList().SaveCurrent(AutoDeleteLlsm));
}

void CEditorDlg::OnSaveAll(UINT) {
  FinishSave(ToList().SaveAll(AutoDeleteLlsm));
}

// The saved copy follows the map even where the save failed: the second curve then shows what did not reach the file.
// Users know that curve as the state of the last attempt. After Save All it is renewed for the current syllable alone.
void CEditorDlg::FinishSave(DWORD error) {
  const FrqMap* const saved = CurrentMap;
  if (error != 0) ShowMessage(Hwnd, LoadResString(IDS_SAVEFAILED) + SystemErrorText(error), MB_ICONERROR);
  // While the box stood, the user may have chosen another row, whose saved copy is none of this save's business.
  if (CurrentMap && CurrentMap == saved) CurrentMap->CopyTo(*SavedMap);
  Table().SetMaps(SavedMap, CurrentMap);
  UpdateState();
}

// Reads the current map from its file again, on this thread: the list is idle meanwhile.
void CEditorDlg::ReloadCurrentMap() {
  if (!CurrentMap) return;
  LoadMap(*CurrentMap, CurrentPath, FrqType, &FileList->Store);
  CurrentMap->CopyTo(*SavedMap);
  ToList().SetCurrentEdited(false, CurrentMap);
  UpdateState();
}

// What becomes of edits and maps: saved, read again, thrown away, with the questions before and the words after.
#include <windows.h>

#include <exception>
#include <mutex>

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
  FinishSave(ToList().SaveCurrent(Settings.AutoDeleteLlsm));
}

void CEditorDlg::OnSaveAll(UINT) {
  FinishSave(ToList().SaveAll(Settings.AutoDeleteLlsm));
}

// The saved copy follows the map even where the save failed: the second curve then shows what did not reach the file.
// Users know that curve as the state of the last attempt. After Save All it is renewed for the current syllable alone.
void CEditorDlg::FinishSave(DWORD error) {
  const FrqMap* const saved = CurrentMap;
  if (error != 0) ShowMessage(Hwnd, LoadResString(IDS_SAVEFAILED) + SystemErrorText(error), MB_ICONERROR);
  // While the box stood, the user may have chosen another row, whose saved copy is none of this save's business.
  if (CurrentMap && CurrentMap == saved) CopyToSaved();
  Table().SetMaps(SavedMap, CurrentMap);
  UpdateState();
}

void CEditorDlg::CopyToSaved() {
  try {
    CurrentMap->CopyTo(*SavedMap);
  } catch (const std::exception&) {
    SavedMap->Clear();  // memory does not hold it twice: no second curve
  }
}

// Reads the current map from its file again, on this thread: the list is idle meanwhile. A map that memory does not
// hold twice is as good as one that cannot be read.
void CEditorDlg::ReloadCurrentMap() {
  if (!CurrentMap) return;
  {
    const std::lock_guard lock(FileList->ReloadLock);
    try {
      LoadMap(*CurrentMap, MapPath, Settings.FrqType, &FileList->Store);
      CurrentMap->CopyTo(*SavedMap);
    } catch (const std::exception&) {
      CurrentMap->Clear();
      SavedMap->Clear();
    }
  }
  ToList().SetCurrentEdited(false, CurrentMap);
  UpdateState();
}

void CEditorDlg::ShowReloaded() {
  Table().SetSelection({});
  Table().DropLayer();
  Table().RepaintNow();
  ShowFrames();
}

// A map without edits is not even read: what changed it from outside does not come in here.
void CEditorDlg::ReloadIfEdited() {
  if (!ToList().IsCurrentEdited()) return;
  ReloadCurrentMap();
  ShowReloaded();
  UpdateState();
  ToList().ShowModifyBar(false, true);
}

// The edits of one syllable go without a question.
void CEditorDlg::OnReloadSyllable(UINT) {
  ReloadIfEdited();
  ToList().SetFailed(ToList().Selection(), false);
  ToList().ShowModifyBar(false, false);
}

// The map that is shown is empty where its file has gone, which the list does not tell.
void CEditorDlg::OnReloadAll(UINT) {
  if (!ConfirmDiscard()) return;
  const bool reloaded = ToList().ReloadMaps(false);
  if (reloaded || (CurrentMap && !CurrentMap->Loaded)) ShowReloaded();
  UpdateState();
}

// One question covers the unsaved edits too.
void CEditorDlg::OnRemoveAll(UINT) {
  if (ShowMessage(Hwnd, LoadResString(IDS_ASKREMOVEALL), MB_YESNO) != IDYES) return;
  RemoveMaps();
  Table().SetMaps(SavedMap, CurrentMap);
  ShowFrames();
  Table().RepaintNow();
  UpdateState();
  ToList().PostRefreshThumbnail();
  ToList().ShowModifyBar(false, false);
}

// A map that cannot be deleted keeps its place and its edits.
void CEditorDlg::RemoveMaps() {
  MrqStore& store = FileList->Store;
  const int count = ToList().Count();
  for (int index = 0; index < count; ++index) {
    const std::wstring map = MapPathFromWaveW(ToList().Path(index), Settings.FrqType);
    if (DeleteMapFile(map, &store, false)) ToList().SetHasMap(index, false, false);
  }
  if (Settings.FrqType == FrqTypeMrq) store.CompactFiles();
}

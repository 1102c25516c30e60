// What becomes of edits and maps: saved, read again, thrown away, taken back, with the questions before and the words
// after.
#include <windows.h>

#include <mutex>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "base/path.h"
#include "base/text.h"
#include "resources/ids.h"
#include "window/messagebox.h"

// True if nothing is edited or the user lets it go. No is the default, and saving is not offered.
bool CEditorDlg::ConfirmDiscard() {
  if (Syllables.State().Edited == 0) return true;
  return ShowMessage(Hwnd, LoadResString(IDS_DISCARD), MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

void CEditorDlg::OnSave() {
  if (!Syllables.State().CurrentEdited) return;
  FinishSave(ToList().SaveCurrent(Settings.AutoDeleteLlsm));
}

void CEditorDlg::OnSaveAll() {
  FinishSave(ToList().SaveAll(Settings.AutoDeleteLlsm));
}

// The saved copy follows the map even where the save failed: the second curve then shows what did not reach the file.
// Users know that curve as the state of the last attempt. After Save All it is renewed for the current syllable alone.
void CEditorDlg::FinishSave(DWORD error) {
  const FrqMap* const saved = Map.Map();
  if (error != 0) ShowMessage(Hwnd, LoadResString(IDS_SAVEFAILED) + SystemErrorText(error), MB_ICONERROR);
  // While the box stood, the user may have chosen another row, whose saved copy is none of this save's business.
  if (Map && Map.Map() == saved) Syllables.RenewSaved(Map.Index());
  UpdateState();
}

// A map without edits is not even read: what changed it from outside does not come in here.
void CEditorDlg::ReloadIfEdited() {
  if (!Syllables.State().CurrentEdited) return;
  Syllables.Reload(Map.Index(), Document::OnFailure::EmptySaved, true);
  ToList().ShowModifyBar(false, true);
}

// The edits of one syllable go without a question.
void CEditorDlg::OnReloadSyllable() {
  ReloadIfEdited();
  ToList().SetFailed(ToList().Selection(), false);
  ToList().ShowModifyBar(false, false);
}

void CEditorDlg::OnReloadAll() {
  if (!ConfirmDiscard()) return;
  ToList().ReloadMaps(false);
  UpdateState();
}

// One question covers the unsaved edits too. A map that cannot be deleted keeps its place and its edits.
void CEditorDlg::OnRemoveAll() {
  if (ShowMessage(Hwnd, LoadResString(IDS_ASKREMOVEALL), MB_YESNO) != IDYES) return;
  {
    const std::lock_guard many(Syllables);
    for (int index = 0; index < Syllables.State().Entries; ++index) Syllables.Remove(index);
  }
  if (Settings.FrqType == FrqTypeMrq) Bank.Files.Store.CompactFiles();
  Table().SetMaps(Map.Saved(), Map.Map());
  Frames.ShowFrames();
  UpdateState();
  ToList().PostRefreshThumbnail();
  ToList().ShowModifyBar(false, false);
}

// The syllable that the step concerns comes first, so that what changes is seen. Not while a dialog of ours stands in
// front, which other windows do not know of.
void CEditorDlg::OnStepBack(UINT id) {
  if (!IsWindowEnabled(Hwnd)) return;
  const bool redo = id == ID_EDIT_REDO;
  const DocumentState state = Syllables.State();
  const int entry = redo ? state.RedoEntry : state.UndoEntry;
  if (entry < 0) return;
  if (entry != Map.Index()) ToList().SelectSyllable(entry);
  const StepResult result = redo ? Syllables.Redo() : Syllables.Undo();
  if (result.What != StepResult::Lost) return;
  const std::wstring name = FileNameOf(Syllables.Facts(result.Entry).Path);
  Word.Show(Hwnd, Item(IDC_EDITOR_TABLE), LoadResString(IDS_STEPLOST_TITLE),
            FormatText(LoadResString(IDS_STEPLOST).c_str(), name.c_str()));
}

#include "app/editcommands.h"

#include <mutex>

#include "app/discardquestion.h"
#include "base/path.h"
#include "base/text.h"
#include "resources/ids.h"
#include "window/messagebox.h"

bool EditCommands::ConfirmDiscard() const {
  return ::ConfirmDiscard(editor_, syllables_);
}

void EditCommands::Save(const FileListSender& list) {
  if (syllables_.State().CurrentEdited) FinishSave(list.SaveCurrent(settings_.AutoDeleteLlsm));
}

void EditCommands::SaveAll(const FileListSender& list) {
  FinishSave(list.SaveAll(settings_.AutoDeleteLlsm));
}

// The saved copy follows the map even where the save failed: the second curve then shows what did not reach the file.
// Users know that curve as the state of the last attempt. After Save All it is renewed for the current syllable alone.
void EditCommands::FinishSave(DWORD error) {
  const FrqMap* const saved = map_.Map();
  if (error != 0) ShowMessage(editor_, LoadResString(IDS_SAVEFAILED) + SystemErrorText(error), MB_ICONERROR);
  // While the box stood, the user may have chosen another row, whose saved copy is none of this save's business.
  if (map_ && map_.Map() == saved) syllables_.RenewSaved(map_.Index());
}

void EditCommands::ReloadIfEdited(const FileListSender& list) {
  if (!syllables_.State().CurrentEdited) return;
  syllables_.Reload(map_.Index(), Document::OnFailure::EmptySaved, true);
  list.ShowModifyBar(false, true);
}

void EditCommands::ReloadSyllable(const FileListSender& list) {
  ReloadIfEdited(list);
  list.SetFailed(list.Selection(), false);
  list.ShowModifyBar(false, false);
}

void EditCommands::ReloadAll(const FileListSender& list) {
  if (ConfirmDiscard()) list.ReloadMaps(false);
}

// A map that cannot be deleted keeps its place and its edits.
void EditCommands::RemoveAll(const FileListSender& list) {
  if (ShowMessage(editor_, LoadResString(IDS_ASKREMOVEALL), MB_YESNO) != IDYES) return;
  {
    const std::lock_guard many(syllables_);
    for (int index = 0; index < syllables_.State().Entries; ++index) syllables_.Remove(index);
  }
  if (settings_.FrqType == FrqTypeMrq) bank_.Files.Store.CompactFiles();
  frames_.Table().SetMaps(map_.Saved(), map_.Map());
  frames_.ShowFrames();
  list.PostRefreshThumbnail();
  list.ShowModifyBar(false, false);
}

// The syllable that the step concerns comes first, so that what changes is seen. Not while a dialog of ours stands in
// front, which other windows do not know of.
void EditCommands::StepBack(const FileListSender& list, bool redo) {
  if (!IsWindowEnabled(editor_)) return;
  const auto nextEntry = [&] {
    const DocumentState state = syllables_.State();
    return redo ? state.RedoEntry : state.UndoEntry;
  };
  const int entry = nextEntry();
  if (entry < 0) return;
  if (entry != map_.Index()) list.SelectSyllable(entry);
  // The bar may have made a step while the list was asked.
  if (entry != nextEntry()) return;
  const StepResult result = redo ? syllables_.Redo() : syllables_.Undo();
  if (result.What != StepResult::Lost) return;
  const std::wstring name = FileNameOf(syllables_.Facts(result.LostEntry).Path);
  Tell(LoadResString(IDS_STEPLOST_TITLE), FormatText(LoadResString(IDS_STEPLOST).c_str(), name.c_str()));
}

void EditCommands::TellIfNothing(bool redo) {
  const DocumentState state = syllables_.State();
  if (redo ? state.Redo.has_value() : state.Undo.has_value()) return;
  Tell(LoadResString(IDS_NAME), LoadResString(redo ? IDS_NOTHINGTOREDO : IDS_NOTHINGTOUNDO));
}

void EditCommands::Tell(const std::wstring& title, const std::wstring& text) {
  word_.Show(editor_, GetDlgItem(editor_, IDC_EDITOR_TABLE), title, text);
}

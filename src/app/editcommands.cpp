#include "app/editcommands.h"

#include <mutex>

#include "app/discardquestion.h"
#include "app/words.h"
#include "base/path.h"
#include "base/registry.h"
#include "base/text.h"
#include "dialogs/mapchangeddlg.h"
#include "resources/ids.h"
#include "window/balloon.h"
#include "window/disabledwindow.h"
#include "window/messagebox.h"

namespace {

// The list is disabled meanwhile, so that no other syllable becomes the current one under the question.
int AskOfChange(HWND editor, HWND list, const std::wstring& wave) {
  const DisabledWindow disabled(list);
  CMapChangedDlg dialog;
  dialog.ParentWindow = editor;
  dialog.Wave = wave;
  return dialog.Run(false);
}

}  // namespace

bool EditCommands::ConfirmDiscard() const {
  return ::ConfirmDiscard(editor_, syllables_);
}

void EditCommands::Save(const FileListSender& list) {
  if (syllables_.State().CurrentEdited) SaveAsking(list, syllables_.Current());
}

void EditCommands::SaveAll(const FileListSender& list) {
  SaveAsking(list, -1);
}

// Saves one syllable or, for a negative index, all. The list tells where another program was at work, and goes on when
// the user has said what is to become of it. To cancel ends the run as a failure does, but leaves the second curve of a
// map that is still edited as it was: nothing was tried.
void EditCommands::SaveAsking(const FileListSender& list, int index) {
  SaveRecord record{.Index = index, .DeleteLlsm = settings_.AutoDeleteLlsm};
  for (list.Save(record); record.Changed >= 0; list.Save(record)) {
    const std::wstring path = syllables_.Facts(record.Changed).Path;
    const int choice = AskOfChange(editor_, list.Window(), FileNameOf(path));
    if (syllables_.Facts(record.Changed).Path != path) return;  // another folder was opened meanwhile
    if (choice == IDC_MAPCHANGED_OVERWRITE) {
      record.Overwrite = record.Changed;
    } else if (choice == IDC_MAPCHANGED_RELOAD) {
      ReloadFile(list, record.Changed);
    } else {
      break;
    }
  }
  const bool isLeftEdited = index < 0 ? syllables_.State().Edited > 0 : syllables_.Facts(index).Edited;
  if (record.Changed < 0 || !syllables_.Facts(map_.Index()).Edited) {
    FinishSave(record.Error, isLeftEdited && record.Changed < 0);
  }
}

void EditCommands::ReloadFile(const FileListSender& list, int index) {
  syllables_.Reload(index, Document::OnFailure::EmptySaved, true);
  list.ShowModifyBar(false, true);
}

// The saved copy follows the map even where the save failed: the second curve then shows what did not reach the file.
// Users know that curve as the state of the last attempt. After Save All it is renewed for the current syllable alone.
// A map without frames has nothing to save, which is no error of the system's and gets no box.
void EditCommands::FinishSave(DWORD error, bool isLeftEdited) {
  const FrqMap* const saved = map_.Map();
  if (error != 0) ShowMessage(editor_, LoadResString(IDS_SAVEFAILED) + SystemErrorText(error), MB_ICONERROR);
  if (error == 0 && isLeftEdited) Tell(LoadResString(IDS_NAME), LoadResString(IDS_NOTHINGAPPLIES));
  // While the box stood, the user may have chosen another row, whose saved copy is none of this save's business.
  if (map_ && map_.Map() == saved) syllables_.RenewSaved(map_.Index());
}

void EditCommands::PressReload(const FileListSender& list) {
  if (!syllables_.State().CurrentEdited) {
    Balloon::Show(GetDlgItem(editor_, IDC_EDITOR_RELOAD), LoadResString(IDS_NOTHINGAPPLIES));
  }
  ReloadIfEdited(list);
}

void EditCommands::ReloadIfEdited(const FileListSender& list) {
  if (syllables_.State().CurrentEdited) ReloadFile(list, map_.Index());
}

void EditCommands::ReloadSyllable(const FileListSender& list) {
  ReloadIfEdited(list);
  list.ForgetMarks(list.Selection());
  list.ShowModifyBar(false, false);
}

void EditCommands::ReloadAll(const FileListSender& list) {
  if (ConfirmDiscard()) list.ReloadMaps(false);
}

// A map that cannot be deleted keeps its place and its edits.
void EditCommands::RemoveAll(const FileListSender& list) {
  if (ShowMessage(editor_, LoadResString(IDS_ASKREMOVEALL), MB_YESNO) != IDYES) return;
  int removed = 0;
  std::vector<std::wstring> left;
  {
    const KeptBecauseScope because(bank_.Run.Safety, KeptBecause::Removed);
    const std::lock_guard many(syllables_);
    for (int index = 0; index < syllables_.State().Entries; ++index) {
      const EntryFacts facts = syllables_.Facts(index);
      if (syllables_.Remove(index)) {
        ++removed;
      } else if (facts.HasMap) {
        left.push_back(facts.Path);
      }
    }
  }
  const bool isCompact = settings_.FrqType != FrqTypeMrq || bank_.Files.Store.CompactFiles();
  frames_.Table().SetMaps(map_.Saved(), map_.Map());
  frames_.ShowFrames();
  list.PostRefreshThumbnail();
  list.ShowModifyBar(false, false);
  TellSum(ID_EDIT_REMOVEALL, TextOfCounts(removed, left), isCompact);
}

// The syllable that the step concerns comes first, so that what changes is seen. Nothing happens while a dialog of ours
// stands in front, which other windows do not know of.
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

void EditCommands::TellSum(UINT command, std::wstring text, bool isCompact) const {
  if (!isCompact) text += L" " + LoadResString(IDS_COMPACTFAILED);
  Tell(CommandName(GetMenu(editor_), command), text);
}

void EditCommands::TellIfNotKept() const {
  if (Balloon::IsShown()) return;
  if (TakeSettingsFailure()) {
    Tell(LoadResString(IDS_NAME), LoadResString(IDS_SETTINGSNOTKEPT));
  } else if (bank_.Run.Safety.TakeKeepFailure()) {
    Tell(LoadResString(IDS_NAME), LoadResString(IDS_MAPSNOTKEPT));
  }
}

void EditCommands::Tell(const std::wstring& title, const std::wstring& text) const {
  Balloon::Show(GetDlgItem(editor_, IDC_EDITOR_TABLE), text, title);
}

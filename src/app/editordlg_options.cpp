// The settings of the editor and the command that changes them: another resampler, with which the kind of map at work
// may change, concerns the list and the table too.
#include <windows.h>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "base/path.h"
#include "dialogs/optiondlg.h"
#include "resampler/resamplerkind.h"
#include "resources/ids.h"

void CEditorDlg::LoadSettings() {
  settings_.LoadResampler(PluginMode ? argument_ : std::wstring());
  ShareKind();
  settings_.LoadOptions();
  recent_.Load();
}

// The list looks at the kind when it is told to refresh. The table misses it before the window exists, but gets it
// again with each syllable.
void CEditorDlg::ShareKind() {
  bank_.Files.Kind = settings_.FrqType;
  bank_.Run.SetResampler(settings_.ResamplerPath);
  Table().SetKind(settings_.FrqType);
  frames_.SetKind(settings_.FrqType);
}

void CEditorDlg::OnOption() {
  COptionDlg dialog;
  dialog.ParentWindow = Hwnd;
  dialog.ResamplerPath = settings_.ResamplerPath;
  if (settings_.ResamplerPath.empty()) dialog.Bundled = FileNameOf(settings_.ResamplerInUse());
  dialog.MaxParallelCount = settings_.MaxParallelCount;
  dialog.AutoDeleteLlsm = settings_.AutoDeleteLlsm;
  if (dialog.Run(false) != IDOK) return;

  // Edits belong to one kind. A user who keeps them keeps all of the old options.
  const bool kindChanges = GetResamplerKind(dialog.ResamplerPath) != settings_.FrqType;
  if (kindChanges && !edits_.ConfirmDiscard()) return;
  settings_.ChooseResampler(dialog.ResamplerPath);
  settings_.MaxParallelCount = dialog.MaxParallelCount;
  settings_.AutoDeleteLlsm = dialog.AutoDeleteLlsm;
  preview_.ClearFolder();
  settings_.UpdateKind();
  ShareKind();
  if (kindChanges) {
    ReloadEverything(true);
    bank_.Run.BeginJournal(FileList->Folder, settings_.FrqType);
    ToList().PostRefreshMaps();
    ToList().PostRefreshThumbnail();
    ToList().ShowModifyBar(false, false);
  }
  UpdateState();
}

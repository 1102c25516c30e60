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
  Settings.LoadResampler(PluginMode ? Argument : std::wstring());
  ShareKind();
  Settings.LoadOptions();
  Recent.Load();
}

// The list looks at the kind when it is told to refresh. The table misses it before the window exists, but gets it
// again with each syllable.
void CEditorDlg::ShareKind() {
  Bank.Files.Kind = Settings.FrqType;
  Bank.Run.SetResampler(Settings.ResamplerPath);
  Table().SetKind(Settings.FrqType);
  Frames.SetKind(Settings.FrqType);
}

void CEditorDlg::OnOption() {
  COptionDlg dialog;
  dialog.ParentWindow = Hwnd;
  dialog.ResamplerPath = Settings.ResamplerPath;
  if (Settings.ResamplerPath.empty()) dialog.Bundled = FileNameOf(Settings.ResamplerInUse());
  dialog.MaxParallelCount = Settings.MaxParallelCount;
  dialog.AutoDeleteLlsm = Settings.AutoDeleteLlsm;
  if (dialog.Run(false) != IDOK) return;

  // Edits belong to one kind. A user who keeps them keeps all of the old options.
  const bool kindChanges = GetResamplerKind(dialog.ResamplerPath) != Settings.FrqType;
  if (kindChanges && !Edits.ConfirmDiscard()) return;
  Settings.ChooseResampler(dialog.ResamplerPath);
  Settings.MaxParallelCount = dialog.MaxParallelCount;
  Settings.AutoDeleteLlsm = dialog.AutoDeleteLlsm;
  Preview.ClearFolder();
  Settings.UpdateKind();
  ShareKind();
  if (kindChanges) {
    ReloadEverything(true);
    Bank.Run.BeginJournal(FileList->Folder, Settings.FrqType);
    ToList().PostRefreshMaps();
    ToList().PostRefreshThumbnail();
    ToList().ShowModifyBar(false, false);
  }
  UpdateState();
}

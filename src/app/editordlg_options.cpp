// The settings of the editor and the command that changes them: another resampler, with which the kind of map at work
// may change, concerns the list and the table too.
#include <windows.h>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "dialogs/optiondlg.h"
#include "resampler/resamplerkind.h"
#include "resources/ids.h"

void CEditorDlg::LoadSettings() {
  Settings.LoadResampler(PluginMode ? Argument : std::wstring());
  ShareKind();
  Settings.LoadOptions();
  Recent.Load();
}

// The list looks at its own copy of the kind when it is told to refresh. Before the window exists the control's share
// is lost; it gets it again with each syllable.
void CEditorDlg::ShareKind() {
  FileList->FrqType = Settings.FrqType;
  FileList->Thumbnail.MapKind = Settings.FrqType;
  Table().SetKind(Settings.FrqType);
  SendLimits();
}

void CEditorDlg::OnOption() {
  COptionDlg dialog;
  dialog.ParentWindow = Hwnd;
  dialog.ResamplerPath = Settings.ResamplerPath;
  dialog.MaxParallelCount = Settings.MaxParallelCount;
  dialog.AutoDeleteLlsm = Settings.AutoDeleteLlsm;
  if (dialog.Run(false) != IDOK) return;

  // Edits are those of one kind. Who keeps them keeps all of the old options.
  const bool kindChanges = GetResamplerKind(dialog.ResamplerPath) != Settings.FrqType;
  if (kindChanges && !ConfirmDiscard()) return;
  Settings.ChooseResampler(dialog.ResamplerPath);
  Settings.MaxParallelCount = dialog.MaxParallelCount;
  Settings.AutoDeleteLlsm = dialog.AutoDeleteLlsm;
  Preview.ClearFolder();
  Settings.UpdateKind();
  ShareKind();
  EnableWindow(Item(IDC_EDITOR_FREQUENCY), TRUE);
  EnableWindow(Item(IDC_EDITOR_SET), TRUE);
  if (kindChanges) ShowNewKind();
  UpdateState();
}

void CEditorDlg::ShowNewKind() {
  ReloadEverything();
  ToList().PostRefreshMaps();
  ToList().PostRefreshThumbnail();
  ToList().ShowModifyBar(false, false);
}

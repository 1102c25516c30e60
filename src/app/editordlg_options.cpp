// The options: another resampler, with which the kind of map at work may change.
#include <windows.h>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "dialogs/optiondlg.h"
#include "resampler/resamplerkind.h"
#include "resources/ids.h"

void CEditorDlg::OnOption(UINT) {
  COptionDlg dialog;
  dialog.ParentWindow = Hwnd;
  dialog.ResamplerPath = ResamplerPath;
  dialog.MaxParallelCount = MaxParallelCount;
  dialog.AutoDeleteLlsm = AutoDeleteLlsm;
  if (dialog.Run(false) != IDOK) return;

  // Edits are those of one kind. Who keeps them keeps all of the old options.
  const bool kindChanges = GetResamplerKind(dialog.ResamplerPath) != FrqType;
  if (kindChanges && !ConfirmDiscard()) return;
  if (lstrcmpiW(dialog.ResamplerPath.c_str(), ResamplerPath.c_str()) != 0) {
    ResamplerPath = dialog.ResamplerPath;
    ResamplerChanged = true;
  }
  MaxParallelCount = dialog.MaxParallelCount;
  AutoDeleteLlsm = dialog.AutoDeleteLlsm;
  Preview.ClearFolder();
  ApplyResamplerKind();
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

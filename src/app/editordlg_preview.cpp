// Play: what the user asks of a preview, taken from the boxes and the map when the button is pressed.
#include <windows.h>
#include <commctrl.h>

#include <exception>
#include <utility>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "base/text.h"
#include "frqmap/mrqmap.h"
#include "resources/ids.h"

// The same button stops what it began.
void CEditorDlg::OnPlayPressed() {
  if (Preview.IsRunning()) {
    Preview.Stop();
    return;
  }
  if (!CurrentMap) return;
  try {
    PreviewInput input = CollectPreviewInput();
    SetDlgItemTextW(Hwnd, IDC_EDITOR_PLAY, LoadResString(IDS_STOP).c_str());
    Preview.Start(std::move(input));
  } catch (const std::exception&) {
    OnPreviewDone();  // a map that memory does not hold twice is not played
  }
}

PreviewInput CEditorDlg::CollectPreviewInput() const {
  PreviewInput input;
  input.WavePath = CurrentPath;
  input.FrqType = FrqType;
  CurrentMap->CopyTo(input.Map);
  if (FrqType == FrqTypeMrq) input.Entry = FileList->Store.Find(MrqKey(MapPathFromWaveW(CurrentPath, FrqType)));
  const LRESULT position = SendMessageW(Item(IDC_EDITOR_PITCH), TBM_GETPOS, 0, 0);
  input.Settings.PitchShift = static_cast<int>(position) - kPitchMiddle;
  input.Settings.Modulation = ModulationFromText(WindowText(Item(IDC_EDITOR_MODULATION)));
  input.Settings.Flags = WithoutQuotes(WindowText(Item(IDC_EDITOR_FLAGS)));
  input.Settings.Direct = IsDlgButtonChecked(Hwnd, IDC_EDITOR_DIRECT) == BST_CHECKED;
  input.ResamplerPath = ResamplerPath;
  input.Window = Hwnd;
  return input;
}

// One family keeps more beside a wave than its map, and takes it for that of the next wave of the name.
void CEditorDlg::OnPreviewDone() {
  Preview.Finish();
  SetDlgItemTextW(Hwnd, IDC_EDITOR_PLAY, LoadResString(IDS_PLAY).c_str());
  if (FrqType == FrqTypeMrq) Preview.ClearFolder();
}

// The wave itself is played as it is, so nothing that a resampler would take counts. Labels without an id, as the
// English form has them, stay as they are.
void CEditorDlg::OnDirectPressed() {
  const bool rendered = IsDlgButtonChecked(Hwnd, IDC_EDITOR_DIRECT) != BST_CHECKED;
  for (const int id : {IDC_EDITOR_PITCHLABEL, IDC_EDITOR_PITCH, IDC_EDITOR_PITCHTEXT, IDC_EDITOR_MODULATIONLABEL,
                       IDC_EDITOR_MODULATION, IDC_EDITOR_PERCENTLABEL, IDC_EDITOR_FLAGSLABEL, IDC_EDITOR_FLAGS}) {
    EnableWindow(Item(id), rendered);
  }
}

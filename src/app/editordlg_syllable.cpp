// The syllable that the list has handed over: its map in the control and the frame list, its wave in the boxes.
#include <windows.h>

#include "app/editordlg.h"
#include "base/path.h"
#include "base/text.h"
#include "resources/ids.h"
#include "voicebank/waveheader.h"

// The very map that is shown brings nothing new: a caller who changed what is in it sends EDM_REFRESHMAP.
void CEditorDlg::OnSetMap(FrqMap* saved, FrqMap* map) {
  MapPath = CurrentPath;
  if (map == CurrentMap) return;
  CurrentMap = map;
  SavedMap = saved;
  Table().SetMaps(SavedMap, CurrentMap);
  ShowFrames();
  Table().RepaintNow();
  UpdateState();
}

void CEditorDlg::OnSetSyllable(const wchar_t* wavePath) {
  CurrentPath = wavePath;
  SetDlgItemTextW(Hwnd, IDC_EDITOR_TABLE, FileNameOf(CurrentPath).c_str());
  Table().SetWavePath(CurrentPath.c_str());
  Table().SetKind(Settings.FrqType);
  SetDlgItemTextW(Hwnd, IDC_EDITOR_WAVEINFO, WaveInformation().c_str());
}

// Rate, bits, channels and length of the wave; empty if its header cannot be read.
std::wstring CEditorDlg::WaveInformation() const {
  WaveHeader wave;
  if (wave.Load(CurrentPath, true) != 0) return {};
  const std::wstring channels = LoadResString(wave.format.channels == 1 ? IDS_MONAURAL : IDS_STEREO);
  return FormatText(LoadResString(IDS_WAVEINFO).c_str(), wave.format.samplesPerSec, wave.format.bitsPerSample,
                    channels.c_str(), wave.LengthSeconds());
}

// Frames are rebuilt where the list has edited the map: Ctrl+S asks the menu as it stands whether there is anything to
// save.
void CEditorDlg::OnRefreshMap(bool rebuildFrames) {
  Table().DropLayer();
  Table().RepaintNow();
  if (!rebuildFrames) return;
  ShowFrames();
  UpdateState();
}

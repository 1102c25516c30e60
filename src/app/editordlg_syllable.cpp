// The syllable in the editor: what the list hands over, and what the document tells of it.
#include <windows.h>

#include "app/editordlg.h"
#include "app/words.h"
#include "base/path.h"
#include "base/text.h"
#include "resources/ids.h"
#include "voicebank/waveheader.h"
#include "window/balloon.h"

namespace {

// Rate, bits, channels and length of a wave; empty if its header cannot be read.
std::wstring WaveInformation(const std::wstring& path) {
  WaveHeader wave;
  if (wave.Load(path, true) != 0) return {};
  const std::wstring channels = LoadResString(wave.format.channels == 1 ? IDS_MONAURAL : IDS_STEREO);
  return FormatText(LoadResString(IDS_WAVEINFO).c_str(), wave.format.samplesPerSec, wave.format.bitsPerSample,
                    channels.c_str(), wave.LengthSeconds());
}

// Tells the editor, from another thread that waits meanwhile, if its map is another one now. Frames that the bar has
// changed are no news from here: the list tells of them when it is through (ApplyFailure).
void TellFromAfar(HWND editor, const DocumentChanges& changes, int shown) {
  unsigned facts = 0;
  for (const EntryChange& change : changes.Entries) {
    if (change.Index == shown) facts |= change.Facts;
  }
  if (facts & EntryChange::Frames) return;
  if (facts & (EntryChange::Replaced | EntryChange::Marks)) {
    EditorSender(editor).RefreshMap((facts & EntryChange::Replaced) != 0);
  } else if (changes.History) {
    EditorSender(editor).UpdateState();
  }
}

}  // namespace

// The very map that is shown brings nothing new: a caller who changed what is in it sends EDM_REFRESHMAP. Maps that are
// no pair of the document's are ignored, since they are not the list's: any program may send anything.
void CEditorDlg::OnSetMap(FrqMap* saved, FrqMap* map) {
  if (map == map_.Map() || !bank_.Editing.MayShow(saved, map)) return;
  map_.Set(saved, map);
  Table().SetMaps(saved, map);
  frames_.ShowFrames();
  Table().ShowCurve();
  Table().RepaintNow();
  UpdateState();
  TellIfUnreadable(Item(IDC_EDITOR_TABLE), bank_, map_.Index());
}

void CEditorDlg::OnSetSyllable(const wchar_t* wavePath) {
  Balloon::Hide();  // it tells of another syllable
  sounds_.Stop();
  CurrentPath = wavePath;
  SetDlgItemTextW(Hwnd, IDC_EDITOR_TABLE, FileNameOf(CurrentPath).c_str());
  Table().SetWavePath(CurrentPath.c_str());
  pitches_.SetWave(CurrentPath);
  Table().SetKind(settings_.FrqType);
  SetDlgItemTextW(Hwnd, IDC_EDITOR_WAVEINFO, WaveInformation(CurrentPath).c_str());
}

// The frames are rebuilt where the list has edited the map, and the commands with them: Ctrl+S asks the menu as it
// stands whether there is anything to save.
void CEditorDlg::OnRefreshMap(bool rebuildFrames) {
  Table().DropLayer();
  Table().RepaintNow();
  if (!rebuildFrames) return;
  frames_.ShowFrames();
  UpdateState();
}

void CEditorDlg::OnChanged(const DocumentChanges& changes) {
  if (!Hwnd) return;
  const int shown = map_.Index();
  if (GetWindowThreadProcessId(Hwnd, nullptr) != GetCurrentThreadId()) {
    if (!inJob_) TellFromAfar(Hwnd, changes, shown);
    return;
  }
  bool stateChanges = changes.History;
  for (const EntryChange& change : changes.Entries) {
    if (change.Index == shown) frames_.Show(change);
    if (change.Index == shown && (change.Facts & EntryChange::Readable)) {
      TellIfUnreadable(Item(IDC_EDITOR_TABLE), bank_, shown);
    }
    stateChanges = stateChanges || (change.Facts & (EntryChange::Edited | EntryChange::HasMap));
  }
  if (stateChanges) UpdateState();
}

// The check: the run over the maps of all syllables, and the answers to the bar, which goes through its marks.
#include <windows.h>

#include <mutex>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "app/gocommands.h"
#include "app/voicebankcheck.h"
#include "app/words.h"
#include "base/text.h"
#include "check/marksearch.h"
#include "resources/ids.h"
#include "window/balloon.h"
#include "window/messagebox.h"
#include "window/waitcursor.h"

// Everything runs on this thread: the editor waits in its send and shows what becomes of its own map meanwhile.
void CFileListDlg::RunCheck(const CheckFrqSettings& settings) {
  CheckSum sum;
  bool hasEntry = false;
  {
    const CheckLibrary library;
    if (!library.IsLoaded()) {
      ShowMessage(Hwnd, LoadResString(IDS_CHECKLIBRARYFAILED), MB_ICONERROR);
      return;
    }
    const WaitCursor waiting;
    hasEntry = library.HasEntry();
    if (hasEntry) {
      VoicebankCheck check(bank_, Editor->Hwnd);
      check.Run(library, settings);
      sum = check.Sum();
    }
  }
  Windows.ToThumbnail().PostRefreshAll();
  if (sum.End == CheckSum::BrokeOff) ShowMessage(Hwnd, LoadResString(IDS_CHECKBROKEOFF), MB_ICONERROR);
  if (sum.Marks > 0) Windows.ShowModifyBar(true, Hwnd);
  const std::wstring text = hasEntry ? TextOf(sum) : LoadResString(IDS_CHECK_NOENTRY);
  if (sum.End != CheckSum::BrokeOff && !text.empty()) Balloon::Show(rows_.Window(), text);
}

void CFileListDlg::FindFailure(FindFailureRecord& record) const {
  record.Found = false;
  std::optional<MarkPosition> found;
  {
    const std::lock_guard reading(syllables_);
    std::vector<const FrqMap*> maps;
    for (int index = 0; index < syllables_.State().Entries; ++index) maps.push_back(syllables_.Maps(index).Map);
    found = FindMarkedRun(maps, {record.Index, record.Sample}, record.Forward != 0);
  }
  if (!found) return;
  record.Index = found->Index;
  record.Sample = found->Sample;
  record.Found = true;
  if (record.Show) LocateFailure(record.Index, record.Sample);
  if (record.Show == kShowWithBar) Windows.MoveModifyBar(record.Index, record.Sample);
}

// The syllable comes first, so that the run is selected in its own map.
void CFileListDlg::LocateFailure(int index, SampleCount sample) const {
  SampleCount first = 0, last = 0;
  {
    const std::lock_guard reading(syllables_);
    const FrqMap* const map = syllables_.Maps(index).Map;
    if (!map || map->GetMarkRange(sample, first, last) != 0) return;
  }
  if (!IsWindowEnabled(Hwnd)) return;
  SelectSyllable(index);
  ToEditor().ShowMarkedRun(first, last);
}

void CFileListDlg::ApplyFailure(int index, SampleCount sample, bool apply) {
  if (index < 0) {
    syllables_.ApplyAllMarks(apply);
  } else if (!syllables_.ApplyMarks(apply ? Gesture::Modify : Gesture::Ignore, index, sample, apply)) {
    return;
  }
  ToEditor().RefreshMap(true);
}

// The check: the run over the maps of all syllables.
#include <windows.h>

#include "app/filelistdlg.h"
#include "base/text.h"
#include "check/checkrun.h"
#include "resources/ids.h"
#include "window/messagebox.h"
#include "window/waitcursor.h"

// All on this thread: the editor waits in its send, and shows what becomes of its own map meanwhile.
void CFileListDlg::RunCheck(const CheckFrqSettings& settings) {
  int marks = 0;
  {
    const CheckLibrary library;
    if (!library.IsLoaded()) {
      ShowMessage(Hwnd, LoadResString(IDS_CHECKLIBRARYFAILED), MB_ICONERROR);
      return;
    }
    const WaitCursor waiting;
    if (library.HasEntry()) marks = CheckEntries(library, settings);
  }
  Windows.ToThumbnail().PostRefreshAll();
  if (marks > 0) Windows.ShowModifyBar(true, Hwnd);
}

// The number of marked frames. Maps that nobody has looked at yet are read; one that cannot be read is left out.
int CFileListDlg::CheckEntries(const CheckLibrary& library, const CheckFrqSettings& settings) {
  int marks = 0;
  for (int index = 0; index < static_cast<int>(Entries.size()); ++index) {
    SyllableEntry& entry = Entries[static_cast<std::size_t>(index)];
    if (!entry.HasMap) continue;
    const bool isNew = !entry.Map.Loaded;
    if (isNew && LoadEntry(entry) != 0) continue;
    const CheckOutcome outcome = library.Check(settings, entry.Map, MapPathFromWaveW(entry.Path, FrqType));
    if (outcome.What == CheckOutcome::Stopped) break;
    if (outcome.What == CheckOutcome::Skipped) continue;
    marks += outcome.Marks;
    SetMarkedCell(index, outcome.Marks != 0);
    // A map that could not be read when it was selected has no rows in the frame list yet.
    if (index == CurrentIndex) ToEditor().RefreshMap(isNew);
  }
  return marks;
}

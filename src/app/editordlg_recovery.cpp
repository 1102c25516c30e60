// Bringing back the edits of a run that did not end in order, and maps that were kept.
#include <windows.h>

#include <algorithm>
#include <utility>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "app/puttingback.h"
#include "base/text.h"
#include "document/journalreplay.h"
#include "resampler/resamplerkind.h"
#include "resources/ids.h"
#include "window/waitcursor.h"

// The question comes once, when both windows have come. A user who starts the program for a folder is asked about that
// one alone. A host's syllables are another work, so that left edits wait for a later start then.
void CEditorDlg::OnAskOfLeftEdits() {
  if (PluginMode || !IsWindowEnabled(Hwnd) || syllables_.State().Edited > 0) return;
  std::optional<LeftEdits> edits = FindLeftEdits(bank_, argument_.empty() ? std::wstring() : FileList->Folder);
  if (!edits) return;
  const std::wstring journal = edits->Journal;
  SetForegroundWindow(Hwnd);  // the list has come last
  if (edits->Waves.empty()) {
    RestoreReport report;
    for (const std::wstring& wave : edits->Content.Edited) {
      report.Others.push_back({wave, RestoreReport::Reason::Changed});
    }
    edits_.Tell(LoadResString(IDS_NAME), TextOf(report));
    bank_.Run.Safety.Drop(journal);
  } else if (!AskForLeftEdits(Hwnd, *edits) || BringBack(std::move(*edits))) {
    bank_.Run.Safety.Drop(journal);
  }
}

// False if not all edits that could be are on the disk again; the old journal stays then. It happens where memory gave
// out, and where a map that is as it was left cannot be read now or is listed by another name.
bool CEditorDlg::BringBack(LeftEdits edits) {
  const WaitCursor waiting;
  const FileListSender list = ToList();
  const JournalHead& head = edits.Content.Head;
  // The kind of the maps depends on the resampler.
  if (GetResamplerKind(head.Resampler) == head.Kind && settings_.FrqType != head.Kind) {
    settings_.ChooseResampler(head.Resampler);
    settings_.UpdateKind();
    ShareKind();
  }
  if (settings_.FrqType != head.Kind) return false;
  list.OpenFolder(head.Folder.c_str());
  const RestoreReport report = JournalReplay(syllables_).Run(std::move(edits.Content));
  for (int index = 0; index < syllables_.State().Entries; ++index) {
    if (!syllables_.Facts(index).Edited) continue;
    list.SelectSyllable(index);
    break;
  }
  UpdateState();
  edits_.Tell(LoadResString(IDS_RECOVER_TITLE), TextOf(report));
  const bool areAllSettled = std::ranges::none_of(report.Others, [&](const RestoreReport::Untouched& other) {
    const bool isAsItWasLeft = std::ranges::find(edits.Waves, other.Path) != edits.Waves.end();
    return isAsItWasLeft && other.Why != RestoreReport::Reason::Changed;
  });
  return areAllSettled && bank_.Run.IsJournalWritten();
}

void CEditorDlg::OnPutBack() {
  if (!IsWindow(FileList->Hwnd)) return;
  PutKeptMapsBack(Hwnd, ToList(), bank_, edits_);
  UpdateState();
}

// The editor's work after the commands that make maps or convert them: to read anew and show what has changed.
#include <windows.h>

#include <mutex>
#include <optional>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "app/mapjobs.h"
#include "app/words.h"
#include "base/text.h"
#include "resources/ids.h"

void CEditorDlg::OnMakeMaps(UINT id) {
  const std::optional<CreateFrqJob> job = MapJobs(Hwnd, FileList->Hwnd, Settings, Syllables).Ask(id);
  if (!job) return;
  RunMapJob(id, *job);
  if (id == ID_EDIT_INITIALIZE || id == ID_EDIT_INITIALIZEALL) {
    ToList().ShowModifyBar(false, job->mode == CreateMode::Current);
  }
}

// Nothing is done where no syllable is shown, and a word says so. A stroke that is still on ends, since its map may
// soon be another one. Edits stay except where the job has come. They go even where it failed: the map has gone there,
// as the user was ready to let it go.
void CEditorDlg::RunMapJob(UINT command, const CreateFrqJob& job) {
  if (!Map) return Edits.TellSum(command, LoadResString(IDS_NOWAVES), true);
  const KeptBecauseScope because(Bank.Run.Safety,
                                 IsConversion(job.mode) ? KeptBecause::Converted : KeptBecause::MadeAnew);
  const bool wasLoaded = Map.IsLoaded();
  const bool wasEdited = Syllables.Facts(Map.Index()).Edited;
  const FileListSender list = ToList();
  Syllables.EndStroke();
  InJob = true;
  const JobOutcome outcome = MapJobs(Hwnd, FileList->Hwnd, Settings, Syllables).Run(job, CurrentPath);
  for (const int begun : outcome.Begun) {
    const int index = begun < 0 ? Map.Index() : begun;
    if (Syllables.Facts(index).Edited) Syllables.ReadAfresh(index, Document::OnFailure::EmptySaved, true);
  }
  list.RefreshMaps();
  InJob = false;
  if (job.mode == CreateMode::All || job.mode == CreateMode::ConvertAll) ReloadEverything(false);
  // A map that was there was not missing, so the job has left it alone, unless its edits have outlived its file.
  const bool isLeftAlone = job.mode == CreateMode::Missing && wasLoaded && !wasEdited;
  if (!isLeftAlone && !Syllables.Facts(Map.Index()).Edited) {
    Syllables.ReadAfresh(Map.Index(), Document::OnFailure::EmptySaved, true);
  }
  list.PostRefreshThumbnail();
  UpdateState();
  const bool isCompact = Bank.Files.Store.CompactFiles() && outcome.IsCompact;
  // The curve of a single syllable tells by itself that all went well.
  if (IsForOne(job.mode) && outcome.Sum.Made == 1 && isCompact) return;
  Edits.TellSum(command, TextOf(outcome.Sum, Settings.ResamplerInUse()), isCompact);
}

// Reads all maps from their files again, and has the control forget what it made of the old ones.
void CEditorDlg::ReloadEverything(bool evenEdited) {
  {
    const std::lock_guard many(Syllables);
    for (int index = 0; index < Syllables.State().Entries; ++index) {
      const bool isKept = !evenEdited && Syllables.Facts(index).Edited;
      if (!isKept) Syllables.ReadAfresh(index, Document::OnFailure::KeepSaved, false);
    }
  }
  Frames.ShowAnew();
  UpdateState();
}

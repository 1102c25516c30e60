// What the editor does behind the commands that make maps or convert them: what has to be read anew, and shown.
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

// Where no syllable is shown nothing is done, which is said. A stroke that is still on ends: its map may be another one
// soon. Edits stay but where the job has come, and where it failed as well: there the map has gone, as the user was
// ready to let it go.
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
  // A map that was there is none of those that were missing, unless its edits have outlived its file.
  const bool isLeftAlone = job.mode == CreateMode::Missing && wasLoaded && !wasEdited;
  if (!isLeftAlone && !Syllables.Facts(Map.Index()).Edited) {
    Syllables.ReadAfresh(Map.Index(), Document::OnFailure::EmptySaved, true);
  }
  list.PostRefreshThumbnail();
  UpdateState();
  const bool isCompact = Bank.Files.Store.CompactFiles() && outcome.IsCompact;
  // Of one syllable the curve tells that all went well.
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

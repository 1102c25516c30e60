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
  const std::optional<CreateFrqJob> job = MapJobs(Hwnd, FileList->Hwnd, settings_, syllables_).Ask(id);
  if (!job) return;
  RunMapJob(id, *job);
  if (id == ID_EDIT_INITIALIZE || id == ID_EDIT_INITIALIZEALL) {
    ToList().ShowModifyBar(false, job->Mode == CreateMode::Current);
  }
}

// Nothing is done where no syllable is shown, and a word says so. A stroke that is still on ends, since its map may
// soon be another one. Edits stay except where the job has come. They go even where it failed: the map has gone there,
// as the user was ready to let it go.
void CEditorDlg::RunMapJob(UINT command, const CreateFrqJob& job) {
  if (!map_) return edits_.TellSum(command, LoadResString(IDS_NOWAVES), true);
  const KeptBecauseScope because(bank_.Run.Safety,
                                 IsConversion(job.Mode) ? KeptBecause::Converted : KeptBecause::MadeAnew);
  const bool wasLoaded = map_.IsLoaded();
  const bool wasEdited = syllables_.Facts(map_.Index()).Edited;
  const FileListSender list = ToList();
  syllables_.EndStroke();
  inJob_ = true;
  const JobOutcome outcome = MapJobs(Hwnd, FileList->Hwnd, settings_, syllables_).Run(job, CurrentPath);
  for (const int begun : outcome.Begun) {
    const int index = begun < 0 ? map_.Index() : begun;
    if (syllables_.Facts(index).Edited) syllables_.ReadAfresh(index, Document::OnFailure::EmptySaved, true);
  }
  list.RefreshMaps();
  inJob_ = false;
  if (job.Mode == CreateMode::All || job.Mode == CreateMode::ConvertAll) ReloadEverything(false);
  // A map that was there was not missing, so the job has left it alone, unless its edits have outlived its file.
  const bool isLeftAlone = job.Mode == CreateMode::Missing && wasLoaded && !wasEdited;
  if (!isLeftAlone && !syllables_.Facts(map_.Index()).Edited) {
    syllables_.ReadAfresh(map_.Index(), Document::OnFailure::EmptySaved, true);
  }
  list.PostRefreshThumbnail();
  UpdateState();
  const bool isCompact = bank_.Files.Store.CompactFiles() && outcome.IsCompact;
  // The curve of a single syllable tells by itself that all went well.
  if (IsForOne(job.Mode) && outcome.Sum.Made == 1 && isCompact) return;
  edits_.TellSum(command, TextOf(outcome.Sum, settings_.ResamplerInUse()), isCompact);
}

// Reads all maps from their files again, and has the control forget what it made of the old ones.
void CEditorDlg::ReloadEverything(bool evenEdited) {
  {
    const std::lock_guard many(syllables_);
    for (int index = 0; index < syllables_.State().Entries; ++index) {
      const bool isKept = !evenEdited && syllables_.Facts(index).Edited;
      if (!isKept) syllables_.ReadAfresh(index, Document::OnFailure::KeepSaved, false);
    }
  }
  frames_.ShowAnew();
  UpdateState();
}

// What the editor does behind the commands that make maps or convert them: what has to be read anew, and shown.
#include <windows.h>

#include <optional>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "app/mapjobs.h"
#include "resources/ids.h"

void CEditorDlg::OnMakeMaps(UINT id) {
  const std::optional<CreateFrqJob> job = MapJobs(Hwnd, FileList->Hwnd, Settings).Ask(id);
  if (!job) return;
  RunMapJob(*job);
  if (id == ID_EDIT_INITIALIZE || id == ID_EDIT_INITIALIZEALL) {
    ToList().ShowModifyBar(false, job->mode == CreateMode::Current);
  }
}

// Nothing is done where no syllable is shown. A stroke that is still on ends: its map may be another one soon.
void CEditorDlg::RunMapJob(const CreateFrqJob& job) {
  if (!Map) return;
  const bool wasLoaded = Map.IsLoaded();
  const FileListSender list = ToList();
  Syllables.EndStroke();
  InJob = true;
  MapJobs(Hwnd, FileList->Hwnd, Settings).Run(job, CurrentPath);
  list.RefreshMaps();
  InJob = false;
  if (job.mode == CreateMode::All || job.mode == CreateMode::ConvertAll) ReloadEverything();
  // A map that was there is none of those that were missing, and may have edits.
  if (job.mode != CreateMode::Missing || !wasLoaded) {
    Syllables.ReadAfresh(Map.Index(), Document::OnFailure::EmptySaved, true);
  }
  list.PostRefreshThumbnail();
  UpdateState();
  Bank.Files.Store.CompactFiles();
}

// Reads all maps from their files again, and has the control forget what it made of the old ones.
void CEditorDlg::ReloadEverything() {
  ToList().ReloadMaps(true);
  Frames.ShowAnew();
  UpdateState();
}

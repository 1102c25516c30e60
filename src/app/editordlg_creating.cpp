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

// Nothing is done where no syllable is shown.
void CEditorDlg::RunMapJob(const CreateFrqJob& job) {
  if (!CurrentMap) return;
  const bool wasLoaded = CurrentMap->Loaded;
  const FileListSender list = ToList();
  MapJobs(Hwnd, FileList->Hwnd, Settings).Run(job, {Table(), SavedMap, CurrentMap, CurrentPath});
  list.RefreshMaps();
  if (job.mode == CreateMode::All || job.mode == CreateMode::ConvertAll) ReloadEverything();
  // A map that was there is none of those that were missing, and may have edits.
  if (job.mode != CreateMode::Missing || !wasLoaded) {
    ReloadCurrentMap();
    ShowReloaded();
  }
  list.PostRefreshThumbnail();
  UpdateState();
  FileList->Store.CompactFiles();
}

// Reads all maps from their files again, and has the control forget what it made of the old ones.
void CEditorDlg::ReloadEverything() {
  ToList().ReloadMaps(true);
  Table().SetMaps(nullptr, nullptr);
  Table().SetMaps(SavedMap, CurrentMap);
  ShowReloaded();
  UpdateState();
}

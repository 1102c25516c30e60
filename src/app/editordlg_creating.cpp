// The commands that make maps or convert them: what they ask first, the job, and what has to be read anew behind it.
#include <windows.h>

#include <algorithm>
#include <exception>
#include <limits>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "base/text.h"
#include "dialogs/converfrqdlg.h"
#include "dialogs/initmrqdlg.h"
#include "dialogs/optionvs4ufrqdlg.h"
#include "resampler/createfrqdlg.h"
#include "resources/ids.h"
#include "window/messagebox.h"

namespace {

// Shows copies of the maps in the table for as long as it lives: the list reads the shown map anew in the middle of a
// job, on its own thread, while this one may have to paint. The focus goes too, as the key box puts its number into the
// map when it is left, and the table would have the maps themselves again.
class ShownCopies {
 public:
  ShownCopies(const FrqCtrlSender& table, FrqMap* saved, FrqMap* map)
      : table_(table), saved_(saved), map_(map), focus_(SetFocus(nullptr)) {
    try {
      saved->CopyTo(savedCopy_);
      map->CopyTo(mapCopy_);
      table_.SetMaps(&savedCopy_, &mapCopy_);
    } catch (const std::exception&) {
      table_.SetMaps(nullptr, nullptr);  // what memory does not hold twice is not shown meanwhile
    }
  }
  ~ShownCopies() {
    table_.SetMaps(saved_, map_);
    if (focus_) SetFocus(focus_);
  }
  ShownCopies(const ShownCopies&) = delete;
  ShownCopies& operator=(const ShownCopies&) = delete;

 private:
  const FrqCtrlSender table_;
  FrqMap* const saved_;
  FrqMap* const map_;
  const HWND focus_;
  FrqMap savedCopy_;
  FrqMap mapCopy_;
};

}  // namespace

// A syllable without a map has nothing to lose, and nothing is asked.
void CEditorDlg::OnInitialize(UINT) {
  const FileListSender list = ToList();
  if (list.HasMap(list.Selection()) && ShowMessage(Hwnd, LoadResString(IDS_ASKINITIALIZE), MB_YESNO) != IDYES) {
    return;
  }
  CreateFrqJob job{.mode = CreateMode::Current};
  if (!PrepareCreateFrqJob(job)) return;
  StartCreateFrqJob(job);
  ToList().ShowModifyBar(false, true);
}

void CEditorDlg::OnInitializeAll(UINT) {
  if (ShowMessage(Hwnd, LoadResString(IDS_ASKCREATEALL), MB_YESNO) != IDYES) return;
  CreateFrqJob job{.mode = CreateMode::All};
  if (!PrepareCreateFrqJob(job)) return;
  StartCreateFrqJob(job);
  ToList().ShowModifyBar(false, false);
}

void CEditorDlg::OnCreateMissing(UINT) {
  CreateFrqJob job{.mode = CreateMode::Missing};
  if (PrepareCreateFrqJob(job)) StartCreateFrqJob(job);
}

void CEditorDlg::OnConvert(UINT) {
  CConverFrqDlg dialog;
  dialog.ParentWindow = Hwnd;
  if (dialog.Run(false) != IDOK) return;
  const CreateMode mode = dialog.ConvertAll ? CreateMode::ConvertAll : CreateMode::ConvertOne;
  StartCreateFrqJob({.mode = mode, .first = dialog.SourceType, .second = dialog.TargetType});
}

// What the kind has to ask before its maps are made. False if the user goes back.
bool CEditorDlg::PrepareCreateFrqJob(CreateFrqJob& job) {
  if (FrqType == FrqTypeVs4ufrq) {
    COptionVs4ufrqDlg dialog;
    dialog.ParentWindow = Hwnd;
    if (dialog.Run(false) != IDOK) return false;
    job.useFrq = dialog.UseFrq;
    job.first = dialog.Offset;
    job.second = dialog.Range;
  }
  if (FrqType == FrqTypeMrq) {
    job.initBoth = true;
    // Where there is no entry yet there is none to keep.
    if (job.mode == CreateMode::Missing) return true;
    if (job.mode == CreateMode::Current && !ToList().HasMap(ToList().Selection())) return true;
    CInitMrqDlg dialog;
    dialog.ParentWindow = Hwnd;
    if (dialog.Run(false) != IDOK) return false;
    job.initBoth = dialog.InitializeBoth;
  }
  return true;
}

// Nothing is done where no syllable is shown.
void CEditorDlg::StartCreateFrqJob(const CreateFrqJob& job) {
  if (!CurrentMap) return;
  const bool wasLoaded = CurrentMap->Loaded;
  const FileListSender list = ToList();
  EnableWindow(FileList->Hwnd, FALSE);
  RunCreateFrqDlg(job);
  EnableWindow(FileList->Hwnd, TRUE);
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

void CEditorDlg::RunCreateFrqDlg(const CreateFrqJob& job) {
  const auto workers = static_cast<int>(std::min<DWORD>(MaxParallelCount, std::numeric_limits<int>::max()));
  CCreateFrqDlg dialog(job.mode, Hwnd, FileList->Hwnd, ResamplerPath, workers);
  dialog.ParentWindow = Hwnd;
  dialog.CurrentIndex = ToList().Selection();
  dialog.CurrentWave = CurrentPath;
  if (IsConversion(job.mode)) {
    dialog.FrqType = static_cast<::FrqType>(job.first);
    dialog.TargetType = static_cast<::FrqType>(job.second);
  } else {
    dialog.FrqType = FrqType;
    dialog.Vs4uOffset = job.first;
    dialog.Vs4uRange = job.second;
    dialog.Vs4uUseFrq = job.useFrq;
    dialog.InitBoth = job.initBoth;
  }
  const ShownCopies copies(Table(), SavedMap, CurrentMap);
  dialog.Run(false);
}

// Reads all maps from their files again, and has the control forget what it made of the old ones.
void CEditorDlg::ReloadEverything() {
  ToList().ReloadMaps(true);
  Table().SetMaps(nullptr, nullptr);
  Table().SetMaps(SavedMap, CurrentMap);
  ShowReloaded();
  UpdateState();
}

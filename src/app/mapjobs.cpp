#include "app/mapjobs.h"

#include <algorithm>
#include <exception>
#include <limits>

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

std::optional<CreateFrqJob> MapJobs::Ask(UINT command) const {
  switch (command) {
    case ID_EDIT_INITIALIZE: return AskInitialize();
    case ID_EDIT_INITIALIZEALL: return AskInitializeAll();
    case ID_EDIT_CREATEMISSING: return AskOfKind(CreateMode::Missing);
    case ID_EDIT_CONVERT: return AskConvert();
    default: return std::nullopt;
  }
}

bool MapJobs::HasMap() const {
  const FileListSender list(list_);
  return list.HasMap(list.Selection());
}

// A syllable without a map has nothing to lose, and nothing is asked.
std::optional<CreateFrqJob> MapJobs::AskInitialize() const {
  if (HasMap() && ShowMessage(editor_, LoadResString(IDS_ASKINITIALIZE), MB_YESNO) != IDYES) return std::nullopt;
  return AskOfKind(CreateMode::Current);
}

std::optional<CreateFrqJob> MapJobs::AskInitializeAll() const {
  if (ShowMessage(editor_, LoadResString(IDS_ASKCREATEALL), MB_YESNO) != IDYES) return std::nullopt;
  return AskOfKind(CreateMode::All);
}

std::optional<CreateFrqJob> MapJobs::AskConvert() const {
  CConverFrqDlg dialog;
  dialog.ParentWindow = editor_;
  if (dialog.Run(false) != IDOK) return std::nullopt;
  const CreateMode mode = dialog.ConvertAll ? CreateMode::ConvertAll : CreateMode::ConvertOne;
  return CreateFrqJob{.mode = mode, .first = dialog.SourceType, .second = dialog.TargetType};
}

// What the kind at work has to ask before its maps are made.
std::optional<CreateFrqJob> MapJobs::AskOfKind(CreateMode mode) const {
  CreateFrqJob job{.mode = mode};
  if (settings_.FrqType == FrqTypeVs4ufrq && !AskOfVs4ufrq(job)) return std::nullopt;
  if (settings_.FrqType == FrqTypeMrq && !AskOfMrq(job)) return std::nullopt;
  return job;
}

bool MapJobs::AskOfVs4ufrq(CreateFrqJob& job) const {
  COptionVs4ufrqDlg dialog;
  dialog.ParentWindow = editor_;
  if (dialog.Run(false) != IDOK) return false;
  job.useFrq = dialog.UseFrq;
  job.first = dialog.Offset;
  job.second = dialog.Range;
  return true;
}

// Where there is no entry yet there is none to keep.
bool MapJobs::AskOfMrq(CreateFrqJob& job) const {
  job.initBoth = true;
  if (job.mode == CreateMode::Missing || (job.mode == CreateMode::Current && !HasMap())) return true;
  CInitMrqDlg dialog;
  dialog.ParentWindow = editor_;
  if (dialog.Run(false) != IDOK) return false;
  job.initBoth = dialog.InitializeBoth;
  return true;
}

void MapJobs::Run(const CreateFrqJob& job, const ShownSyllable& shown) const {
  EnableWindow(list_, FALSE);
  RunDialog(job, shown);
  EnableWindow(list_, TRUE);
}

void MapJobs::RunDialog(const CreateFrqJob& job, const ShownSyllable& shown) const {
  const auto workers = static_cast<int>(std::min<DWORD>(settings_.MaxParallelCount, std::numeric_limits<int>::max()));
  CCreateFrqDlg dialog(job.mode, editor_, list_, settings_.ResamplerPath, workers);
  dialog.ParentWindow = editor_;
  dialog.CurrentIndex = FileListSender(list_).Selection();
  dialog.CurrentWave = shown.wavePath;
  if (IsConversion(job.mode)) {
    dialog.FrqType = static_cast<FrqType>(job.first);
    dialog.TargetType = static_cast<FrqType>(job.second);
  } else {
    dialog.FrqType = settings_.FrqType;
    dialog.Vs4uOffset = job.first;
    dialog.Vs4uRange = job.second;
    dialog.Vs4uUseFrq = job.useFrq;
    dialog.InitBoth = job.initBoth;
  }
  const ShownCopies copies(shown.table, shown.saved, shown.map);
  dialog.Run(false);
}

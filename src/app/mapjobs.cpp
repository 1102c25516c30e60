#include "app/mapjobs.h"

#include <algorithm>
#include <limits>

#include "app/discardquestion.h"
#include "base/path.h"
#include "base/text.h"
#include "dialogs/converfrqdlg.h"
#include "dialogs/initmrqdlg.h"
#include "dialogs/optionvs4ufrqdlg.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqstore.h"
#include "resampler/createfrqdlg.h"
#include "resources/ids.h"
#include "window/disabledwindow.h"
#include "window/messagebox.h"

// The question about edits comes first, but of a conversion only its dialog tells whether it costs any.
std::optional<CreateFrqJob> MapJobs::Ask(UINT command) const {
  switch (command) {
    case ID_EDIT_INITIALIZE: return MayCost({.Mode = CreateMode::Current}) ? AskInitialize() : std::nullopt;
    case ID_EDIT_INITIALIZEALL: return MayCost({.Mode = CreateMode::All}) ? AskInitializeAll() : std::nullopt;
    case ID_EDIT_CREATEMISSING:
      return MayCost({.Mode = CreateMode::Missing}) ? AskOfKind(CreateMode::Missing) : std::nullopt;
    case ID_EDIT_CONVERT: {
      const std::optional<CreateFrqJob> job = AskConvert();
      return job && MayCost(*job) ? job : std::nullopt;
    }
    default: return std::nullopt;
  }
}

bool MapJobs::MayCost(const CreateFrqJob& job) const {
  return !CostsEdits(job) || ConfirmDiscard(editor_, syllables_);
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
  return CreateFrqJob{.Mode = dialog.ConvertAll ? CreateMode::ConvertAll : CreateMode::ConvertOne,
                      .Source = static_cast<FrqType>(dialog.SourceType),
                      .Target = static_cast<FrqType>(dialog.TargetType)};
}

// Asks what has to be known before maps of the kind at work are made.
std::optional<CreateFrqJob> MapJobs::AskOfKind(CreateMode mode) const {
  CreateFrqJob job{.Mode = mode};
  if (settings_.FrqType == FrqTypeVs4ufrq && !AskOfVs4ufrq(job)) return std::nullopt;
  if (settings_.FrqType == FrqTypeMrq && !AskOfMrq(job)) return std::nullopt;
  return job;
}

bool MapJobs::AskOfVs4ufrq(CreateFrqJob& job) const {
  COptionVs4ufrqDlg dialog;
  dialog.ParentWindow = editor_;
  if (dialog.Run(false) != IDOK) return false;
  job.UseFrq = dialog.UseFrq;
  job.Vs4uRange = {dialog.Offset, dialog.Range};
  return true;
}

// Nothing is asked where there is no entry yet that could be kept.
bool MapJobs::AskOfMrq(CreateFrqJob& job) const {
  job.InitBoth = true;
  if (job.Mode == CreateMode::Missing || (job.Mode == CreateMode::Current && !HasMap())) return true;
  CInitMrqDlg dialog;
  dialog.ParentWindow = editor_;
  if (dialog.Run(false) != IDOK) return false;
  job.InitBoth = dialog.InitializeBoth;
  return true;
}

bool MapJobs::MakesListedKind(const CreateFrqJob& job) const {
  return !IsConversion(job.Mode) || job.Target == settings_.FrqType;
}

// Whether the job is for a syllable that is edited. Edits of the kind that a conversion reads are not in its files, and
// stay.
bool MapJobs::CostsEdits(const CreateFrqJob& job) const {
  const DocumentState state = syllables_.State();
  if (!MakesListedKind(job)) return false;
  if (IsForOne(job.Mode)) return state.CurrentEdited;
  const FrqType kind = IsConversion(job.Mode) ? job.Source : settings_.FrqType;
  MrqStore store;
  for (int index = 0; state.Edited > 0 && index < state.Entries; ++index) {
    const EntryFacts facts = syllables_.Facts(index);
    if (!facts.Edited) continue;
    if (job.Mode == CreateMode::All) return true;
    const std::wstring folder = FolderOf(facts.Path);
    if (kind == FrqTypeMrq && !store.HasFolder(folder)) store.LoadFolder(folder);
    if (IsWanted(job.Mode, MapFileExists(MapPathFromWaveW(facts.Path, kind), &store))) return true;
  }
  return false;
}

JobOutcome MapJobs::Run(const CreateFrqJob& job, const std::wstring& currentWave) const {
  const DisabledWindow disabled(list_);
  return RunDialog(job, currentWave);
}

JobOutcome MapJobs::RunDialog(const CreateFrqJob& job, const std::wstring& currentWave) const {
  const auto workers = static_cast<int>(std::min<DWORD>(settings_.MaxParallelCount, std::numeric_limits<int>::max()));
  CCreateFrqDlg dialog(job.Mode, editor_, list_, settings_.ResamplerInUse(), workers);
  dialog.ParentWindow = editor_;
  dialog.CurrentIndex = FileListSender(list_).Selection();
  dialog.CurrentWave = currentWave;
  if (IsConversion(job.Mode)) {
    dialog.FrqType = job.Source;
    dialog.TargetType = job.Target;
    dialog.MakesListedKind = MakesListedKind(job);
  } else {
    dialog.FrqType = settings_.FrqType;
    dialog.Vs4uOffset = job.Vs4uRange.Lowest;
    dialog.Vs4uRange = job.Vs4uRange.Semitones;
    dialog.Vs4uUseFrq = job.UseFrq;
    dialog.InitBoth = job.InitBoth;
  }
  dialog.Run(false);
  return {dialog.MakesListedKind ? dialog.BegunSyllables() : std::vector<int>(), dialog.Sum(), dialog.IsCompact()};
}

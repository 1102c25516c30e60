#include "resampler/createfrqdlg.h"

#include <commctrl.h>
#include <process.h>
#include <shlwapi.h>

#include <algorithm>
#include <exception>
#include <optional>

#include "app/messages.h"
#include "base/path.h"
#include "base/text.h"
#include "frqmap/convert.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqmap.h"
#include "resources/ids.h"
#include "voicebank/folderlisting.h"

namespace {

constexpr DWORD kFullBarMs = 500;  // how long the full bar can be seen

// A worker ends with a failure that its next item would meet as well. After a resampler's own failure it may do better.
bool EndsWorker(ItemEnd end) {
  return end != ItemEnd::Made && end != ItemEnd::EndedBadly;
}

int ProcessorCount() {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  return static_cast<int>(info.dwNumberOfProcessors);
}

}  // namespace

CCreateFrqDlg::CCreateFrqDlg() : WorkerCount(ProcessorCount()) {}

CCreateFrqDlg::CCreateFrqDlg(CreateMode mode, HWND editorWindow, HWND listWindow, const std::wstring& resamplerPath,
                             int workerCount)
    : Mode(mode),
      EditorWindow(editorWindow),
      ListWindow(listWindow),
      ResamplerPath(resamplerPath),
      WorkerCount(workerCount) {}

INT_PTR CCreateFrqDlg::OnInitDialog(LPARAM) {
  const int count = BuildWorkList();
  SendDlgItemMessageW(Hwnd, IDC_CREATEFRQ_PROGRESS, PBM_SETRANGE32, 0, count);
  SendDlgItemMessageW(Hwnd, IDC_CREATEFRQ_PROGRESS, PBM_SETPOS, 0, 0);
  SetDlgItemTextW(Hwnd, IDC_CREATEFRQ_FILE, L"");
  StartWorkers();
  return 1;
}

int CCreateFrqDlg::BuildWorkList() {
  workList_.clear();
  Store.Clear();
  if (IsForOne(Mode)) {
    workList_.push_back({CurrentWave, CurrentIndex});
    if (FrqType == FrqTypeMrq) Store.LoadFolder(FolderOf(CurrentWave));
  } else {
    AddFromList();
  }
  results_.assign(workList_.size(), {});
  return static_cast<int>(workList_.size());
}

void CCreateFrqDlg::AddFromList() {
  const FileListSender list(ListWindow);
  const int count = list.Count();
  ListedFolders listed;
  for (int index = 0; index < count; ++index) {
    const std::wstring wave = list.Path(index);
    // Each folder is read once, when its first syllable comes by.
    const std::wstring folder = FolderOf(wave);
    if (FrqType == FrqTypeMrq && !Store.HasFolder(folder)) Store.LoadFolder(folder);
    if (IsWanted(Mode, Mode != CreateMode::All && HasMap(wave, FrqType, listed))) workList_.push_back({wave, index});
  }
}

// Answers as MapFileExists does, without a call of the file system for each wave.
bool CCreateFrqDlg::HasMap(const std::wstring& wave, ::FrqType kind, ListedFolders& listed) const {
  const std::wstring map = MapPathFromWaveW(wave, kind);
  return kind == FrqTypeMrq ? MrqExists(map, Store) : listed.SizeOf(map).has_value();
}

// With a count of 0 no worker starts, and so none ever reports: the dialog stays, and even Abort cannot end it. Users
// who set that count get what they asked for. The registry may hold any count: workers beyond the items would find
// nothing to do, and where the system refuses one it would refuse the next.
void CCreateFrqDlg::StartWorkers() {
  const int wanted = std::min(WorkerCount, std::max(1, static_cast<int>(workList_.size())));
  workers_ = std::make_unique<ThreadHandle[]>(static_cast<std::size_t>(wanted));
  aborting_ = false;
  nextIndex_ = -1;
  leavingCount_ = 0;
  startedCount_ = 0;
  for (WorkerCount = 0; WorkerCount < wanted; ++WorkerCount) {
    ThreadHandle& worker = workers_[static_cast<std::size_t>(WorkerCount)];
    worker.reset(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, WorkerProc, this, 0, nullptr)));
    if (!worker) break;
  }
  // Without a single worker nobody else would end the dialog.
  if (wanted > 0 && WorkerCount == 0) PostMessageW(Hwnd, WM_CREATEFRQ_WORKER_DONE, 0, 0);
}

INT_PTR CCreateFrqDlg::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATEFRQ_STARTED: OnStarted(wParam); return Answered();
    case WM_CREATEFRQ_WORKER_DONE: OnWorkerDone(); return Answered();
    default: return CDlgBase::OnDialogMessage(message, wParam, lParam);
  }
}

// The count follows the order in which the news come in and not the numbers of the items: it always counts up.
void CCreateFrqDlg::OnStarted(std::size_t index) {
  if (index >= workList_.size()) return;
  ++startedCount_;
  const wchar_t* const name = PathFindFileNameW(workList_[index].WavePath.c_str());
  const std::wstring text = FormatText(L"(%d/%d) %s", startedCount_, static_cast<int>(workList_.size()), name);
  SetDlgItemTextW(Hwnd, IDC_CREATEFRQ_FILE, text.c_str());
  SendDlgItemMessageW(Hwnd, IDC_CREATEFRQ_PROGRESS, PBM_SETPOS, static_cast<WPARAM>(startedCount_ - 1), 0);
}

// The count of workers decides, and not the message, which any program may send.
void CCreateFrqDlg::OnWorkerDone() {
  if (!workers_ || leavingCount_ < WorkerCount) return;
  compact_ = Store.CompactFiles();
  LookForMaps();
  if (!aborting_) SendDlgItemMessageW(Hwnd, IDC_CREATEFRQ_PROGRESS, PBM_SETPOS, workList_.size(), 0);
  RedrawWindow(Hwnd, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  Sleep(kFullBarMs);
  workers_.reset();
  WorkerCount = 0;
  PostMessageW(Hwnd, WM_COMMAND, IDCANCEL, 0);
}

// A run that went well says nothing about the map.
void CCreateFrqDlg::LookForMaps() {
  const ::FrqType made = IsConversion(Mode) ? TargetType : FrqType;
  if (made == FrqTypeMrq && !IsConversion(Mode)) Store.Reload();
  ListedFolders listed;
  for (std::size_t i = 0; i < workList_.size(); ++i) {
    if (results_[i].End != ItemEnd::Made || HasMap(workList_[i].WavePath, made, listed)) continue;
    results_[i].End = IsConversion(Mode) ? ItemEnd::NotConverted : ItemEnd::NothingMade;
  }
}

void CCreateFrqDlg::OnCancel() {
  if (!workers_) {
    End(IDCANCEL);
    return;
  }
  aborting_ = true;
  EnableWindow(Item(IDCANCEL), FALSE);
}

unsigned WINAPI CCreateFrqDlg::WorkerProc(void* self) {
  auto* const dialog = static_cast<CCreateFrqDlg*>(self);
  const HWND window = dialog->Hwnd;
  try {
    dialog->WorkThrough();
  } catch (const std::exception&) {
    // A map that memory does not hold ends its worker as any other failure does.
  }
  ++dialog->leavingCount_;
  // From here on the dialog may be gone at any moment.
  PostMessageW(window, WM_CREATEFRQ_WORKER_DONE, 0, static_cast<LPARAM>(GetCurrentThreadId()));
  return 0;
}

std::vector<int> CCreateFrqDlg::BegunSyllables() const {
  const auto begun = std::min(workList_.size(), static_cast<std::size_t>(nextIndex_ + 1));
  std::vector<int> syllables(begun);
  std::transform(workList_.begin(), workList_.begin() + static_cast<std::ptrdiff_t>(begun), syllables.begin(),
                 [](const WorkItem& item) { return item.ListIndex; });
  return syllables;
}

// A worker goes on until the list is through, the user aborts, or an item fails: then it ends, the others go on, and
// the list hears nothing of the item. Nor does it hear of one that was refused, whose map and edits stay.
void CCreateFrqDlg::WorkThrough() {
  const FileListSender list(ListWindow);
  while (!aborting_) {
    const int index = ++nextIndex_;
    if (index >= static_cast<int>(workList_.size())) return;
    const WorkItem& item = workList_[static_cast<std::size_t>(index)];
    PostMessageW(Hwnd, WM_CREATEFRQ_STARTED, static_cast<WPARAM>(index), 0);
    ItemResult& result = results_[static_cast<std::size_t>(index)];
    result.End = ItemEnd::NothingMade;  // if memory gives out
    result = Work(item);
    if (result.End == ItemEnd::Refused) continue;
    if (EndsWorker(result.End)) return;
    if (MakesListedKind) list.SetEdited(item.ListIndex, false);
    list.ForgetMarks(item.ListIndex);
  }
}

ItemResult CCreateFrqDlg::Work(const WorkItem& item) {
  return IsConversion(Mode) ? Convert(item.WavePath) : Create(item.WavePath);
}

// The target goes first: a conversion that fails leaves the wave without one, and without what a full disk took of it.
// A target that could not be kept is all that there is of that map; it is written over, which puts it back on failure.
ItemResult CCreateFrqDlg::Convert(const std::wstring& wave) {
  if (!CanConvertMap(wave, FrqType, TargetType)) return {ItemEnd::Refused};
  const std::wstring target = MapPathFromWaveW(wave, TargetType);
  const bool goesFirst = KeepMapFile(target, &Store);
  if (goesFirst) DeleteMapFile(target, &Store, false);
  if (ConvertMap(wave, FrqType, TargetType, &Store) == 0) return {ItemEnd::Made};
  if (goesFirst) DeleteMapFile(target, &Store, false);
  return {ItemEnd::NotConverted};
}

ItemResult CCreateFrqDlg::Create(const std::wstring& wave) {
  const MapOrder order = {Hwnd, ResamplerPath, FrqType, {Vs4uOffset, Vs4uRange}, Vs4uUseFrq, !InitBoth};
  return MakeMap(order, wave, Store);
}

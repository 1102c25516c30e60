#include "recovery/recovery.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <optional>
#include <utility>

#include "base/path.h"

namespace {

constexpr wchar_t kMark[] = L"alive";
constexpr wchar_t kJournal[] = L"journal";
constexpr std::int64_t kDay = 24 * 60 * 60;  // [s]

// "<process>-<start>", both decimal; none for another name.
std::optional<std::int64_t> StartOf(const std::wstring& name) {
  const std::size_t dash = name.find(L'-');
  if (dash == 0 || dash == name.npos || dash + 1 == name.size() || name.size() > 31) return std::nullopt;
  std::int64_t start = 0;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (i == dash) continue;
    if (name[i] < L'0' || name[i] > L'9') return std::nullopt;
    if (i > dash) start = start * 10 + (name[i] - L'0');
  }
  return start;
}

std::wstring RunName(std::uint32_t process, std::int64_t start) {
  return std::to_wstring(process) + L'-' + std::to_wstring(start);
}

}  // namespace

std::int64_t Recovery::PresentTime() {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::floor<std::chrono::seconds>(sinceEpoch).count();
}

Recovery::Recovery(FileSystem& files, const std::wstring& root, std::uint32_t process, Clock clock)
    : Recovery(files, root, process, Limits(), clock) {}

Recovery::Recovery(FileSystem& files, const std::wstring& root, std::uint32_t process, const Limits& limits,
                   Clock clock)
    : files_(files),
      root_(root),
      clock_(clock),
      limits_(limits),
      own_{PathIn(root, RunName(process, clock())), clock()},
      kept_(files, root, own_.Folder, limits.Kept),
      writes_(files, own_.Folder) {}

void Recovery::Start() {
  if (root_.empty() || !MakeOwn()) return;
  std::vector<Run> ended;
  for (Run& run : OtherRuns()) {
    if (!Settle(run)) continue;
    if (run.Mark) {
      dead_.push_back(std::move(run));
    } else {
      ended.push_back(std::move(run));
    }
  }
  std::ranges::sort(dead_, std::ranges::greater(), &Run::Start);
  std::ranges::sort(ended, std::ranges::greater(), &Run::Start);
  int kept = 1;  // this run
  for (const Run& run : ended) {
    const bool isOld = run.Start < clock_() - limits_.MostDays * kDay;
    if (isOld || !HoldsKept(run) || kept++ >= limits_.MostRuns) RemoveFiles(run.Folder);
  }
}

bool Recovery::MakeOwn() {
  if (files_.MakeFolder(own_.Folder)) mark_ = files_.Open(PathIn(own_.Folder, kMark), FileMode::Own);
  return mark_ != nullptr;
}

std::vector<Recovery::Run> Recovery::OtherRuns() const {
  std::vector<Run> runs;
  for (const std::wstring& name : files_.List(root_)) {
    const std::optional<std::int64_t> start = StartOf(name);
    const std::wstring folder = PathIn(root_, name);
    if (start && folder != own_.Folder) runs.push_back({folder, *start});
  }
  return runs;
}

// A run that has ended in order has no mark any more, and the mark of one that lives cannot be opened by others. A run
// that is just being begun has no mark yet either, and nothing that could be missed.
bool Recovery::Settle(Run& run) {
  const std::wstring mark = PathIn(run.Folder, kMark);
  if (!files_.FactsOf(mark)) return run.Start < clock_() - kDay || HoldsKept(run);
  run.Mark = files_.Open(mark, FileMode::Own);
  if (!run.Mark) return false;
  const bool isMended = WriteLog::Mend(files_, run.Folder);
  const bool isOld = run.Start < clock_() - limits_.MostDays * kDay;
  const std::optional<FileFacts> journal = files_.FactsOf(PathIn(run.Folder, kJournal));
  if (journal && journal->Size > 0 && !isOld) return true;
  run.Mark.reset();
  // A write that cannot be settled now, since its disk is not there, is tried again.
  if (!isMended && !isOld) return false;
  files_.Delete(PathIn(run.Folder, kJournal));
  files_.Delete(mark);
  return true;
}

bool Recovery::HoldsKept(const Run& run) const {
  return std::ranges::any_of(files_.List(run.Folder), KeptFiles::IsKeptFile);
}

// A folder that somebody has put something else into stays.
void Recovery::RemoveFiles(const std::wstring& folder) const {
  for (const std::wstring& name : files_.List(folder)) {
    if (KeptFiles::IsKeptFile(name) || WriteLog::IsSlot(name) || name == kMark || name == kJournal) {
      files_.Delete(PathIn(folder, name));
    }
  }
  files_.RemoveFolder(folder);
}

void Recovery::Close() {
  dead_.clear();  // a later start asks again
  if (!mark_) return;
  const bool isSettled = writes_.Close();
  mark_.reset();
  files_.Delete(PathIn(own_.Folder, kJournal));
  // The mark stays if a write was not settled: without it the next start would not look for writes.
  if (isSettled) files_.Delete(PathIn(own_.Folder, kMark));
  kept_.Close();
  files_.RemoveFolder(own_.Folder);
}

std::vector<std::wstring> Recovery::Journals() const {
  std::vector<std::wstring> journals;
  for (const Run& run : dead_) journals.push_back(PathIn(run.Folder, kJournal));
  return journals;
}

void Recovery::Drop(const std::wstring& journal) {
  const auto run = std::ranges::find(dead_, FolderOf(journal), &Run::Folder);
  if (run == dead_.end()) return;
  files_.Delete(journal);
  run->Mark.reset();
  files_.Delete(PathIn(run->Folder, kMark));
  files_.RemoveFolder(run->Folder);
  dead_.erase(run);
}

std::wstring Recovery::JournalPath() const {
  return mark_ ? PathIn(own_.Folder, kJournal) : std::wstring();
}

void Recovery::SetReason(KeptBecause because) {
  because_ = because;
  if (because != KeptBecause::Saved) kept_.ForgetAll();
}

// A change that memory does not hold goes unrecorded, as on a full disk, and is no reason for a save to fail.
void Recovery::Begin(const FileChange& change) {
  if (!mark_) return;
  try {
    writes_.Begin(change);
  } catch (const std::exception&) {
    writes_.End();
  }
}

void Recovery::End() {
  if (mark_) writes_.End();
}

void Recovery::Mend(const std::wstring& path) {
  if (mark_) writes_.TakeBackLeft(path);
}

bool Recovery::Wants(const std::wstring& mapPath) {
  return mark_ && kept_.Wants(mapPath);
}

bool Recovery::Keep(const std::wstring& mapPath, ByteSpan bytes) {
  const std::uint32_t error = files_.LastError();
  bool isKept = false;
  try {
    isKept = mark_ && kept_.Keep(mapPath, because_, clock_(), bytes);
  } catch (const std::exception&) {
    // Without memory the map is not kept, as on a full disk.
  }
  Failure none = Failure::None;
  if (mark_ && !isKept) failure_.compare_exchange_strong(none, Failure::Met);
  files_.SetLastError(error);
  return isKept;
}

bool Recovery::TakeKeepFailure() {
  Failure met = Failure::Met;
  return failure_.compare_exchange_strong(met, Failure::Told);
}

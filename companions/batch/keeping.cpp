#include "batch/keeping.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/filesystem.h"
#include "base/path.h"
#include "batch/machine.h"

namespace {

// A run is often for one bank of many, so that more runs are kept than of the windows.
constexpr Recovery::Limits kLimits = {1000, 30, {std::int64_t{1} << 30, std::int64_t{16} << 20}};

class WithoutOld : public FileGuard {
 public:
  explicit WithoutOld(FileGuard& guard) : guard_(guard) {}
  void Begin(const FileChange& change) override { guard_.Begin(change); }
  void End() override { guard_.End(); }
  void Mend(const std::wstring& path) override { guard_.Mend(path); }
  bool Wants(const std::wstring&) override { return false; }
  bool Keep(const std::wstring&, ByteSpan) override { return true; }

 private:
  FileGuard& guard_;
};

}  // namespace

Keeping::Keeping(Use use) : safety_(Disk(), KeepingFolder(), ProcessNumber(), kLimits) {
  if (use == Unused) return;
  safety_.Start();
  if (use == Nothing) withoutOld_ = std::make_unique<WithoutOld>(safety_);
  SetPresentGuard(use == Old ? static_cast<FileGuard*>(&safety_) : withoutOld_.get());
}

Keeping::~Keeping() {
  SetPresentGuard(nullptr);
  safety_.Close();
}

bool Keeping::HasRoom() {
  return !safety_.TakeKeepFailure();
}

std::vector<Keeping::Run> Keeping::RunsBelow(const std::wstring& folder) {
  std::map<std::wstring, Run> runs;  // by their folders
  for (KeptMap& kept : safety_.Kept().List()) {
    if (!kept.MapPath.starts_with(PathIn(folder, L""))) continue;
    const std::optional<FileFacts> facts = Disk().FactsOf(kept.File);
    const std::int64_t written = facts ? facts->Written : 0;
    Run& run = runs[FolderOf(kept.File)];
    run.Time = run.Maps.empty() ? kept.Time : std::min(run.Time, kept.Time);
    run.Written = run.Maps.empty() ? written : std::min(run.Written, written);
    run.Maps.push_back(std::move(kept));
  }
  std::vector<Run> sorted;
  for (auto& [path, run] : runs) sorted.push_back(std::move(run));
  std::ranges::sort(sorted, std::ranges::greater(), [](const Run& run) { return std::pair(run.Time, run.Written); });
  return sorted;
}

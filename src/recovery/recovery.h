// Recovery: the program's own folder for what must not be lost, with a folder in it for each run.
//
// A run's folder holds a mark that it lives, the journal of its edits, its writes that are under way, and the maps that
// it has kept. The next start deals with what is left of a run that did not end in order: writes are completed or taken
// back, and its journal waits here to be asked about. Folders of runs that live are left alone.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/fileguard.h"
#include "base/filesystem.h"
#include "recovery/keptfiles.h"
#include "recovery/writelog.h"

class Recovery : public FileGuard {
 public:
  struct Limits {
    int MostRuns = 5;   // runs whose kept maps stay
    int MostDays = 30;  // days after which nothing stays
    KeptLimits Kept = {};
  };
  using Clock = std::int64_t (*)();  // seconds since 1970
  static std::int64_t PresentTime();

  // `root` is the folder for all runs, `process` the number of this one. An empty `root` stands for none to be had:
  // then nothing is kept, and the program runs all the same. No folder is made yet.
  Recovery(FileSystem& files, const std::wstring& root, std::uint32_t process, Clock clock = &PresentTime);
  Recovery(FileSystem& files, const std::wstring& root, std::uint32_t process, const Limits& limits,
           Clock clock = &PresentTime);

  // Makes the folder of this run and deals with those of other runs. Called before any map is read.
  void Start();
  // The orderly end: the journal goes, kept maps stay for the next runs. Nothing is under way any more.
  void Close();

  // The journals of runs that did not end in order, the latest first. They are reserved for this run until they are
  // dropped, or it ends.
  std::vector<std::wstring> Journals() const;
  // Deletes a journal that nobody needs any more.
  void Drop(const std::wstring& journal);
  // The path for this run's journal; empty if there is no place for one.
  std::wstring JournalPath() const;

  // Sets the reason for which maps are kept from now on. For any but a save each is kept once more: a map that the user
  // has edited and saved before a job by mistake is worth more than the one from the start of the run.
  void SetReason(KeptBecause because);
  KeptFiles& Kept() { return kept_; }
  // Whether there was no room to keep a map. True once in a run.
  bool TakeKeepFailure();

  void Begin(const FileChange& change) override;
  void End() override;
  void Mend(const std::wstring& path) override;
  bool Wants(const std::wstring& mapPath) override;
  bool Keep(const std::wstring& mapPath, ByteSpan bytes) override;

 private:
  struct Run {
    std::wstring Folder;
    std::int64_t Start = 0;              // its time
    std::unique_ptr<FileStream> Mark{};  // of a run that died, held so that no other start deals with it
  };

  bool MakeOwn();
  std::vector<Run> OtherRuns() const;
  // Deals with the folder of another run; false if that run lives, or if its folder cannot be dealt with yet.
  bool Settle(Run& run);
  bool HoldsKept(const Run& run) const;
  void RemoveFiles(const std::wstring& folder) const;

  FileSystem& files_;
  const std::wstring root_;
  const Clock clock_;
  const Limits limits_;
  const Run own_;
  std::unique_ptr<FileStream> mark_;  // none: this run keeps nothing
  std::vector<Run> dead_;             // with a journal
  enum class Failure { None, Met, Told };
  std::atomic<Failure> failure_ = Failure::None;
  std::atomic<KeptBecause> because_ = KeptBecause::Saved;
  KeptFiles kept_;
  WriteLog writes_;
};

// Sets the reason for maps that are kept inside a scope.
class KeptBecauseScope {
 public:
  KeptBecauseScope(Recovery& recovery, KeptBecause because) : recovery_(recovery) { recovery_.SetReason(because); }
  ~KeptBecauseScope() { recovery_.SetReason(KeptBecause::Saved); }
  KeptBecauseScope(const KeptBecauseScope&) = delete;
  KeptBecauseScope& operator=(const KeptBecauseScope&) = delete;

 private:
  Recovery& recovery_;
};

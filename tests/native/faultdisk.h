// A file system in memory whose n-th call fails, writes short, or is the last one of the process: tests run what they
// are about once for every call that it makes.
//
// Calls are counted from 1 over all streams, those of FactsOf and List excepted, which meet no fault either. Files may
// be put and looked at directly, which counts as no call. A file can be made only in a folder that is there.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <mutex>
#include <set>

#include "base/filesystem.h"
#include "base/path.h"

enum class Fault {
  Fails,    // this call alone, having done nothing
  FailsOn,  // this call, a write having taken its first bytes, and all later ones
  Full,     // a write takes its first bytes alone, another call fails, and from then on a write that makes a file
            // larger takes what lies in the file alone
  Dies,     // the process ends within this call, a write having taken its first bytes; another call is done if any
            // bytes are told. All later calls do nothing and fail, those of streams that are open even after Revive
};

class FaultDisk : public FileSystem {
 public:
  // The system's codes.
  enum : std::uint32_t { Dead = 1, NotFound = 2, Denied = 5, Broken = 29, Locked = 33, EndOfFile = 38, DiskFull = 112 };

  // The call of that number meets the fault; 0 is none. Counting starts anew, and what was full or failing is no more.
  void Plan(int call = 0, Fault fault = Fault::Fails, std::size_t bytes = 0) {
    const std::lock_guard lock(lock_);
    calls_ = 0;
    planned_ = call;
    fault_ = fault;
    bytes_ = bytes;
    isFull_ = false;
  }
  int Calls() const { return std::lock_guard(lock_), calls_; }
  bool HasDied() const { return std::lock_guard(lock_), isDead_; }

  // Runs ahead of the call of that number: what another program does meanwhile.
  void Meanwhile(int call, std::function<void()> other) {
    const std::lock_guard lock(lock_);
    interrupted_ = call;
    other_ = std::move(other);
  }

  // The next process: no file is open, no fault is planned.
  void Revive() {
    Plan();
    const std::lock_guard lock(lock_);
    isDead_ = false;
    ++life_;
    for (auto& [path, file] : files_) file->Writers = 0, file->IsOwned = file->IsLocked = false;
  }

  // With the folders above it.
  void Put(const std::wstring& path, Bytes content) {
    const std::lock_guard lock(lock_);
    EnterFolder(FolderOf(path));
    const std::shared_ptr<File>& file = files_.try_emplace(path, std::make_shared<File>()).first->second;
    file->Content = std::move(content);
    file->Written = ++clock_;
  }
  std::optional<Bytes> ContentOf(const std::wstring& path) const {
    const std::lock_guard lock(lock_);
    const auto found = files_.find(path);
    return found == files_.end() ? std::nullopt : std::optional(found->second->Content);
  }

  std::unique_ptr<FileStream> Open(const std::wstring& path, FileMode mode) override {
    const auto lock = Enter();
    const Verdict verdict = Meet(life_);
    if (!verdict.Goes) return nullptr;
    const std::shared_ptr<File> file = Opened(path, mode);
    if (!file || verdict.Failed) return nullptr;
    if (mode != FileMode::Read) ++file->Writers;
    if (mode == FileMode::Own) file->IsOwned = true;
    if (mode == FileMode::Shared) file->IsLocked = true;
    return std::make_unique<Stream>(*this, file, mode);
  }

  std::optional<FileFacts> FactsOf(const std::wstring& path) override {
    const std::lock_guard lock(lock_);
    if (isDead_) return Fail(Dead), std::nullopt;
    const auto found = files_.find(path);
    if (found != files_.end()) return FileFacts{Length(*found->second), found->second->Written, false};
    if (HasFolder(path)) return FileFacts{0, 0, true};
    return Fail(NotFound), std::nullopt;
  }

  bool Delete(const std::wstring& path) override {
    return Do([&] {
      const auto found = files_.find(path);
      if (found == files_.end()) return Fail(NotFound);
      if (found->second->IsOwned) return Fail(Locked);
      return files_.erase(found), true;
    });
  }
  std::vector<std::wstring> List(const std::wstring& folder) override {
    const std::lock_guard lock(lock_);
    return isDead_ ? std::vector<std::wstring>() : NamesIn(folder);
  }
  bool MakeFolder(const std::wstring& path) override {
    return Do([&] { return files_.contains(path) ? Fail(Denied) : (EnterFolder(path), true); });
  }
  bool RemoveFolder(const std::wstring& path) override {
    return Do([&] { return (NamesIn(path).empty() && folders_.erase(path) > 0) || Fail(Denied); });
  }

  std::uint32_t LastError() const override { return lastError_; }
  void SetLastError(std::uint32_t error) override { lastError_ = error; }

 private:
  struct File {
    Bytes Content;
    std::int64_t Written = 0;
    int Writers = 0;  // streams that may write, among them one that owns or locks the file
    bool IsOwned = false;
    bool IsLocked = false;
  };

  // Into a call that is counted.
  std::unique_lock<std::mutex> Enter() {
    std::unique_lock lock(lock_);
    if (calls_ + 1 != interrupted_) return lock;
    interrupted_ = 0;
    lock.unlock();
    other_();
    lock.lock();
    return lock;
  }

  // The end of a call. One that goes on and has failed all the same is the last one of its process.
  struct Verdict {
    bool Goes = true;
    bool Failed = false;
    std::size_t Taken = ~std::size_t{0};  // bytes, of a write
  };

  // A counted call, in the process of that number, that does its work whole or not at all.
  bool Do(const auto& work) { return Do(life_, work); }
  bool Do(const int& life, const auto& work) {
    const auto lock = Enter();
    const Verdict verdict = Meet(life);
    return verdict.Goes && work() && !verdict.Failed;
  }

  class Stream : public FileStream {
   public:
    Stream(FaultDisk& disk, std::shared_ptr<File> file, FileMode mode)
        : disk_(disk), file_(std::move(file)), mode_(mode), life_(disk.life_) {}

    ~Stream() override {
      const std::lock_guard lock(disk_.lock_);
      if (mode_ == FileMode::Read || life_ != disk_.life_) return;
      --file_->Writers;
      if (mode_ == FileMode::Own) file_->IsOwned = false;
      if (mode_ == FileMode::Shared) file_->IsLocked = false;
    }

    std::int64_t Size() const override {
      return disk_.Do(life_, [] { return true; }) ? Length(*file_) : 0;
    }

    bool ReadAt(std::int64_t position, std::span<std::uint8_t> into) override {
      return disk_.Do(life_, [&] {
        const std::int64_t size = Length(*file_);
        if (position < 0 || position > size || std::ssize(into) > size - position) return disk_.Fail(EndOfFile);
        std::copy_n(file_->Content.begin() + static_cast<std::ptrdiff_t>(position), into.size(), into.begin());
        return true;
      });
    }

    bool WriteAt(std::int64_t position, ByteSpan bytes) override {
      const auto lock = disk_.Enter();
      const bool wasFull = disk_.isFull_;
      Verdict verdict = disk_.Meet(life_);
      if (mode_ == FileMode::Read) return disk_.Fail(Denied);
      const auto start = static_cast<std::size_t>(position);
      std::size_t taken = std::min(bytes.size(), verdict.Goes || verdict.Failed ? verdict.Taken : 0);
      if (wasFull && start + taken > file_->Content.size()) {
        taken = file_->Content.size() - std::min(file_->Content.size(), start);
        verdict.Failed = true;
        disk_.lastError_ = DiskFull;
      }
      if (taken > 0) {
        file_->Content.resize(std::max(file_->Content.size(), start + taken));
        std::copy_n(bytes.begin(), taken, file_->Content.begin() + static_cast<std::ptrdiff_t>(start));
        file_->Written = ++disk_.clock_;
      }
      return verdict.Goes && !verdict.Failed;
    }

    bool Truncate(std::int64_t size) override {
      return disk_.Do(life_, [&] {
        if (mode_ == FileMode::Read) return disk_.Fail(Denied);
        file_->Content.resize(static_cast<std::size_t>(size));
        file_->Written = ++disk_.clock_;
        return true;
      });
    }

   private:
    FaultDisk& disk_;
    const std::shared_ptr<File> file_;
    const FileMode mode_;
    const int life_;
  };

  static std::int64_t Length(const File& file) { return std::ssize(file.Content); }

  // Of the counted calls that do their work whole or not at all, one that dies has done it if any bytes are told. A
  // write that fails in part does not go on, but takes some bytes.
  Verdict Meet(int life) {
    if (isDead_ || life != life_) return Refuse(Dead);
    ++calls_;
    if (planned_ == 0 || calls_ < planned_ || (calls_ > planned_ && fault_ != Fault::FailsOn)) return {};
    switch (fault_) {
      case Fault::Full: isFull_ = true, lastError_ = DiskFull; return {false, true, bytes_};
      case Fault::Dies: isDead_ = true, lastError_ = Dead; return {bytes_ > 0, true, bytes_};
      case Fault::FailsOn: lastError_ = Broken; return {false, true, calls_ == planned_ ? bytes_ : 0};
      default: return Refuse(Broken);
    }
  }

  static Verdict Refuse(std::uint32_t error) { return lastError_ = error, Verdict{false, false, 0}; }
  static bool Fail(std::uint32_t error) { return lastError_ = error, false; }

  // Made if need be; null if it cannot be opened in that mode.
  std::shared_ptr<File> Opened(const std::wstring& path, FileMode mode) {
    const auto found = files_.find(path);
    if (mode == FileMode::Read && found != files_.end()) return found->second;
    if (mode == FileMode::Read || path.empty() || !HasFolder(FolderOf(path))) return Fail(NotFound), nullptr;
    if (HasFolder(path)) return Fail(Denied), nullptr;
    if (found == files_.end()) return files_[path] = std::make_shared<File>(File{{}, ++clock_});
    const File& file = *found->second;
    const bool isHeld = file.IsOwned || (mode == FileMode::Own && file.Writers > 0);
    if (isHeld || (mode == FileMode::Shared && file.IsLocked)) return Fail(Locked), nullptr;
    return found->second;
  }

  // A drive's root is always there.
  bool HasFolder(const std::wstring& path) const {
    return path.empty() || path.ends_with(L":\\") || folders_.contains(path);
  }

  void EnterFolder(const std::wstring& path) {
    if (HasFolder(path)) return;
    folders_.insert(path);
    EnterFolder(FolderOf(path));
  }

  std::vector<std::wstring> NamesIn(const std::wstring& folder) const {
    std::vector<std::wstring> names;
    for (const auto& [path, file] : files_) {
      if (FolderOf(path) == folder) names.push_back(FileNameOf(path));
    }
    for (const std::wstring& path : folders_) {
      if (FolderOf(path) == folder && path != folder) names.push_back(FileNameOf(path));
    }
    return names;
  }

  mutable std::mutex lock_;
  std::map<std::wstring, std::shared_ptr<File>> files_;
  std::set<std::wstring> folders_;
  std::int64_t clock_ = 0;
  int calls_ = 0;
  int planned_ = 0;
  Fault fault_ = Fault::Fails;
  std::size_t bytes_ = 0;
  bool isFull_ = false;
  bool isDead_ = false;
  int life_ = 0;
  int interrupted_ = 0;
  std::function<void()> other_;
  static inline thread_local std::uint32_t lastError_ = 0;
};

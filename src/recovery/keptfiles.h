// KeptFiles: the maps of the user as they were before they were overwritten or deleted for the first time in a run.
//
// A run appends them to files of its own in its folder ("kept-1" and on); the folders of the last runs lie beside each
// other. Beyond a limit over all of them the oldest files go.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/filesystem.h"

enum class KeptBecause : std::uint32_t { Saved, MadeAnew, Converted, Removed, PutBack };

// A map that is kept.
struct KeptMap {
  std::wstring MapPath;   // of an entry of desc.mrq the name that it would have as a file of its own
  std::int64_t Time = 0;  // seconds since 1970
  KeptBecause Because = KeptBecause::Saved;
  std::uint32_t Size = 0;  // bytes
  std::wstring File;       // that it lies in
  std::int64_t At = 0;     // place in the file at which its record begins
};

struct KeptLimits {
  std::int64_t MostBytes = std::int64_t{256} << 20;  // of all runs
  std::int64_t FileBytes = std::int64_t{16} << 20;   // a longer file is not appended to
};

class KeptFiles {
 public:
  // `root` is the folder in which the folders of the runs lie, `run` that of this run, which is there when the first
  // map is kept.
  KeptFiles(FileSystem& files, std::wstring root, std::wstring run, KeptLimits limits = {})
      : files_(files), root_(std::move(root)), run_(std::move(run)), limits_(limits) {}

  // Called on any thread. Each map is wanted and kept once, until it is forgotten.
  bool Wants(const std::wstring& mapPath) const;
  bool Keep(const std::wstring& mapPath, KeptBecause because, std::int64_t time, ByteSpan bytes);
  // The map is kept once more before its next change: what the user puts back may be the wrong one.
  void Forget(const std::wstring& mapPath);
  // Forgets all maps.
  void ForgetAll();

  // Lets go of the file; nothing is kept any more after this.
  void Close() { file_.reset(); }

  // The kept maps of all runs, the latest first.
  std::vector<KeptMap> List() const;
  // The bytes of a kept map; none if they have gone or are damaged.
  std::optional<Bytes> Read(const KeptMap& kept) const;

  // Whether a file in a run's folder is one of kept maps.
  static bool IsKeptFile(const std::wstring& name);

 private:
  bool OpenFile(std::size_t coming);
  void KeepWithinLimit();

  FileSystem& files_;
  const std::wstring root_;
  const std::wstring run_;
  const KeptLimits limits_;
  mutable std::mutex mutex_;
  std::set<std::wstring> kept_;
  std::unique_ptr<FileStream> file_;
  int number_ = 0;  // of the file
  std::int64_t end_ = 0;
};

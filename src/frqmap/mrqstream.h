// desc.mrq files on the disk: opening, reading and writing in place.
//
// A file is open only for the time of one operation, and lets the resampler read and write it meanwhile.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "base/handle.h"
#include "frqmap/mrqaccess.h"

class MrqFile : public MrqStream {
 public:
  explicit MrqFile(FileHandle file) : file_(std::move(file)) {}

  std::int64_t Size() const override;
  bool ReadAt(std::int64_t position, std::span<std::uint8_t> into) override;
  bool WriteAt(std::int64_t position, ByteSpan bytes) override;
  // Leaves GetLastError alone: it tells why there is something to cut off.
  bool Truncate(std::int64_t size) override;

 private:
  FileHandle file_;
};

// None, with the reason in GetLastError, if the file cannot be opened in that mode or is larger than 64 MiB.
std::optional<MrqFile> OpenMrqFile(const std::wstring& path, MrqMode mode);

#include "base/files.h"

#include <sys/stat.h>

#include "base/filesystem.h"
#include "base/posix/nativepath.h"

namespace {

constexpr std::int64_t kLargestFile = std::int64_t{64} << 20;  // the limit that Windows has

}  // namespace

bool ReadWholeFile(const std::wstring& path, Bytes& bytes) {
  const std::unique_ptr<FileStream> file = Disk().Open(path, FileMode::Read);
  if (!file || file->Size() > kLargestFile) return false;
  bytes.resize(static_cast<std::size_t>(file->Size()));
  return bytes.empty() || file->ReadAt(0, bytes);
}

std::optional<Bytes> ReadWholeFile(const std::wstring& path) {
  Bytes bytes;
  return ReadWholeFile(path, bytes) ? std::optional(std::move(bytes)) : std::nullopt;
}

bool WriteWholeFile(const std::wstring& path, ByteSpan bytes) {
  const std::unique_ptr<FileStream> file = Disk().Open(path, FileMode::Patch);
  return file && file->Truncate(0) && file->WriteAt(0, bytes);
}

bool FileExists(const std::wstring& path) {
  const std::optional<FileFacts> facts = Disk().FactsOf(path);
  return facts && !facts->IsFolder;
}

bool FolderExists(const std::wstring& path) {
  const std::optional<FileFacts> facts = Disk().FactsOf(path);
  return facts && facts->IsFolder;
}

// A file that nobody may write is refused: an administrator could write it all the same, against the mark.
bool RefuseReadOnly(const std::wstring& path) {
  struct stat facts {};
  if (stat(NativePath(path).c_str(), &facts) != 0 || (facts.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH))) return false;
  Disk().SetLastError(5);  // ERROR_ACCESS_DENIED
  return true;
}

#include "frqmap/mrqstream.h"

#include "base/files.h"

namespace {

// In memory an entry takes twice its place in the file, in a process of 32 bits.
constexpr std::int64_t kLargestFile = std::int64_t{64} << 20;

// The place for an offset in ReadFile and WriteFile costs several times the read under Wine.
bool MoveTo(HANDLE file, std::int64_t position) {
  LARGE_INTEGER distance{};
  distance.QuadPart = position;
  return SetFilePointerEx(file, distance, nullptr, FILE_BEGIN);
}

bool IsAll(DWORD done, std::size_t size, DWORD error) {
  if (done == size) return true;
  // A short read or write counts as a success to the system.
  if (GetLastError() == ERROR_SUCCESS) SetLastError(error);
  return false;
}

class Disk : public MrqAccess {
 public:
  std::unique_ptr<MrqStream> Open(const std::wstring& path, MrqMode mode) override {
    std::optional<MrqFile> file = OpenMrqFile(path, mode);
    return file ? std::make_unique<MrqFile>(std::move(*file)) : nullptr;
  }
  void Delete(const std::wstring& path) override { DeleteFileW(path.c_str()); }
};

}  // namespace

std::int64_t MrqFile::Size() const {
  LARGE_INTEGER size{};
  return GetFileSizeEx(file_.get(), &size) ? size.QuadPart : 0;
}

bool MrqFile::ReadAt(std::int64_t position, std::span<std::uint8_t> into) {
  DWORD done = 0;
  SetLastError(ERROR_SUCCESS);
  if (!MoveTo(file_.get(), position)) return false;
  ReadFile(file_.get(), into.data(), static_cast<DWORD>(into.size()), &done, nullptr);
  return IsAll(done, into.size(), ERROR_HANDLE_EOF);
}

bool MrqFile::WriteAt(std::int64_t position, ByteSpan bytes) {
  DWORD done = 0;
  SetLastError(ERROR_SUCCESS);
  if (!MoveTo(file_.get(), position)) return false;
  WriteFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr);
  return IsAll(done, bytes.size(), ERROR_DISK_FULL);
}

bool MrqFile::Truncate(std::int64_t size) {
  const DWORD error = GetLastError();
  const bool isCut = MoveTo(file_.get(), size) && SetEndOfFile(file_.get());
  SetLastError(error);
  return isCut;
}

std::optional<MrqFile> OpenMrqFile(const std::wstring& path, MrqMode mode) {
  const bool isPatch = mode == MrqMode::Patch;
  if (isPatch && RefuseReadOnly(path)) return std::nullopt;
  FileHandle handle(CreateFileW(path.c_str(), isPatch ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                mode == MrqMode::Read ? OPEN_EXISTING : OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!handle) return std::nullopt;

  MrqFile file(std::move(handle));
  const std::int64_t size = file.Size();
  if (size > kLargestFile) {
    SetLastError(ERROR_FILE_TOO_LARGE);
    return std::nullopt;
  }
  if (isPatch && size == 0 && !file.WriteAt(0, EmptyMrqFile())) return std::nullopt;
  return file;
}

MrqAccess& MrqDisk() {
  static Disk disk;
  return disk;
}

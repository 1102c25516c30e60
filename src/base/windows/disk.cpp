// The files of the machine.
#include <windows.h>

#include <atomic>
#include <utility>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/handle.h"
#include "base/path.h"

namespace {

constexpr DWORD kPatienceMs = 5000;  // for another program that has a file locked, or to itself
constexpr DWORD kBetweenMs = 5;
constexpr ULONGLONG kImpatienceMs = 1000;  // after a wait that was in vain

// One wait for another program. A wait right after one in vain ends at once: a thousand entries of one desc.mrq that
// somebody holds would take over an hour, with the document locked.
class Patience {
 public:
  // Waits a moment; false once the wait has lasted long enough.
  bool Wait() {
    if (waited_ >= kPatienceMs || GetTickCount64() - InVain() < kImpatienceMs) {
      InVain() = GetTickCount64();
      return false;
    }
    Sleep(kBetweenMs);
    waited_ += kBetweenMs;
    return true;
  }

 private:
  static std::atomic<ULONGLONG>& InVain() {
    static std::atomic<ULONGLONG> when = 0;
    return when;
  }

  DWORD waited_ = 0;
};

// The position is set by a call of its own: an offset handed to ReadFile or WriteFile costs several times the read
// under Wine.
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

class DiskStream : public FileStream {
 public:
  explicit DiskStream(FileHandle file) : file_(std::move(file)) {}

  std::int64_t Size() const override {
    LARGE_INTEGER size{};
    return GetFileSizeEx(file_.get(), &size) ? size.QuadPart : 0;
  }

  bool ReadAt(std::int64_t position, std::span<std::uint8_t> into) override {
    DWORD done = 0;
    SetLastError(ERROR_SUCCESS);
    if (!MoveTo(file_.get(), position)) return false;
    ReadFile(file_.get(), into.data(), static_cast<DWORD>(into.size()), &done, nullptr);
    return IsAll(done, into.size(), ERROR_HANDLE_EOF);
  }

  bool WriteAt(std::int64_t position, ByteSpan bytes) override {
    DWORD done = 0;
    SetLastError(ERROR_SUCCESS);
    if (!MoveTo(file_.get(), position)) return false;
    WriteFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr);
    return IsAll(done, bytes.size(), ERROR_DISK_FULL);
  }

  bool Truncate(std::int64_t size) override { return MoveTo(file_.get(), size) && SetEndOfFile(file_.get()); }

  // A byte far behind the end of any file stands for all of it, so that readers and outside programs are not held up.
  // The lock goes with the handle, also when the program dies. Some network drives know no locks: there the file is
  // written without one, as it always was, since no save would succeed at all otherwise.
  bool Lock() {
    for (Patience patience;;) {
      OVERLAPPED place{};
      place.OffsetHigh = 0x7FFFFFFF;
      if (LockFileEx(file_.get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) return true;
      const DWORD error = GetLastError();
      if (error == ERROR_NOT_SUPPORTED || error == ERROR_INVALID_FUNCTION) return true;
      if (!patience.Wait()) {
        SetLastError(error);
        return false;
      }
    }
  }

 private:
  FileHandle file_;
};

FileHandle OpenOnce(const std::wstring& path, FileMode mode) {
  constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const bool reads = mode == FileMode::Read;
  return FileHandle(
      CreateFileW(ApiPath(path).c_str(), reads ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE,
                  mode == FileMode::Own ? FILE_SHARE_READ : kAll, nullptr, reads ? OPEN_EXISTING : OPEN_ALWAYS,
                  reads ? FILE_ATTRIBUTE_NORMAL : FILE_ATTRIBUTE_NORMAL | FILE_FLAG_WRITE_THROUGH, nullptr));
}

// A program that reads a map may keep others from writing it, and is through in a moment: the opening waits for that.
FileHandle OpenPatiently(const std::wstring& path, FileMode mode) {
  const bool isPatient = mode == FileMode::Patch || mode == FileMode::Shared;
  for (Patience patience;;) {
    FileHandle file = OpenOnce(path, mode);
    if (file || !isPatient || GetLastError() != ERROR_SHARING_VIOLATION) return file;
    if (!patience.Wait()) {
      SetLastError(ERROR_SHARING_VIOLATION);
      return file;
    }
  }
}

class DiskFiles : public FileSystem {
 public:
  std::unique_ptr<FileStream> Open(const std::wstring& path, FileMode mode) override {
    const bool reads = mode == FileMode::Read;
    if (!reads && RefuseReadOnly(path)) return nullptr;
    FileHandle file = OpenPatiently(path, mode);
    if (!file) return nullptr;
    auto stream = std::make_unique<DiskStream>(std::move(file));
    if (mode == FileMode::Shared && !stream->Lock()) return nullptr;
    return stream;
  }

  std::optional<FileFacts> FactsOf(const std::wstring& path) override {
    WIN32_FILE_ATTRIBUTE_DATA found{};
    if (!GetFileAttributesExW(ApiPath(path).c_str(), GetFileExInfoStandard, &found)) return std::nullopt;
    const auto join = [](DWORD high, DWORD low) { return static_cast<std::int64_t>(high) << 32 | low; };
    return FileFacts{join(found.nFileSizeHigh, found.nFileSizeLow),
                     join(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime),
                     (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0};
  }

  bool Delete(const std::wstring& path) override { return DeleteFileW(ApiPath(path).c_str()); }

  std::vector<std::wstring> List(const std::wstring& folder) override {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found{};
    const FindHandle search(FindFirstFileW(ApiPath(PathIn(folder, L"*")).c_str(), &found));
    if (!search) return names;
    do {
      const std::wstring name = found.cFileName;
      if (name != L"." && name != L"..") names.push_back(name);
    } while (FindNextFileW(search.get(), &found));
    return names;
  }

  bool MakeFolder(const std::wstring& path) override {
    if (CreateDirectoryW(ApiPath(path).c_str(), nullptr)) return true;
    if (GetLastError() == ERROR_PATH_NOT_FOUND) {
      const std::wstring above = FolderOf(path);
      return above != path && MakeFolder(above) && CreateDirectoryW(ApiPath(path).c_str(), nullptr);
    }
    const DWORD error = GetLastError();
    const std::optional<FileFacts> there = FactsOf(path);
    ::SetLastError(error);
    return there && there->IsFolder;
  }

  bool RemoveFolder(const std::wstring& path) override { return RemoveDirectoryW(ApiPath(path).c_str()); }
  std::uint32_t LastError() const override { return GetLastError(); }
  void SetLastError(std::uint32_t error) override { ::SetLastError(error); }
};

}  // namespace

FileSystem& Disk() {
  static DiskFiles disk;
  return disk;
}

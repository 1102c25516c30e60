// The files of the machine, on Linux and the Mac. Errors are told in the codes of Windows, which all of the program
// speaks.
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/path.h"
#include "base/posix/nativepath.h"

namespace {

constexpr auto kPatience = std::chrono::seconds(5);  // for another program that has a file locked
constexpr auto kBetween = std::chrono::milliseconds(5);

thread_local std::uint32_t lastError = 0;

std::uint32_t CodeOf(int error) {
  switch (error) {
    case 0: return 0;
    case ENOENT: return 2;   // ERROR_FILE_NOT_FOUND
    case ENOTDIR: return 3;  // ERROR_PATH_NOT_FOUND
    case EMFILE:
    case ENFILE: return 4;  // ERROR_TOO_MANY_OPEN_FILES
    case EACCES:
    case EISDIR:
    case EPERM: return 5;   // ERROR_ACCESS_DENIED
    case ENOMEM: return 8;  // ERROR_NOT_ENOUGH_MEMORY
    case EROFS: return 19;  // ERROR_WRITE_PROTECT
    case EAGAIN:
    case ETXTBSY: return 33;  // ERROR_LOCK_VIOLATION
    case EFBIG: return 223;   // ERROR_FILE_TOO_LARGE
    case EDQUOT:
    case ENOSPC: return 112;        // ERROR_DISK_FULL
    case ENAMETOOLONG: return 206;  // ERROR_FILENAME_EXCED_RANGE
    case ENOTEMPTY: return 145;     // ERROR_DIR_NOT_EMPTY
    case EEXIST: return 183;        // ERROR_ALREADY_EXISTS
    default: return 1117;           // ERROR_IO_DEVICE
  }
}

bool Fail() {
  lastError = CodeOf(errno);
  return false;
}

bool Succeeds(int result) {
  return result == 0 || Fail();
}

class PosixStream : public FileStream {
 public:
  // `size` is given for a file that is only read: its size when it was opened.
  explicit PosixStream(int file, std::optional<std::int64_t> size) : file_(file), size_(size) {}
  ~PosixStream() override { close(file_); }
  PosixStream(const PosixStream&) = delete;
  PosixStream& operator=(const PosixStream&) = delete;

  std::int64_t Size() const override {
    if (size_) return *size_;
    struct stat facts {};
    return Succeeds(fstat(file_, &facts)) ? facts.st_size : 0;
  }

  bool ReadAt(std::int64_t position, std::span<std::uint8_t> into) override {
    while (!into.empty()) {
      const ssize_t got = pread(file_, into.data(), into.size(), position);
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) return Fail();
      if (got == 0) {
        lastError = 38;  // ERROR_HANDLE_EOF
        return false;
      }
      position += got;
      into = into.subspan(static_cast<std::size_t>(got));
    }
    return true;
  }

  bool WriteAt(std::int64_t position, ByteSpan bytes) override {
    while (!bytes.empty()) {
      const ssize_t done = pwrite(file_, bytes.data(), bytes.size(), position);
      if (done < 0 && errno == EINTR) continue;
      if (done < 0) return Fail();
      position += done;
      bytes = bytes.subspan(static_cast<std::size_t>(done));
    }
    return true;
  }

  bool Truncate(std::int64_t size) override { return Succeeds(ftruncate(file_, size)); }

  // The lock goes with the file, also when the program dies. Some network drives know no locks: there the file is
  // written without one.
  bool Lock(std::chrono::steady_clock::duration patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (flock(file_, LOCK_EX | LOCK_NB) != 0) {
      if (errno == ENOLCK || errno == EOPNOTSUPP || errno == EINVAL) return true;
      if (errno != EWOULDBLOCK && errno != EINTR) return Fail();
      if (std::chrono::steady_clock::now() >= end) {
        errno = EAGAIN;
        return Fail();
      }
      std::this_thread::sleep_for(kBetween);
    }
    return true;
  }

 private:
  const int file_;
  const std::optional<std::int64_t> size_;
};

class PosixFiles : public FileSystem {
 public:
  std::unique_ptr<FileStream> Open(const std::wstring& path, FileMode mode) override {
    const bool reads = mode == FileMode::Read;
    const std::string native = NativePath(path);
    if (!reads && RefuseReadOnly(path)) return nullptr;
    const int file = open(native.c_str(), reads ? O_RDONLY | O_CLOEXEC : O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0) {
      Fail();
      return nullptr;
    }
    struct stat facts {};
    const bool isKnown = fstat(file, &facts) == 0;
    auto stream = std::make_unique<PosixStream>(file, reads && isKnown ? std::optional(facts.st_size) : std::nullopt);
    if (isKnown && S_ISDIR(facts.st_mode)) {
      lastError = 5;
      return nullptr;
    }
    if (mode == FileMode::Shared && !stream->Lock(kPatience)) return nullptr;
    if (mode == FileMode::Own && !stream->Lock({})) return nullptr;
    return stream;
  }

  std::optional<FileFacts> FactsOf(const std::wstring& path) override {
    struct stat facts {};
    if (!Succeeds(stat(NativePath(path).c_str(), &facts))) return std::nullopt;
    return FileFacts{facts.st_size, facts.st_mtim.tv_sec * std::int64_t{1000000000} + facts.st_mtim.tv_nsec,
                     S_ISDIR(facts.st_mode)};
  }

  bool Delete(const std::wstring& path) override { return Succeeds(unlink(NativePath(path).c_str())); }

  std::vector<std::wstring> List(const std::wstring& folder) override {
    std::vector<std::wstring> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> search(opendir(NativePath(folder).c_str()), &closedir);
    if (!search) {
      Fail();
      return names;
    }
    while (const dirent* const found = readdir(search.get())) {
      if (std::strcmp(found->d_name, ".") != 0 && std::strcmp(found->d_name, "..") != 0) {
        names.push_back(PathFromNative(found->d_name));
      }
    }
    return names;
  }

  bool MakeFolder(const std::wstring& path) override {
    if (mkdir(NativePath(path).c_str(), 0777) == 0) return true;
    if (errno == ENOENT) {
      const std::wstring above = FolderOf(path);
      return above.size() < path.size() && !above.empty() && MakeFolder(above) &&
             Succeeds(mkdir(NativePath(path).c_str(), 0777));
    }
    Fail();
    const std::uint32_t error = lastError;
    const std::optional<FileFacts> there = FactsOf(path);
    lastError = error;
    return there && there->IsFolder;
  }

  bool RemoveFolder(const std::wstring& path) override { return Succeeds(rmdir(NativePath(path).c_str())); }
  std::uint32_t LastError() const override { return lastError; }
  void SetLastError(std::uint32_t error) override { lastError = error; }
};

}  // namespace

FileSystem& Disk() {
  static PosixFiles disk;
  return disk;
}

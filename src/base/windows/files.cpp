#include "base/files.h"

#include <windows.h>

#include "base/handle.h"
#include "base/path.h"

namespace {

// In memory a map takes twice its file, and twice that once it is edited, in a process of 32 bits.
constexpr LONGLONG kLargestFile = LONGLONG{64} << 20;

bool WriteAll(HANDLE file, ByteSpan bytes) {
  DWORD written = 0;
  SetLastError(ERROR_SUCCESS);
  if (WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) && written == bytes.size()) {
    return true;
  }
  // WriteFile counts a short write as a success.
  if (GetLastError() == ERROR_SUCCESS) SetLastError(ERROR_DISK_FULL);
  return false;
}

}  // namespace

bool ReadWholeFile(const std::wstring& path, Bytes& bytes) {
  const FileHandle file(CreateFileW(ApiPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  LARGE_INTEGER size{};
  if (!file || !GetFileSizeEx(file.get(), &size) || size.QuadPart > kLargestFile) return false;

  bytes.resize(static_cast<std::size_t>(size.QuadPart));
  DWORD read = 0;
  if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) return false;
  bytes.resize(read);
  return true;
}

std::optional<Bytes> ReadWholeFile(const std::wstring& path) {
  Bytes bytes;
  return ReadWholeFile(path, bytes) ? std::optional(std::move(bytes)) : std::nullopt;
}

bool WriteWholeFile(const std::wstring& path, ByteSpan bytes) {
  if (RefuseReadOnly(path)) return false;
  FileHandle file(
      CreateFileW(ApiPath(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  const bool complete = WriteAll(file.get(), bytes);
  const DWORD error = GetLastError();
  file.reset();
  SetLastError(error);
  return complete;
}

bool FileExists(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(ApiPath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool FolderExists(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(ApiPath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool RefuseReadOnly(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(ApiPath(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_READONLY)) return false;
  SetLastError(ERROR_ACCESS_DENIED);
  return true;
}

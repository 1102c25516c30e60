#include "base/tempfolder.h"

#include <windows.h>

#include <cwchar>
#include <functional>
#include <iterator>

#include "base/handle.h"
#include "base/path.h"
#include "base/systempath.h"
#include "base/text.h"

namespace {

constexpr wchar_t kPrefix[] = L"marlit_";

bool IsFolder(DWORD attributes) {
  constexpr DWORD kBoth = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kBoth) == FILE_ATTRIBUTE_DIRECTORY;
}

void ForEachIn(const std::wstring& folder, const wchar_t* pattern,
               const std::function<void(const WIN32_FIND_DATAW&)>& visit) {
  WIN32_FIND_DATAW item;
  const FindHandle find(FindFirstFileW(ApiPath(PathIn(folder, pattern)).c_str(), &item));
  if (!find) return;
  do {
    visit(item);
  } while (FindNextFileW(find.get(), &item));
}

void RemoveFolder(const std::wstring& folder) {
  if (IsFolder(GetFileAttributesW(ApiPath(folder).c_str()))) RemoveDirectoryW(ApiPath(folder).c_str());
}

// The process that a folder's name tells, 0 if it is no name of ours.
DWORD ProcessOf(const std::wstring& name) {
  unsigned process = 0, thread = 0;
  const bool isOurs = name.find_first_not_of(L"0123456789_", std::size(kPrefix) - 1) == name.npos;
  return isOurs && std::swscanf(name.c_str(), L"marlit_%10u_%10u", &process, &thread) == 2 ? process : 0;
}

std::wstring ProgramOf(HANDLE process) {
  std::wstring path(kLongestPath, L'\0');
  DWORD length = kLongestPath;
  path.resize(QueryFullProcessImageNameW(process, 0, path.data(), &length) ? length : 0);
  return FileNameOf(path);
}

// The number of a process that has ended may be another program's now. A process that we may not look at counts as
// ours.
bool IsProcessOfOurs(DWORD id) {
  const UniqueHandle<KernelTraits> process(
      OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE, id));
  if (!process) return GetLastError() != ERROR_INVALID_PARAMETER;
  if (WaitForSingleObject(process.get(), 0) == WAIT_OBJECT_0) return false;
  const std::wstring program = ProgramOf(process.get());
  return program.empty() || program == ProgramOf(GetCurrentProcess());
}

// A program that was killed has left its folder behind, with the wave of a preview in it.
void RemoveThoseOfTheDead(const std::wstring& temporary) {
  ForEachIn(temporary, (std::wstring(kPrefix) + L'*').c_str(), [&](const WIN32_FIND_DATAW& item) {
    const DWORD process = ProcessOf(item.cFileName);
    if (process == 0 || !IsFolder(item.dwFileAttributes) || IsProcessOfOurs(process)) return;
    const std::wstring folder = PathIn(temporary, item.cFileName);
    TempFolder::Empty(folder);
    RemoveFolder(folder);
  });
}

}  // namespace

void TempFolder::Make() {
  const std::wstring temporary = TemporaryPath();
  RemoveThoseOfTheDead(temporary);
  const std::wstring first = kPrefix + FormatText(L"%d_%d", GetCurrentProcessId(), GetCurrentThreadId());
  path_ = PathIn(temporary, first);
  const auto isTaken = [this] {
    return !CreateDirectoryW(ApiPath(path_).c_str(), nullptr) && GetLastError() == ERROR_ALREADY_EXISTS;
  };
  for (int number = 2; isTaken(); ++number) {
    path_ = PathIn(temporary, first + L'_' + std::to_wstring(number));
  }
}

void TempFolder::Remove() const {
  if (!path_.empty()) RemoveFolder(path_);
}

void TempFolder::Empty(const std::wstring& folder) {
  // An empty path would be the root of the drive.
  if (folder.empty() || !IsFolder(GetFileAttributesW(ApiPath(folder).c_str()))) return;
  ForEachIn(folder, L"*", [&](const WIN32_FIND_DATAW& item) {
    const std::wstring path = PathIn(folder, item.cFileName);
    if (!(item.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) DeleteFileW(ApiPath(path).c_str());
  });
}

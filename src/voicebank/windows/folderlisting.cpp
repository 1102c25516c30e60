// The pass over a folder, and the names that the file system takes for the same.
#include "voicebank/folderlisting.h"

#include <windows.h>

#include "base/handle.h"
#include "base/path.h"

namespace {

bool IsDots(const wchar_t* name) {
  return name == std::wstring_view(L".") || name == std::wstring_view(L"..");
}

}  // namespace

std::wstring FolderListing::Folded(std::wstring name) {
  CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
  return name;
}

std::optional<FolderListing> FolderListing::Read(const std::wstring& folder) {
  WIN32_FIND_DATAW item;
  const FindHandle find(FindFirstFileW(ApiPath(PathIn(folder, L"*")).c_str(), &item));
  if (!find) return std::nullopt;
  FolderListing listing;
  listing.folder_ = folder;
  do {
    if (!(item.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
      listing.files_.emplace_back(item.cFileName);
      listing.sizes_.emplace_back(item.nFileSizeLow);
    } else if (!IsDots(item.cFileName)) {
      listing.folders_.emplace_back(item.cFileName);
    }
  } while (FindNextFileW(find.get(), &item));
  // A listing that broke off would make files look gone.
  if (GetLastError() != ERROR_NO_MORE_FILES) return std::nullopt;
  listing.Finish();
  return listing;
}

#include "voicebank/folderlisting.h"

#include <windows.h>

#include "base/filesystem.h"
#include "base/handle.h"
#include "base/path.h"

namespace {

std::wstring FoldCase(std::wstring name) {
  CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
  return name;
}

bool IsDots(const wchar_t* name) {
  return name == std::wstring_view(L".") || name == std::wstring_view(L"..");
}

}  // namespace

std::optional<FolderListing> FolderListing::Read(const std::wstring& folder) {
  WIN32_FIND_DATAW item;
  const FindHandle find(FindFirstFileW(ApiPath(PathIn(folder, L"*")).c_str(), &item));
  if (!find) return std::nullopt;
  FolderListing listing;
  do {
    if (!(item.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
      listing.files_.emplace_back(item.cFileName);
      listing.sizes_.emplace(FoldCase(item.cFileName), item.nFileSizeLow);
    } else if (!IsDots(item.cFileName)) {
      listing.folders_.emplace_back(item.cFileName);
    }
  } while (FindNextFileW(find.get(), &item));
  // A listing that broke off would make files look gone.
  if (GetLastError() != ERROR_NO_MORE_FILES) return std::nullopt;
  return listing;
}

std::optional<std::uint32_t> FolderListing::SizeOf(const std::wstring& name) const {
  const auto found = sizes_.find(FoldCase(name));
  if (found == sizes_.end()) return std::nullopt;
  return found->second;
}

const FolderListing* ListedFolders::Find(const std::wstring& folder) {
  auto found = folders_.find(folder);
  if (found == folders_.end()) found = folders_.emplace(folder, FolderListing::Read(folder)).first;
  return found->second ? &*found->second : nullptr;
}

std::optional<std::uint32_t> ListedFolders::SizeOf(const std::wstring& path) {
  const std::wstring name = FileNameOf(path);
  // A "/" in a name leads into a folder that is not listed.
  const FolderListing* const listing = name.find(L'/') == name.npos ? Find(FolderOf(path)) : nullptr;
  if (listing) return listing->SizeOf(name);
  const std::optional<FileFacts> facts = Disk().FactsOf(path);
  if (!facts || facts->IsFolder) return std::nullopt;
  return static_cast<std::uint32_t>(facts->Size);
}

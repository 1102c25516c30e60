#include "voicebank/folderlisting.h"

#include "base/filesystem.h"
#include "base/path.h"

std::optional<std::uint32_t> FolderListing::SizeOf(const std::wstring& name) const {
  const auto found = sizes_.find(Folded(name));
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

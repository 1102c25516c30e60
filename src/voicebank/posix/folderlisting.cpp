// The pass over a folder where names that differ in case are two files.
#include "voicebank/folderlisting.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <memory>
#include <string_view>

#include "base/posix/nativepath.h"

std::wstring FolderListing::Folded(std::wstring name) {
  return name;
}

std::optional<FolderListing> FolderListing::Read(const std::wstring& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> pass(opendir(NativePath(folder).c_str()), &closedir);
  if (!pass) return std::nullopt;
  FolderListing listing;
  while (const dirent* const item = readdir(pass.get())) {
    const std::string_view name = item->d_name;
    struct stat facts {};
    // A link that leads nowhere is no file.
    if (name == "." || name == ".." || fstatat(dirfd(pass.get()), item->d_name, &facts, 0) != 0) continue;
    if (S_ISDIR(facts.st_mode)) {
      listing.folders_.push_back(PathFromNative(name));
    } else if (S_ISREG(facts.st_mode)) {
      listing.files_.push_back(PathFromNative(name));
      listing.sizes_.emplace(listing.files_.back(), static_cast<std::uint32_t>(facts.st_size));
    }
  }
  return listing;
}

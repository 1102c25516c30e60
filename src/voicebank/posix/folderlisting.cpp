// The pass over a folder where names that differ in case are two files.
#include "voicebank/folderlisting.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <memory>
#include <string_view>

#include "base/posix/nativepath.h"

namespace {

// The type of a link is that of its target; a link that leads nowhere is neither file nor folder.
int TypeOf(DIR* pass, const dirent& item) {
  if (item.d_type == DT_REG || item.d_type == DT_DIR) return item.d_type;
  struct stat facts {};
  if (fstatat(dirfd(pass), item.d_name, &facts, 0) != 0) return DT_UNKNOWN;
  return S_ISDIR(facts.st_mode) ? DT_DIR : S_ISREG(facts.st_mode) ? DT_REG : DT_UNKNOWN;
}

}  // namespace

std::wstring FolderListing::Folded(std::wstring name) {
  return name;
}

// Most file systems tell what an item is with its name, and asking for each takes longer than all the rest. Sizes are
// left to those who want one.
std::optional<FolderListing> FolderListing::Read(const std::wstring& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> pass(opendir(NativePath(folder).c_str()), &closedir);
  if (!pass) return std::nullopt;
  FolderListing listing;
  listing.folder_ = folder;
  while (const dirent* const item = readdir(pass.get())) {
    const std::string_view name = item->d_name;
    if (name == "." || name == "..") continue;
    switch (TypeOf(pass.get(), *item)) {
      case DT_DIR: listing.folders_.push_back(PathFromNative(name)); break;
      case DT_REG:
        listing.files_.push_back(PathFromNative(name));
        listing.sizes_.emplace_back();
        break;
      default: break;
    }
  }
  listing.Finish();
  return listing;
}

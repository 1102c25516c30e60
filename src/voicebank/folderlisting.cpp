#include "voicebank/folderlisting.h"

#include <bit>
#include <functional>

#include "base/filesystem.h"
#include "base/path.h"

namespace {

std::uint32_t HashOf(const std::wstring& name) {
  return static_cast<std::uint32_t>(std::hash<std::wstring>()(name));
}

std::optional<std::uint32_t> AskedSize(const std::wstring& path) {
  const std::optional<FileFacts> facts = Disk().FactsOf(path);
  if (!facts || facts->IsFolder) return std::nullopt;
  return static_cast<std::uint32_t>(facts->Size);
}

}  // namespace

// Most names that are asked for are not there: the table says so by numbers alone, without touching a name, and that of
// a large folder stays in the processor's cache.
void FolderListing::Finish() {
  slots_.assign(std::bit_ceil(2 * files_.size() + 1), {});
  for (std::size_t place = 0; place < files_.size(); ++place) {
    const std::uint32_t hash = HashOf(Folded(files_[place]));
    std::size_t at = hash;
    while (slots_[at & (slots_.size() - 1)].place != 0) ++at;
    slots_[at & (slots_.size() - 1)] = {hash, static_cast<std::uint32_t>(place + 1)};
  }
}

std::optional<std::size_t> FolderListing::PlaceOf(const std::wstring& folded) const {
  const std::uint32_t hash = HashOf(folded);
  for (std::size_t at = hash;; ++at) {
    const Slot& slot = slots_[at & (slots_.size() - 1)];
    if (slot.place == 0) return std::nullopt;
    if (slot.hash == hash && Folded(files_[slot.place - 1]) == folded) return slot.place - 1;
  }
}

std::optional<std::uint32_t> FolderListing::SizeOf(const std::wstring& name) const {
  const std::optional<std::size_t> place = PlaceOf(Folded(name));
  if (!place) return std::nullopt;
  return sizes_[*place] ? sizes_[*place] : AskedSize(PathIn(folder_, name));
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
  return listing ? listing->SizeOf(name) : AskedSize(path);
}

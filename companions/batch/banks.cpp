#include "batch/banks.h"

#include <algorithm>
#include <iterator>

#include "base/path.h"
#include "base/utf8.h"
#include "base/wildcard.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqmap.h"
#include "voicebank/waveheader.h"

namespace {

constexpr int kDeepest = 32;  // folders in folders; links may go in circles

bool IsBank(const FolderListing& listing) {
  return std::ranges::any_of(listing.Files(), [](const std::wstring& name) {
    return IsSoundFile(name) || name == L"oto.ini" || name == L"character.txt";
  });
}

std::vector<std::wstring> FoldersIn(const std::wstring& folder, const FolderListing& listing) {
  std::vector<std::wstring> folders = listing.Folders();
  std::ranges::sort(folders);
  for (std::wstring& name : folders) name = PathIn(folder, name);
  return folders;
}

void FindBelow(const std::wstring& folder, int depth, std::vector<std::unique_ptr<Bank>>& banks) {
  const auto listing = depth > kDeepest ? std::nullopt : FolderListing::Read(folder);
  if (!listing) return;
  if (!IsBank(*listing)) {
    for (const std::wstring& inside : FoldersIn(folder, *listing)) FindBelow(inside, depth + 1, banks);
    return;
  }
  banks.push_back(std::make_unique<Bank>(folder));
  for (const std::wstring& deeper : banks.back()->DeeperFolders()) FindBelow(deeper, depth + 2, banks);
}

}  // namespace

Bank::Bank(std::wstring folder) : folder_(std::move(folder)) {
  const FolderListing* const listing = AddWavesOf(folder_);
  if (!listing) return;
  for (const std::wstring& inside : FoldersIn(folder_, *listing)) AddWavesOf(inside);
}

const FolderListing* Bank::AddWavesOf(const std::wstring& folder) {
  std::optional<FolderListing> read = FolderListing::Read(folder);
  if (!read) return nullptr;
  const FolderListing& listing = folders_.insert_or_assign(folder, std::move(*read)).first->second;
  const auto first = static_cast<std::ptrdiff_t>(waves_.size());
  for (const std::wstring& name : listing.Files()) {
    if (IsSoundFile(name)) {
      waves_.push_back(PathIn(folder, name));
    } else {
      kinds_.insert(FrqTypeFromPathW(name));
    }
  }
  // By their names: what is before these is the same in all.
  const std::size_t nameAt = PathIn(folder, L"").size();
  std::ranges::sort(waves_.begin() + first, waves_.end(), {},
                    [&](const std::wstring& wave) { return std::wstring_view(wave).substr(nameAt); });
  return &listing;
}

std::vector<std::wstring> Bank::DeeperFolders() const {
  std::vector<std::wstring> deeper;
  for (const auto& [folder, listing] : folders_) {
    if (folder != folder_) std::ranges::copy(FoldersIn(folder, listing), std::back_inserter(deeper));
  }
  return deeper;
}

std::wstring Bank::NameOf(const std::wstring& wave) const {
  const std::wstring inside = PathIn(folder_, L"");
  return wave.starts_with(inside) ? wave.substr(inside.size()) : wave;
}

void Bank::KeepOnly(const std::string& pattern) {
  if (pattern.empty()) return;
  std::wstring wide = WideOf(pattern);
  std::ranges::replace(wide, L'/', L'\\');
  std::erase_if(waves_, [&](const std::wstring& wave) {
    const std::wstring name = NameOf(wave);
    const bool fits = FitsPattern(name, wide) || FitsPattern(FileNameOf(name), wide) ||
                      FitsPattern(PathWithoutExtension(FileNameOf(name)), wide);
    return !fits;
  });
}

bool Bank::HasMap(const std::wstring& wave, FrqType kind) {
  if (kind == FrqTypeMrq) return MrqExists(MapPathFromWaveW(wave, kind), Entries());
  // Most banks have maps of one kind, and are asked about all for each wave.
  if (!kinds_.contains(kind)) return false;
  const auto folder = folders_.find(FolderOf(wave));
  return folder != folders_.end() && folder->second.Holds(MapPathFromWaveW(FileNameOf(wave), kind));
}

MrqStore& Bank::Entries() {
  std::call_once(loading_, [this] {
    for (const auto& [folder, listing] : folders_) entries_.LoadFolder(folder);
  });
  return entries_;
}

std::vector<std::unique_ptr<Bank>> FindBanks(const std::wstring& folder, bool recursive) {
  std::vector<std::unique_ptr<Bank>> banks;
  if (recursive) {
    FindBelow(folder, 0, banks);
  } else {
    banks.push_back(std::make_unique<Bank>(folder));
  }
  return banks;
}

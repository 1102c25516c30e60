#include "app/voicebankscan.h"

#include <windows.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "app/mapsearch.h"
#include "base/path.h"
#include "base/systempath.h"
#include "voicebank/otoini.h"
#include "voicebank/waveheader.h"

namespace {

// The comparison by language is slow: each folder is given its rank once, and none of its syllables is compared so.
// Names that the language takes for the same have the same rank.
void RankFolders(std::map<std::wstring, int>& ranks) {
  std::vector<std::map<std::wstring, int>::value_type*> folders;
  folders.reserve(ranks.size());
  for (auto& folder : ranks) folders.push_back(&folder);
  const auto compare = [](const auto* a, const auto* b) { return lstrcmpW(a->first.c_str(), b->first.c_str()); };
  std::ranges::sort(folders, [&](const auto* a, const auto* b) { return compare(a, b) < 0; });
  for (std::size_t i = 1; i < folders.size(); ++i) {
    folders[i]->second = folders[i - 1]->second + (compare(folders[i - 1], folders[i]) != 0 ? 1 : 0);
  }
}

}  // namespace

void VoicebankScan::AddVoicebank(const std::wstring& folder) {
  const FolderListing* const listing = AddFolder(folder);
  if (!listing) return;
  for (const std::wstring& name : listing->Folders()) AddFolder(PathIn(folder, name));
}

// The sound files of one folder. None if it cannot be listed.
const FolderListing* VoicebankScan::AddFolder(const std::wstring& folder) {
  if (kind_ == FrqTypeMrq) store_.LoadFolder(folder);
  const FolderListing* const listing = listed_.Find(folder);
  if (!listing) return nullptr;
  for (const std::wstring& name : listing->Files()) {
    if (IsSoundFile(name)) AddSyllable(PathIn(folder, name));
  }
  return listing;
}

void VoicebankScan::AddSyllable(const std::wstring& path) {
  if (path.empty() || !seenPaths_.insert(path).second) return;
  // The host's syllables may lie in folders that no scan has come through.
  const std::wstring folder = FolderOf(path);
  if (kind_ == FrqTypeMrq && !store_.HasFolder(folder)) store_.LoadFolder(folder);
  const FoundMap map = FindMap(path, kind_, listed_, store_);
  found_.push_back({path, map.Exists, map.FrameEstimate});
}

std::vector<FoundSyllable> VoicebankScan::TakeSorted() {
  struct Key {
    int FolderRank;
    FoundSyllable* Syllable;
  };
  std::map<std::wstring, int> ranks;
  for (const FoundSyllable& syllable : found_) ranks.emplace(FolderOf(syllable.Path), 0);
  RankFolders(ranks);
  std::vector<Key> keys;
  keys.reserve(found_.size());
  for (FoundSyllable& syllable : found_) keys.push_back({ranks[FolderOf(syllable.Path)], &syllable});
  std::ranges::sort(keys, [](const Key& a, const Key& b) {
    return a.FolderRank != b.FolderRank ? a.FolderRank < b.FolderRank : a.Syllable->Path < b.Syllable->Path;
  });
  std::vector<FoundSyllable> sorted;
  sorted.reserve(keys.size());
  for (const Key& key : keys) sorted.push_back(std::move(*key.Syllable));
  found_.clear();
  return sorted;
}

PluginSyllables ReadPluginSyllables(const std::wstring& pluginFile) {
  UtauCommon::NOTELIST list;
  list.Load(pluginFile);
  PluginSyllables called;
  called.Voicebank = list.GetVoiceDir();
  // The host may have written a blank or a dot behind it that its folder does not have.
  if (!HasPlainNames(called.Voicebank)) called.Voicebank = FullPathOf(called.Voicebank);
  UtauCommon::OTOINI syllables;
  // Without a folder its file would be looked for in the root of the drive.
  if (!called.Voicebank.empty()) syllables.Load(called.Voicebank);
  const UtauCommon::NOTE* note = list.FindFirstNumbered();
  for (; note && note->GetType() == UtauCommon::NoteTypeNumbered; note = note->next) {
    called.Paths.push_back(ResolveNoteWavePath(*note, syllables));
  }
  return called;
}

// VoicebankScan: which waves a list is filled with, in which order, and what is known of their maps unread.
//
// It knows neither windows nor maps. One object serves one filling: it remembers the waves that it has met, and reads
// each folder once.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "document/syllable.h"
#include "frqmap/frqtype.h"
#include "frqmap/mrqstore.h"
#include "voicebank/folderlisting.h"

class VoicebankScan {
 public:
  // Folders that are met on the way are loaded into `store` where the kind keeps its maps there.
  VoicebankScan(FrqType kind, MrqStore& store) : kind_(kind), store_(store) {}

  // The sound files of a folder and of the folders directly in it; what lies deeper is not looked at. Nothing is added
  // for a folder that cannot be listed.
  void AddVoicebank(const std::wstring& folder);

  // A wave that cannot be read is added all the same: no wave is opened here. An empty path is ignored, and so is one
  // that was added before, which is told by every character, case included.
  void AddSyllable(const std::wstring& path);

  // All that was added, which leaves none. Folders go by the words of the user's language, names within a folder by
  // code units. The two differ on purpose: all files of a folder stay together, and users know the order of the names
  // from their other tools.
  std::vector<FoundSyllable> TakeSorted();

 private:
  const FolderListing* AddFolder(const std::wstring& folder);

  FrqType kind_;
  MrqStore& store_;
  ListedFolders listed_;
  std::set<std::wstring> seenPaths_;
  std::vector<FoundSyllable> found_;
};

// The waves that a plug-in file calls for, in the order of its notes, and the folder of their voicebank.
struct PluginSyllables {
  std::wstring Voicebank;
  std::vector<std::wstring> Paths;  // one a note, so that a wave may come more than once
};
PluginSyllables ReadPluginSyllables(const std::wstring& pluginFile);

// The banks that a call is for: which folders, which waves in them, and which maps are beside those.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "frqmap/frqtype.h"
#include "frqmap/mrqstore.h"
#include "voicebank/folderlisting.h"

// A voicebank: the waves of a folder and of the folders directly in it, as the windows show them. Any thread may ask.
class Bank {
 public:
  // Empty without a folder that can be listed.
  explicit Bank(std::wstring folder);

  const std::wstring& Folder() const { return folder_; }
  // In full; folder by folder, and by their names in each.
  const std::vector<std::wstring>& Waves() const { return waves_; }
  // The folders in the folders that are part of it.
  std::vector<std::wstring> DeeperFolders() const;
  // The path of a wave as seen from the folder.
  std::wstring NameOf(const std::wstring& wave) const;
  void KeepOnly(const std::string& pattern);

  // Whether there is a map: a file, or an entry of desc.mrq.
  bool HasMap(const std::wstring& wave, FrqType kind);
  // The entries of all desc.mrq of the bank, which are read when they are first asked for.
  MrqStore& Entries();

 private:
  // Null where the folder cannot be listed.
  const FolderListing* AddWavesOf(const std::wstring& folder);

  const std::wstring folder_;
  std::map<std::wstring, FolderListing> folders_;  // all that have waves or could have; as they were at the beginning
  std::set<FrqType> kinds_;                        // of which there is any file
  std::vector<std::wstring> waves_;
  std::once_flag loading_;
  MrqStore entries_;
};

// The bank of a folder, or with `recursive` all below it: a folder with waves, or with a file that only banks have.
// Waves in folders of folders of one are a bank of their own.
std::vector<std::unique_ptr<Bank>> FindBanks(const std::wstring& folder, bool recursive);

// What one folder holds, read in a single pass: its files with their sizes, and its subfolders.
//
// A voicebank has thousands of waves with a map each, and asking the file system for each map costs many times what
// one enumeration does.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

class FolderListing {
 public:
  // None if the folder cannot be listed.
  static std::optional<FolderListing> Read(const std::wstring& folder);

  // Names as the file system gives them, in its order; "." and ".." are left out.
  const std::vector<std::wstring>& Files() const { return files_; }
  const std::vector<std::wstring>& Folders() const { return folders_; }

  // Low 32 bits of a file's size, none if there is no such file. Names are compared as the file system does: on
  // Windows without regard to case.
  std::optional<std::uint32_t> SizeOf(const std::wstring& name) const;

 private:
  // The one form of all names that the file system takes for the same.
  static std::wstring Folded(std::wstring name);

  std::vector<std::wstring> files_;
  std::vector<std::wstring> folders_;
  std::unordered_map<std::wstring, std::uint32_t> sizes_;  // by folded name
};

// Sizes of files in any folders, each folder being read once, when it is first asked for. Where a folder cannot be
// listed, the file itself is asked for.
class ListedFolders {
 public:
  std::optional<std::uint32_t> SizeOf(const std::wstring& path);
  const FolderListing* Find(const std::wstring& folder);

 private:
  std::map<std::wstring, std::optional<FolderListing>> folders_;
};

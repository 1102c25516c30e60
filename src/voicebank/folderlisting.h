// The content of one folder, read in a single pass: its files with their sizes, and its subfolders.
//
// A voicebank has thousands of waves with a map each, and asking the file system for each map costs many times what
// one enumeration does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class FolderListing {
 public:
  // The listing of a folder; none if it cannot be listed.
  static std::optional<FolderListing> Read(const std::wstring& folder);

  // Names as the file system gives them, in its order; "." and ".." are left out.
  const std::vector<std::wstring>& Files() const { return files_; }
  const std::vector<std::wstring>& Folders() const { return folders_; }

  // Whether there is such a file. Names are compared as the file system does: on Windows without regard to case.
  bool Holds(std::wstring name) const { return PlaceOf(Folded(std::move(name))).has_value(); }
  // Low 32 bits of the file's size; none if there is no such file.
  std::optional<std::uint32_t> SizeOf(const std::wstring& name) const;

 private:
  // The one form of all names that the file system takes for the same.
  static std::wstring Folded(std::wstring name);

  // Makes the table, when all files are there.
  void Finish();
  // The place of a file among all; none if there is no such file.
  std::optional<std::size_t> PlaceOf(const std::wstring& folded) const;

  // A slot of the table. A name stands in the one that its hash leads to or, where that is taken, in the next free one.
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t place = 0;  // among the files, from 1 on; 0: free
  };

  std::wstring folder_;
  std::vector<std::wstring> files_;
  std::vector<std::optional<std::uint32_t>> sizes_;  // of the files; none: the system has to be asked for it
  std::vector<std::wstring> folders_;
  std::vector<Slot> slots_ = std::vector<Slot>(1);  // at least twice as many as files, and a power of two
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

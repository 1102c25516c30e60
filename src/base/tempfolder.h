// TempFolder: a folder for scratch files that is private to this process and thread.
//
// Its owner says when it is made and when it goes, since a program that was started by it may still be at work in it
// when the owner is destroyed. The folder that all temporary files share belongs to nobody: what lies there under the
// name of ours, and was not made by us, is left alone, and nothing is deleted through a link.
#pragma once

#include <string>

class TempFolder {
 public:
  // Makes a new folder under a name that is not taken. Folders that killed processes have left go first. Where it
  // cannot be made, nothing is told: whatever is to be written there fails.
  void Make();
  // A folder that is not empty stays.
  void Remove() const;

  // Empty until it was made.
  const std::wstring& Path() const { return path_; }

  // Deletes the files that lie in a folder itself. Files in use stay, and so do folders. Nothing is deleted where
  // `folder` is a link.
  static void Empty(const std::wstring& folder);

 private:
  std::wstring path_;
};

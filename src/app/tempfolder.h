// TempFolder: a folder for scratch files that is private to this process and thread.
//
// Its owner says when it is made and when it goes, since a program that was started by it may still be at work in it
// when the owner is destroyed.
#pragma once

#include <string>

class TempFolder {
 public:
  // A folder that cannot be made is met by what is to be written there.
  void Make();
  // A folder that is not empty stays.
  void Remove() const;

  // Empty until it was made.
  const std::wstring& Path() const { return path_; }

 private:
  std::wstring path_;
};

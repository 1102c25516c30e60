// KeptFolder: the current folder of the process stays as it is where a picker of the system is open, which changes it
// as the user walks about.
//
// A current folder cannot be renamed or deleted, and programs that we start begin in it.
#pragma once

#include <windows.h>

#include <string>

class KeptFolder {
 public:
  KeptFolder() : folder_(Current()) {}
  ~KeptFolder() {
    if (!folder_.empty()) SetCurrentDirectoryW(folder_.c_str());
  }
  KeptFolder(const KeptFolder&) = delete;
  KeptFolder& operator=(const KeptFolder&) = delete;

 private:
  static std::wstring Current() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
  }

  const std::wstring folder_;
};

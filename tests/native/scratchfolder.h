// A folder that a test may write to, gone with the test.
//
// Apart from what only tests on Windows may write to, which is in win/scratch.h.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/path.h"
#include "base/utf16.h"

// The standard library takes no name that only the extended form opens.
inline void RemoveTree(const std::wstring& path) {
  if (Disk().Delete(path) || Disk().RemoveFolder(path)) return;
  for (const std::wstring& name : Disk().List(path)) RemoveTree(PathIn(path, name));
  Disk().RemoveFolder(path);
}

struct ScratchFolder {
  ScratchFolder() {
    std::ranges::replace(path_, L'/', L'\\');
    RemoveTree(path_);  // left by a test that was ended early
  }
  ~ScratchFolder() { RemoveTree(path_); }

  std::wstring Path() const { return path_; }
  std::wstring Path(const std::wstring& name) const { return PathIn(path_, name); }
  // `name` may lead through folders, which are made.
  void Write(const std::wstring& name, const Bytes& bytes = {}) const {
    Disk().MakeFolder(FolderOf(Path(name)));
    WriteWholeFile(Path(name), bytes);
  }
  // Plain ASCII.
  void WriteText(const std::wstring& name, const std::wstring& text) const {
    Write(name, Bytes(text.begin(), text.end()));
  }

 private:
  std::wstring path_ =
      WideOf((std::filesystem::temp_directory_path() / ("MarlitTest" + std::to_string(getpid()))).u16string());
};

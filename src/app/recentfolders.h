// RecentFolders: the voicebanks that were opened before, the newest first, and their menu.
//
// It opens nothing and asks nobody: it tells the folder behind a command and leaves the rest to the editor. In plug-in
// mode it is out of use: the list is then neither read nor changed nor written, and its item in the menu is grey.
#pragma once

#include <windows.h>

#include <list>
#include <optional>
#include <string>

class RecentFolders {
 public:
  explicit RecentFolders(bool inUse) : inUse_(inUse) {}

  void Load();
  void Save() const;

  // The next ShowIn shows in the menu what either has changed.
  void PutFirst(const std::wstring& folder);
  void Remove(const std::wstring& folder);
  // Shows the newest ten in a menu of their own that hangs in the File menu, the first of a window's menu, with the
  // keys 1 to 9 and 0.
  void ShowIn(HMENU windowMenu);

  // The folder that the item of a command stands for; none if there is no such item.
  std::optional<std::wstring> FolderOf(UINT command) const;

 private:
  void ClearMenu(HMENU fileMenu);

  const bool inUse_;
  std::list<std::wstring> folders_;  // each once; all are kept, also those that are not shown
  HMENU menu_ = nullptr;             // the File menu owns it
};

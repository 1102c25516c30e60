#include "app/recentfolders.h"

#include <iterator>

#include "base/registry.h"
#include "base/text.h"
#include "resources/ids.h"

namespace {

// A single "&" would be taken for an access key.
std::wstring DoubleAmpersands(const std::wstring& text) {
  std::wstring doubled;
  for (const wchar_t character : text) doubled.append(character == L'&' ? 2 : 1, character);
  return doubled;
}

void InsertItem(HMENU menu, UINT position, UINT id, UINT state, std::wstring text) {
  MENUITEMINFOW item{};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_ID | MIIM_DATA | MIIM_STATE | MIIM_STRING | MIIM_FTYPE;
  item.fType = MFT_STRING;
  item.fState = state;
  item.wID = id;
  item.dwItemData = position;
  item.dwTypeData = text.data();
  InsertMenuItemW(menu, position, TRUE, &item);
}

void DisableHost(HMENU fileMenu) {
  MENUITEMINFOW host{};
  host.cbSize = sizeof(host);
  host.fMask = MIIM_STATE;
  host.fState = MFS_DISABLED | MFS_GRAYED;
  SetMenuItemInfoW(fileMenu, ID_FILE_RECENT, FALSE, &host);
}

}  // namespace

void RecentFolders::Load() {
  if (inUse_) LoadHistory(kFolderHistoryKey, folders_);
}

void RecentFolders::Save() const {
  if (inUse_) SaveHistory(kFolderHistoryKey, folders_);
}

void RecentFolders::PutFirst(const std::wstring& folder) {
  if (!inUse_) return;
  folders_.remove(folder);
  folders_.push_front(folder);
}

void RecentFolders::Remove(const std::wstring& folder) {
  folders_.remove(folder);
}

void RecentFolders::ShowIn(HMENU windowMenu) {
  const HMENU fileMenu = GetSubMenu(windowMenu, 0);
  if (!fileMenu) return;
  if (!inUse_) {
    DisableHost(fileMenu);
    return;
  }
  ClearMenu(fileMenu);
  if (folders_.empty()) {
    InsertItem(menu_, 0, 0, MFS_DISABLED | MFS_GRAYED, LoadResString(IDS_NONE));
    return;
  }
  UINT position = 0;
  for (const std::wstring& folder : folders_) {
    if (position > ID_RECENT_LAST - ID_RECENT_FIRST) break;
    const int number = static_cast<int>(position) + 1;
    const std::wstring text = FormatText(L"%d %s(&%d)", number, DoubleAmpersands(folder).c_str(), number % 10);
    InsertItem(menu_, position, ID_RECENT_FIRST + position, MFS_ENABLED, text);
    ++position;
  }
}

// There is no menu yet the first time.
void RecentFolders::ClearMenu(HMENU fileMenu) {
  if (menu_) {
    for (int last = GetMenuItemCount(menu_) - 1; last >= 0; --last) {
      RemoveMenu(menu_, static_cast<UINT>(last), MF_BYPOSITION);
    }
    return;
  }
  menu_ = CreateMenu();
  MENUITEMINFOW host{};
  host.cbSize = sizeof(host);
  host.fMask = MIIM_SUBMENU;
  host.hSubMenu = menu_;
  SetMenuItemInfoW(fileMenu, ID_FILE_RECENT, FALSE, &host);
}

std::optional<std::wstring> RecentFolders::FolderOf(UINT command) const {
  MENUITEMINFOW item{};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_DATA;
  if (!GetMenuItemInfoW(menu_, command, FALSE, &item) || item.dwItemData >= folders_.size()) return std::nullopt;
  return *std::next(folders_.begin(), static_cast<std::ptrdiff_t>(item.dwItemData));
}

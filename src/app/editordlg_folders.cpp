// How voicebanks are opened from the running editor, and the folders that were opened before.
#include <windows.h>
#include <shlwapi.h>

#include <iterator>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "base/text.h"
#include "dialogs/folderpicker.h"
#include "dialogs/virtualstoredlg.h"
#include "resources/ids.h"
#include "voicebank/folderaccess.h"
#include "voicebank/inifile.h"
#include "window/messagebox.h"
#include "window/waitcursor.h"

namespace {

// A single "&" would be taken for an access key.
std::wstring DoubleAmpersands(const std::wstring& text) {
  std::wstring doubled;
  for (const wchar_t character : text) doubled.append(character == L'&' ? 2 : 1, character);
  return doubled;
}

void InsertRecentItem(HMENU menu, UINT position, UINT id, UINT state, std::wstring text) {
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

}  // namespace

void CEditorDlg::OnOpen(UINT) {
  if (!ConfirmDiscard()) return;
  std::wstring folder;
  if (BrowseForFolder(Hwnd, folder) == 0) OpenFolderWaiting(folder);
}

void CEditorDlg::OpenFolderWaiting(const std::wstring& path) {
  const WaitCursor waiting;
  ToList().OpenFolder(path.c_str());
  ToList().ShowModifyBar(false, false);
}

// The whole voicebank instead of the syllables that the host handed over; there is no way back to those.
void CEditorDlg::OnEditAllSyllables(UINT) {
  // A plug-in file that names no voicebank must not open the root of the drive.
  if (AllSyllables || FileList->Folder.empty() || !ConfirmDiscard()) return;
  AllSyllables = true;
  const WaitCursor waiting;
  ToList().OpenFolder(FileList->Folder.c_str());
}

// The list waits while this runs. What was shown of a syllable goes: the first of the new ones comes later, or there is
// none.
void CEditorDlg::OnFolderOpened(const wchar_t* folder) {
  OnSetSyllable(L"");
  if (!PluginMode) {
    RecentFolders.remove(folder);
    RecentFolders.push_front(folder);
    BuildRecentMenu();
  }
  Table().SetMaps(SavedMap, CurrentMap);
  Table().DropLayer();
  Table().RepaintNow();
  ShowFrames();
  UpdateState();
  UpdateVoicebankCaption(folder);
  WarnOfRestrictedFolder(folder);
}

// Under a protected folder of the system always, elsewhere only where writing is denied. The first syllable comes when
// the user has closed it.
void CEditorDlg::WarnOfRestrictedFolder(const std::wstring& folder) {
  std::wstring shadow;
  GetVirtualStorePath(folder, shadow);
  if (CanWriteFolder(folder) != 0 && shadow.empty()) return;
  VirtualStoreDlg dialog;
  dialog.Folder = folder;
  dialog.ParentWindow = Hwnd;
  dialog.Run(false);
}

// The name that the voicebank's character.txt gives it, else the folder's.
void CEditorDlg::UpdateVoicebankCaption(const std::wstring& folder) {
  UtauCommon::INIFILE character;
  // Without a folder, as a plug-in file may leave it, this would be a file in the root of the drive.
  if (!folder.empty()) character.Load(folder + L"\\character.txt");
  std::wstring name = character.GetValue(L"name", L"");
  if (name.empty()) name = PathFindFileNameW(folder.c_str());
  SetWindowTextW(Hwnd, (name + L" - " + LoadResString(IDS_NAME)).c_str());
}

void CEditorDlg::OnRecentFolder(UINT id) {
  MENUITEMINFOW item{};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_DATA;
  if (!GetMenuItemInfoW(RecentMenu, id, FALSE, &item) || item.dwItemData >= RecentFolders.size()) return;
  if (!ConfirmDiscard()) return;
  // A copy: the list of folders changes under it.
  const std::wstring path = *std::next(RecentFolders.begin(), static_cast<std::ptrdiff_t>(item.dwItemData));
  if (PathIsDirectoryW(path.c_str())) {
    OpenFolderWaiting(path);
    return;
  }
  ShowMessage(Hwnd, LoadResString(IDS_FOLDERNOTFOUND) + L"\r\n\r\n" + path, MB_ICONWARNING);
  RecentFolders.remove(path);
  BuildRecentMenu();
}

// The newest ten, with the keys 1 to 9 and 0.
void CEditorDlg::BuildRecentMenu() {
  const HMENU fileMenu = GetSubMenu(GetMenu(Hwnd), 0);
  if (!fileMenu) return;
  MENUITEMINFOW host{};
  host.cbSize = sizeof(host);
  if (PluginMode) {
    host.fMask = MIIM_STATE;
    host.fState = MFS_DISABLED | MFS_GRAYED;
    SetMenuItemInfoW(fileMenu, ID_FILE_RECENT, FALSE, &host);
    return;
  }
  if (RecentMenu) {
    for (int last = GetMenuItemCount(RecentMenu) - 1; last >= 0; --last) {
      RemoveMenu(RecentMenu, static_cast<UINT>(last), MF_BYPOSITION);
    }
  } else {
    RecentMenu = CreateMenu();
    host.fMask = MIIM_SUBMENU;
    host.hSubMenu = RecentMenu;
    SetMenuItemInfoW(fileMenu, ID_FILE_RECENT, FALSE, &host);
  }
  if (RecentFolders.empty()) {
    InsertRecentItem(RecentMenu, 0, 0, MFS_DISABLED | MFS_GRAYED, LoadResString(IDS_NONE));
    return;
  }
  UINT position = 0;
  for (const std::wstring& folder : RecentFolders) {
    if (position > ID_RECENT_LAST - ID_RECENT_FIRST) break;
    const int number = static_cast<int>(position) + 1;
    const std::wstring text = FormatText(L"%d %s(&%d)", number, DoubleAmpersands(folder).c_str(), number % 10);
    InsertRecentItem(RecentMenu, position, ID_RECENT_FIRST + position, MFS_ENABLED, text);
    ++position;
  }
}

// Opening voicebanks from the running editor, and showing what is known of an opened one.
#include <windows.h>
#include <shlwapi.h>

#include <optional>

#include "app/editordlg.h"
#include "app/filelistdlg.h"
#include "base/files.h"
#include "base/text.h"
#include "dialogs/folderpicker.h"
#include "dialogs/virtualstoredlg.h"
#include "resources/ids.h"
#include "voicebank/folderaccess.h"
#include "voicebank/inifile.h"
#include "window/messagebox.h"
#include "window/waitcursor.h"

namespace {

void OpenFolderWaiting(const FileListSender& list, const std::wstring& path) {
  const WaitCursor waiting;
  list.OpenFolder(path.c_str());
  list.ShowModifyBar(false, false);
}

// The warning always comes under a protected folder of the system, elsewhere only where writing is denied. The first
// syllable comes when the user has closed it.
void WarnOfRestrictedFolder(HWND owner, const std::wstring& folder) {
  std::wstring shadow;
  GetVirtualStorePath(folder, shadow);
  if (CanWriteFolder(folder) != 0 && shadow.empty()) return;
  VirtualStoreDlg dialog;
  dialog.Folder = folder;
  dialog.ParentWindow = owner;
  dialog.Run(false);
}

// The name that the voicebank's character.txt gives it, else the folder's.
std::wstring VoicebankCaption(const std::wstring& folder) {
  UtauCommon::INIFILE character;
  // Without a folder, as a plug-in file may leave it, this would be a file in the root of the drive.
  if (!folder.empty()) character.Load(folder + L"\\character.txt");
  std::wstring name = character.GetValue(L"name", L"");
  if (name.empty()) name = PathFindFileNameW(folder.c_str());
  return name + L" - " + LoadResString(IDS_NAME);
}

}  // namespace

void CEditorDlg::OnOpen() {
  if (!edits_.ConfirmDiscard()) return;
  std::wstring folder;
  if (BrowseForFolder(Hwnd, folder) == 0) OpenFolderWaiting(ToList(), folder);
}

// Shows the whole voicebank instead of the syllables that the host handed over; there is no way back to those.
void CEditorDlg::OnEditAllSyllables() {
  // A plug-in file that names no voicebank must not open the root of the drive.
  if (AllSyllables || FileList->Folder.empty() || !edits_.ConfirmDiscard()) return;
  AllSyllables = true;
  const WaitCursor waiting;
  ToList().OpenFolder(FileList->Folder.c_str());
}

void CEditorDlg::OnRecentFolder(UINT id) {
  const std::optional<std::wstring> path = recent_.FolderOf(id);
  if (!path || !edits_.ConfirmDiscard()) return;
  if (FolderExists(*path)) {
    OpenFolderWaiting(ToList(), *path);
    return;
  }
  ShowMessage(Hwnd, LoadResString(IDS_FOLDERNOTFOUND) + L"\r\n\r\n" + *path, MB_ICONWARNING);
  recent_.Remove(*path);
  recent_.ShowIn(GetMenu(Hwnd));
}

// The list waits while this runs. The syllable that was shown goes; the first of the new ones, if any, comes later.
void CEditorDlg::OnFolderOpened(const wchar_t* folder) {
  OnSetSyllable(L"");
  recent_.PutFirst(folder);
  recent_.ShowIn(GetMenu(Hwnd));
  Table().SetMaps(map_.Saved(), map_.Map());
  Table().DropLayer();
  Table().RepaintNow();
  frames_.ShowFrames();
  UpdateState();
  SetWindowTextW(Hwnd, VoicebankCaption(folder).c_str());
  WarnOfRestrictedFolder(Hwnd, folder);
}

#include "app/finding.h"

#include "dialogs/finddlg.h"

// The list goes on meanwhile and may have opened another folder, as another program may ask it to.
void FindSyllable(HWND editor, const FileListSender& list, Voicebank& bank, const std::wstring& folder) {
  CFindDlg dialog;
  dialog.ParentWindow = editor;
  dialog.Syllables = &bank.Maps;
  dialog.Folder = folder;
  if (dialog.Run(false) != IDOK || bank.Maps.Facts(dialog.Chosen).Path != dialog.ChosenPath) return;
  list.SelectSyllable(dialog.Chosen);
}

// CFindDlg: the window that finds a syllable by a part of its name, or by what is to be done to it.
//
// It lists the voicebank as it was when the window came. It changes nothing, but maps may be read: only then is it
// known which ones cannot be. Going to what was chosen is its owner's business.
#pragma once

#include <string>
#include <vector>

#include "document/document.h"
#include "resources/ids.h"
#include "voicebank/namesearch.h"
#include "window/templatedialog.h"

class CFindDlg : public CTemplateDlg<CFindDlg, IDD_FIND> {
 public:
  // Set before Run: the syllables, and the folder that they were opened from.
  Document* Syllables = nullptr;
  std::wstring Folder;

  // The chosen syllable, if Run gives IDOK, and its path, which tells whether the same voicebank is open yet.
  int Chosen = -1;
  std::wstring ChosenPath;

  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  LRESULT OnNotify(WPARAM wParam, NMHDR* header) override;
  void OnOK() override;

 private:
  void CollectNames();
  void SetupColumns() const;
  void ReadMaps();
  void ListWhatFits();
  bool IsOfSort(int index, int sort) const;
  std::wstring FolderText(int index) const;
  int SelectedRow() const;

  std::vector<EntryFacts> facts_;  // of all syllables
  NameSearch names_;
  bool inManyFolders_ = false;
  bool areMapsRead_ = false;
  std::vector<int> rows_;  // the syllables that are listed
};

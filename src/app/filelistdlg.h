// CFileListDlg: the window "Files", which lists the syllables of the document.
//
// It runs on the list thread. The other threads reach it through the FLM_ messages alone (messages.h), and its handlers
// run on the list thread. They have the document change maps; the list shows what the document tells, from whichever
// thread. Sources: filelistdlg.cpp is the window, _filling how it gets its syllables, _messages its answers, _maps the
// messages about many maps, _check the run of a check and the steps through its marks.
#pragma once

#include <string>
#include <vector>

#include "app/messages.h"
#include "app/sidewindows.h"
#include "app/syllablerows.h"
#include "app/voicebank.h"
#include "app/waitingchanges.h"
#include "base/handle.h"
#include "resources/ids.h"
#include "window/dialogbase.h"
#include "window/sharedkeys.h"

class CEditorDlg;

class CFileListDlg : public CDlgBase, public DocumentListener {
 public:
  // `argument`: a folder or a wave to begin with; empty for none.
  CFileListDlg(const std::wstring& argument, Voicebank& voicebank);

  // The two dialogs know each other; set before either thread starts.
  CEditorDlg* Editor = nullptr;

  // The folder of the process. Read by the main thread too, which passes this very buffer to FLM_OPENFOLDER.
  std::wstring Folder;

  // Thumbnails and modify bar. The editor's menu has a check mark for the former, and hears when their window goes.
  SideWindows Windows;

  // May be called on any thread.
  void OnChanged(const DocumentChanges& changes) override;

  LRESULT OnDestroy() override;
  LRESULT OnSize(WPARAM kind, int width, int height) override;
  LRESULT OnGetMinMaxInfo(MINMAXINFO* info) override;
  LRESULT OnNotify(WPARAM wParam, NMHDR* header) override;
  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  INT_PTR OnInitDialog(LPARAM lParam) override;
  void OnOK() override;
  void OnCancel() override;
  std::unique_ptr<CDlgBase> CreateInstance() const override;
  int GetTemplateId() const override { return IDD_FILELIST; }

 protected:
  std::wstring TipOf(HWND control) const override;

 private:
  void RememberLayout();
  void EndList();
  void ShowSyllable(int index);
  void ShowChanges(const DocumentChanges& changes) const;

  // Filling.
  bool FillFromArguments();
  void OpenFolder(const wchar_t* path);
  void ShowRows();
  void TellIfNoWaves() const;
  void RefreshMaps();

  // Answers to messages.
  void ServeMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void AnswerOfEntry(UINT message, int index, LPARAM target) const;
  ListState State() const;
  DWORD SaveByMessage(int index, bool deleteLlsm);
  void Save(SaveRecord& record, Document::OutsideChange change);
  bool SaveEntry(int index, SaveRecord& record, Document::OutsideChange change);
  bool ReloadMaps(bool all);
  void SelectSyllable(int index) const;
  void SetCurrentEdited(bool edited, const FrqMap* map);
  void SetEditedByMessage(int index, bool edited);
  void SetHasMap(int index, bool hasMap, bool notify);
  void ForgetMarks(int index);
  bool IsMarked(int index) const;

  // Check.
  void RunCheck(const CheckFrqSettings& settings);
  void FindFailure(FindFailureRecord& record) const;
  void LocateFailure(int index, SampleCount sample) const;
  void ApplyFailure(int index, SampleCount sample, bool apply);

  EditorSender ToEditor() const;

  const std::wstring argument_;
  Voicebank& bank_;
  Document& syllables_;     // bank_'s
  SyllableRows rows_;       // a row for each of syllables_
  WaitingChanges waiting_;  // to be shown on this thread
  int fillCount_ = 0;       // folders opened so far: tells a handler that the syllables were replaced under it
  SharedKeys keys_;         // keys of the editor that act here too
  int MinTrackWidth = 0;
  int MinTrackHeight = 0;
  int leftMargin_ = 0;  // of the list view in the window, kept at the right too
  int topMargin_ = 0;
  EventHandle ReadyEvent;  // set at the end of OnInitDialog
  double DpiScaleX = 1.0;
  double DpiScaleY = 1.0;
  bool PluginAnswer = false;  // the list was opened on a plug-in file, which the host reads back
};

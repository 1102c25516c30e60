// CEditorDlg: the main window, with the frames of one map, its boxes and commands, and the frequency table.
//
// It runs on the main thread and owns no map: it shows the syllable that the list has handed over, edits it through the
// document, and shows what the document tells. Each thing with state of its own is a part that it owns and that does
// not know it: the frames and their boxes, the edit commands, the settings, the recent folders, the group around Play,
// the layout, the folder for scratch files, the names in the menu. Sources: editordlg.cpp is the window from its start
// to its end, _state the commands and what enables them, _syllable what the list hands over and the document tells,
// _folders the opening of voicebanks, _check the windows that look at the whole voicebank, _creating the work after a
// job that makes maps, _options its settings and the resampler, _recovery what is brought back.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "app/commandtable.h"
#include "app/editcommands.h"
#include "app/editorlayout.h"
#include "app/editorsettings.h"
#include "app/framepane.h"
#include "app/historymenu.h"
#include "app/leftedits.h"
#include "app/listening.h"
#include "app/messages.h"
#include "app/previewpanel.h"
#include "app/recentfolders.h"
#include "app/rereading.h"
#include "app/shownmap.h"
#include "app/voicebank.h"
#include "base/handle.h"
#include "base/tempfolder.h"
#include "check/checkrecords.h"
#include "frqctrl/frqctrlmessages.h"
#include "pitch/wavepitches.h"
#include "resampler/createjob.h"
#include "resources/ids.h"
#include "window/dialogbase.h"

class CFileListDlg;

class CEditorDlg : public CDlgBase, public DocumentListener {
 public:
  // `argument`: the argument of the process, empty for none.
  CEditorDlg(const std::wstring& argument, Voicebank& voicebank);

  // The two dialogs know each other; set before either thread starts.
  CFileListDlg* FileList = nullptr;
  // Set when this window is complete. Until then the list may tell of an opened folder and of nothing else.
  EventHandle ReadyEvent;

  // To be called before either window exists.
  void LoadSettings();

  // May be called on any thread.
  void OnChanged(const DocumentChanges& changes) override;

  LRESULT OnDestroy() override;
  LRESULT OnSize(WPARAM kind, int width, int height) override;
  LRESULT OnHScroll(UINT code, int position, HWND scrollBar) override;
  LRESULT OnGetMinMaxInfo(MINMAXINFO* info) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  LRESULT OnMouseWheel(WPARAM keys, int x, int y, int delta) override;
  bool TranslateKey(const MSG& message) override;
  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnMenuSelect(UINT item, int flags, HMENU subMenu, HMENU menu) override;
  void OnOK() override;
  void OnCancel() override;
  std::unique_ptr<CDlgBase> CreateInstance() const override;
  int GetTemplateId() const override { return IDD_EDITOR; }

 private:
  // Start and end.
  bool MayEndSession();
  void OnEndSession(bool ending);
  void KeepSettings();

  // Commands and state.
  static const std::vector<EditorCommand>& Commands();
  template <void (EditCommands::*Command)(const FileListSender&)>
  static void RunEdit(CEditorDlg& editor, UINT id);
  EditorState CollectState() const;
  void UpdateState();
  void RunControlCommand(UINT id, UINT code, LPARAM detail);
  void OnThumbnail();
  void OnCheck();

  // News from the list.
  void OnSetMap(FrqMap* saved, FrqMap* map);
  void OnSetSyllable(const wchar_t* wavePath);
  void OnRefreshMap(bool rebuildFrames);
  void OnFolderOpened(const wchar_t* folder);

  // The resampler and the kind of map that it decides.
  void OnOption();
  void ShareKind();

  // Making maps.
  void OnMakeMaps(UINT id);
  void RunMapJob(UINT command, const CreateFrqJob& job);
  void ReloadEverything(bool evenEdited);

  // Folders.
  void OnOpen();
  void OnRecentFolder(UINT id);
  void OnEditAllSyllables();

  // Edits and maps that are brought back.
  void OnAskOfLeftEdits();
  bool BringBack(LeftEdits edits);
  void OnPutBack();

  FileListSender ToList() const;
  FrqCtrlSender Table() const { return frames_.Table(); }

  const std::wstring argument_;
  Voicebank& bank_;
  Document& syllables_;            // bank_'s
  std::wstring CurrentPath;        // the wave shown now
  ShownMap map_;                   // its map, which comes a little later where the row changes
  CheckFrqSettings CheckSettings;  // the user's last wishes for a check
  EditorState shown_;              // what UpdateState last carried into the menu
  bool isMenuShown_ = false;       // the menu bears what shown_ says
  unsigned updates_ = 0;           // calls of UpdateState that have begun
  std::atomic<bool> inJob_ = false;  // a job is on; what the list reads anew is shown after it
  bool hasLetEditsGo_ = false;       // by the user's answer to whether the session may end
  const bool PluginMode;           // started on a plug-in file of the host
  bool AllSyllables = false;       // in plug-in mode: the whole voicebank was asked for

  WavePitches pitches_;  // those of the wave that is shown
  FramePane frames_;
  EditorSettings settings_;
  RecentFolders recent_;
  EditorLayout layout_;
  TempFolder scratch_;
  PreviewPanel preview_;
  Listening sounds_{bank_, map_, frames_, settings_, preview_};
  HistoryMenu history_;
  EditCommands edits_{bank_, map_, frames_, settings_};
  Rereading readings_{map_, frames_, pitches_};
};

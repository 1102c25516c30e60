// CEditorDlg: the main window, with the frames of one map, its boxes and commands, and the frequency table.
//
// It runs on the main thread and owns no map: it shows and edits those of the syllable that the list has handed over,
// and asks the list for all else through messages.h. What has state of its own is a part that it owns and that does not
// know it: the settings, the recent folders, the group around Play, the layout, the folder for scratch files. Sources:
// editordlg.cpp is the window from its start to its end, _state the commands and what enables them, _syllable what the
// list hands over, _frames the edits of frames, _saving what becomes of edits, _folders how voicebanks are opened,
// _check the windows that look at the whole voicebank, _creating what follows a job that makes maps, _options its
// settings and the resampler.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/commandtable.h"
#include "app/editorlayout.h"
#include "app/editorsettings.h"
#include "app/framelist.h"
#include "app/messages.h"
#include "app/previewpanel.h"
#include "app/recentfolders.h"
#include "app/tempfolder.h"
#include "base/handle.h"
#include "check/checkrecords.h"
#include "frqctrl/frqctrlmessages.h"
#include "frqmap/frqmap.h"
#include "resampler/createjob.h"
#include "window/dialogbase.h"

class CFileListDlg;

class CEditorDlg : public CDlgBase {
 public:
  // `argument`: what the process was given, empty for nothing.
  explicit CEditorDlg(const std::wstring& argument);

  // The two dialogs know each other; set before either thread starts.
  CFileListDlg* FileList = nullptr;
  // Set when this window is complete. Until then the list may tell of an opened folder and of nothing else.
  EventHandle ReadyEvent;

  // Before either window exists.
  void LoadSettings();

  LRESULT OnDestroy() override;
  LRESULT OnSize(WPARAM kind, int width, int height) override;
  LRESULT OnHScroll(UINT code, int position, HWND scrollBar) override;
  LRESULT OnGetMinMaxInfo(MINMAXINFO* info) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  LRESULT OnMouseWheel(WPARAM keys, int x, int y, int delta) override;
  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnMenuSelect(UINT item, int flags, HMENU subMenu, HMENU menu) override;
  void OnOK() override;
  void OnCancel() override;
  std::unique_ptr<CDlgBase> CreateInstance() const override;
  int GetTemplateId() const override;

 private:
  // Start and end.
  bool MayEndSession();
  void OnEndSession(bool ending);
  void KeepSettings();

  // Commands and state.
  static const std::vector<EditorCommand>& Commands();
  EditorState CollectState() const;
  void UpdateState();
  void RunControlCommand(UINT id, UINT code, LPARAM detail);
  void OnThumbnail(UINT id);
  void OnCheck(UINT id);
  void OnModifyAll(UINT id);
  void OnShowFailure(SampleCount first, SampleCount last);

  // What the list tells.
  void OnSetMap(FrqMap* saved, FrqMap* map);
  void OnSetSyllable(const wchar_t* wavePath);
  void OnRefreshMap(bool rebuildFrames);
  void OnFolderOpened(const wchar_t* folder);
  std::wstring WaveInformation() const;

  // Frames.
  FrameList Frames() const;
  void ShowFrames();
  void ShowKey();
  void SendLimits();
  void RefreshFrequencyBox();
  double Clamp(double hz) const;
  double FrequencyOfRow(int row) const;
  void MarkEdited();

  // What the boxes, buttons and the frame list do.
  void OnFrameListSelChange();
  void SelectAllFrames();
  void OnSetFrequency();
  void OnKeyEdited();
  void OnFlatButton(UINT id);
  void ScaleSelection(double factor);
  void InterpolateSelection();
  void KeyFromSelection();
  void OnReloadSelection(UINT id);

  // What the mouse did in the frequency table.
  void OnTableNotification(UINT code, int frame);
  void OnControlFrameChanged(int frame);
  void OnControlKeyChanged();
  void SyncSelectionFromMap();
  void MarkEditedByMouse();
  void ShowKeySoon();
  void OnShowKey();

  // What becomes of edits.
  bool ConfirmDiscard();
  void OnSave(UINT id);
  void OnSaveAll(UINT id);
  void FinishSave(DWORD error);
  void CopyToSaved();
  void ReloadCurrentMap();
  void ShowReloaded();
  void ReloadIfEdited();
  void OnReloadSyllable(UINT id);
  void OnReloadAll(UINT id);
  void OnRemoveAll(UINT id);
  void RemoveMaps();
  void ReloadEverything();

  // The resampler and the kind of map that it decides.
  void OnOption();
  void ShareKind();
  void ShowNewKind();

  // Making maps.
  void OnMakeMaps(UINT id);
  void RunMapJob(const CreateFrqJob& job);

  // Folders.
  void OnOpen();
  void OnRecentFolder(UINT id);
  void OnEditAllSyllables();

  FileListSender ToList() const;
  FrqCtrlSender Table() const;

  // To itself, for a key that is shown when the message at work is done with.
  static constexpr UINT kShowKeyMessage = WM_APP + 0x100;

  const std::wstring Argument;
  std::wstring CurrentPath;        // the wave shown now
  std::wstring MapPath;            // the wave of CurrentMap, which comes later than CurrentPath where the row changes
  FrqMap* CurrentMap = nullptr;    // working map of the current syllable; the list's
  FrqMap* SavedMap = nullptr;      // last saved copy of the same; the list's
  CheckFrqSettings CheckSettings;  // what the user last said of the voicebank
  EditorState Shown;               // what UpdateState last carried into the menu
  unsigned Updates = 0;            // that have begun
  bool ShowingKey = false;         // ShowKey writes the key box: no edit of the user's
  bool KeyIsLate = false;          // a kShowKeyMessage is on its way
  const bool PluginMode;           // started on a plug-in file of the host
  bool AllSyllables = false;       // in plug-in mode: the whole voicebank was asked for

  EditorSettings Settings;
  RecentFolders Recent;
  EditorLayout Layout;
  TempFolder Scratch;
  PreviewPanel Preview;
};

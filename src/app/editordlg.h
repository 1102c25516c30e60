// CEditorDlg: the main window, with the frames of one map, its boxes and commands, and the frequency table.
//
// It runs on the main thread and owns no map: it shows and edits those of the syllable that the list has handed over,
// and asks the list for all else through messages.h. Sources: editordlg.cpp is the window from its start to its end,
// _settings what it keeps in the registry, _state the commands and what enables them, _syllable what the list hands
// over, _layout its sizes, _frames the edits of frames, _saving what becomes of edits, _folders how voicebanks are
// opened, _check the windows that look at the whole voicebank, _creating the commands that make maps, _options the
// resampler, _preview Play, _help the manual and the about box.
#pragma once

#include <list>
#include <memory>
#include <string>
#include <vector>

#include "app/commandtable.h"
#include "app/framelist.h"
#include "app/messages.h"
#include "base/handle.h"
#include "check/checkrecords.h"
#include "frqctrl/frqctrlmessages.h"
#include "frqmap/frqmap.h"
#include "resampler/createjob.h"
#include "resampler/preview.h"
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
  void RememberLayout();
  void PrepareControls();
  void MakeTempFolder();
  void RemoveTempFolder();
  void EndList();
  bool MayEndSession();
  void OnEndSession(bool ending);
  void KeepSettings();
  void SaveSettings();
  void ApplyResamplerKind();

  // Commands and state.
  static const std::vector<EditorCommand>& Commands();
  EditorState CollectState() const;
  void UpdateState();
  bool RunCommand(UINT id);
  void RunControlCommand(UINT id, UINT code, LPARAM detail);
  void OnExit(UINT id);
  void OnZoom(UINT id);
  void OnNeighbour(UINT id);
  void OnSpectrum(UINT id);
  void OnColor(UINT id);
  void OnBrightness(UINT id);
  void OnManual(UINT id);
  void OnAbout(UINT id);
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
  void OnSelectAllFrames(UINT id);
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

  // Options.
  void OnOption(UINT id);
  void ShowNewKind();

  // Making maps.
  void OnInitialize(UINT id);
  void OnInitializeAll(UINT id);
  void OnCreateMissing(UINT id);
  void OnConvert(UINT id);
  bool PrepareCreateFrqJob(CreateFrqJob& job);
  void StartCreateFrqJob(const CreateFrqJob& job);
  void RunCreateFrqDlg(const CreateFrqJob& job);

  // Preview.
  void OnPlayPressed();
  void OnPreviewDone();
  void OnDirectPressed();
  PreviewInput CollectPreviewInput() const;

  // Folders.
  void OnOpen(UINT id);
  void OnRecentFolder(UINT id);
  void OnEditAllSyllables(UINT id);
  void OpenFolderWaiting(const std::wstring& path);
  void BuildRecentMenu();
  void WarnOfRestrictedFolder(const std::wstring& folder);
  void UpdateVoicebankCaption(const std::wstring& folder);

  FileListSender ToList() const;
  FrqCtrlSender Table() const;

  // To itself, for a key that is shown when the message at work is done with.
  static constexpr UINT kShowKeyMessage = WM_APP + 0x100;

  // Of the trackbar for the pitch: no change. A step is a semitone.
  static constexpr int kPitchMiddle = 12;

  const std::wstring Argument;
  std::wstring CurrentPath;      // the wave shown now
  std::wstring MapPath;          // the wave of CurrentMap, which comes later than CurrentPath where the row changes
  FrqMap* CurrentMap = nullptr;  // working map of the current syllable; the list's
  FrqMap* SavedMap = nullptr;    // last saved copy of the same; the list's
  std::wstring ResamplerPath;
  bool ResamplerChanged = false;   // since the start, so that it must be written back
  ::FrqType FrqType = FrqTypeFrq;  // the kind at work, which the resampler decides
  DWORD MaxParallelCount = 1;      // most creations that run at once
  bool AutoDeleteLlsm = true;      // delete a syllable's .llsm file when its map is saved
  int ViewMode = 0;                // the control's start values; read back from it only at the end
  int Brightness = 0;
  int Color = 0;
  int MinTrackWidth = 0;  // the size of the window when it was made is its smallest
  int MinTrackHeight = 0;
  int BottomMargin = 0;            // from the frame list to the bottom of the window
  CheckFrqSettings CheckSettings;  // what the user last said of the voicebank
  EditorState Shown;               // what UpdateState last carried into the menu
  unsigned Updates = 0;            // that have begun
  bool ShowingKey = false;         // ShowKey writes the key box: no edit of the user's
  bool KeyIsLate = false;          // a kShowKeyMessage is on its way
  bool PluginMode = false;         // started on a plug-in file of the host
  bool AllSyllables = false;       // in plug-in mode: the whole voicebank was asked for
  std::wstring TempFolder;         // private to this process, for scratch files
  CPreview Preview;
  std::list<std::wstring> RecentFolders;  // the newest first
  HMENU RecentMenu = nullptr;             // hangs in the File menu, which owns it
};

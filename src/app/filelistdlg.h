// CFileListDlg: the window "Files", which lists the syllables of a voicebank and owns all of their maps.
//
// It runs on the list thread. The other threads reach it through the FLM_ messages alone (messages.h); its handlers,
// and so every change of an entry, run on the list thread.
//
// What it lists it has from a VoicebankScan; the rows are SyllableRows, the windows beside it SideWindows. Sources:
// filelistdlg.cpp is the window, _filling how it is filled, _states the states of entries, _messages what it answers,
// _maps the work on maps that a message asks for, _thumbnails what the thumbnails need of the maps, _check the run of a
// check, _failures the steps through its marks.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

#include "app/messages.h"
#include "app/sidewindows.h"
#include "app/syllable.h"
#include "app/syllablerows.h"
#include "base/handle.h"
#include "frqmap/mrqstore.h"
#include "resources/ids.h"
#include "window/templatedialog.h"

class CEditorDlg;
class CheckLibrary;

class CFileListDlg : public CTemplateDlg<CFileListDlg, IDD_FILELIST> {
 public:
  // `argument`: a folder or a wave to begin with; empty for none.
  explicit CFileListDlg(const std::wstring& argument = {});

  // The two dialogs know each other; set before either thread starts.
  CEditorDlg* Editor = nullptr;

  // The working kind. The main thread writes it when the resampler changes, which takes effect with the next
  // RefreshMaps.
  std::atomic<::FrqType> FrqType = FrqTypeFrq;

  // The folder of the process. Read by the main thread too, which passes this very buffer to FLM_OPENFOLDER.
  std::wstring Folder;

  // The entries of desc.mrq files, for the kind that keeps its maps there. It has locks of its own: the main thread
  // uses it as well.
  MrqStore Store;

  // Held by the main thread while it reads the shown map from its file again, and by the list while it copies maps for
  // the thumbnails: that may come at any time, also then. Nothing is sent and nothing else is waited for under it.
  std::mutex ReloadLock;

  // Thumbnails and modify bar. The editor's menu has a check mark for the former, and hears when their window goes.
  SideWindows Windows;

  // The main thread writes its MapKind, together with FrqType.
  CThumbnailDlg& Thumbnail = Windows.Thumbnail;

  // SideWindows::EndThreads, whose conditions hold here too.
  void EndThreads() { Windows.EndThreads(); }

  LRESULT OnDestroy() override;
  LRESULT OnSize(WPARAM kind, int width, int height) override;
  LRESULT OnGetMinMaxInfo(MINMAXINFO* info) override;
  LRESULT OnNotify(WPARAM wParam, NMHDR* header) override;
  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  INT_PTR OnInitDialog(LPARAM lParam) override;
  void OnOK() override;
  void OnCancel() override;

 private:
  void RememberLayout();

  // Filling.
  bool FillFromArguments();
  void OpenFolder(const wchar_t* path);
  void ShowRows();

  // State of entries. An index that is none is ignored.
  SyllableEntry* EntryAt(int index);
  void SetEdited(int index, bool edited, bool notify);
  void SetHasMap(int index, bool hasMap, bool notify);
  void SetMarkedCell(int index, bool marked);
  void RefreshMaps();
  void EnsureLoaded(SyllableEntry& entry);
  void ShowSyllable(int index);
  int LoadEntry(SyllableEntry& entry);
  void RereadMap(SyllableEntry& entry);
  int SaveEntry(SyllableEntry& entry, int index, bool deleteLlsm, DWORD& error);

  // Answers to messages.
  void ServeMessage(UINT message, WPARAM wParam, LPARAM lParam);
  DWORD SaveCurrent(bool deleteLlsm);
  DWORD SaveAll(bool deleteLlsm);
  bool ReloadMaps(bool all);
  void SelectSyllable(int index);
  void SetEditedByMessage(int index, bool edited);
  void SetCurrentEdited(bool edited, const FrqMap* map);
  void AnswerOfEntry(UINT message, int index, LPARAM target);
  bool IsFailed(int index);
  int CountMaps() const;

  EditorSender ToEditor() const;

  // Check.
  void RunCheck(const CheckFrqSettings& settings);
  int CheckEntries(const CheckLibrary& library, const CheckFrqSettings& settings);
  void FindFailure(FindFailureRecord& record);
  void LocateFailure(int index, SampleCount sample);
  void ApplyFailure(int index, SampleCount sample, bool apply);
  bool ApplyToEntry(int index, SampleCount sample, bool apply, bool notify);

  // For the thumbnails.
  void ListMaps(std::vector<ListedMap>& maps) const;
  void CopyMaps(const MapCopy* copies, std::size_t count);
  void TakeMap(const ReadMapRecord& record);

  std::wstring Argument;
  std::vector<SyllableEntry> Entries;  // in the order of the scan; no entry moves while its maps are shown
  SyllableRows Rows;                   // of Entries, by index
  int FillCount = 0;                   // folders opened so far: tells a handler that the entries were replaced under it
  int CurrentIndex = -1;               // the syllable shown in the editor
  int MinTrackWidth = 0;
  int MinTrackHeight = 0;
  int LeftMargin = 0;  // of the list view in the window, kept at the right too
  int TopMargin = 0;
  EventHandle ReadyEvent;  // set at the end of OnInitDialog
  double DpiScaleX = 1.0;
  double DpiScaleY = 1.0;
  int SavedCount = 0;         // maps saved since the start
  bool PluginAnswer = false;  // the list was opened on a plug-in file, which the host reads back
};

// CFileListDlg: the window "Files", which lists the syllables of a voicebank and owns all of their maps.
//
// It runs on the list thread. The other threads reach it through the FLM_ messages alone (messages.h); its handlers,
// and so every change of an entry, run on the list thread. Sources: filelistdlg.cpp is the window, _scan how it is
// filled, _view the rows and columns, _messages what it answers, _maps the work on maps that a message asks for,
// _thumbnails the window of thumbnails, _check the run of a check, _failures the steps through its
// marks.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "app/messages.h"
#include "app/syllable.h"
#include "base/handle.h"
#include "dialogs/modifydlg.h"
#include "dialogs/thumbnaildlg.h"
#include "frqmap/mrqstore.h"
#include "voicebank/folderlisting.h"
#include "window/dialogbase.h"

class CEditorDlg;
class CheckLibrary;

class CFileListDlg : public CDlgBase {
 public:
  // `argument`: a folder or a wave to begin with; empty for none.
  explicit CFileListDlg(const std::wstring& argument);

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

  // Runs on a thread of its own while it is open. The main thread writes its MapKind, together with FrqType.
  CThumbnailDlg Thumbnail;

  // Ends what runs on threads of its own. On the main thread, when the windows of the list and the editor have gone: a
  // send to either comes back at once then, so that no thread is waited for that waits itself.
  void EndThreads();

  LRESULT OnDestroy() override;
  LRESULT OnSize(WPARAM kind, int width, int height) override;
  LRESULT OnGetMinMaxInfo(MINMAXINFO* info) override;
  LRESULT OnNotify(WPARAM wParam, NMHDR* header) override;
  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  INT_PTR OnInitDialog(LPARAM lParam) override;
  void OnOK() override;
  void OnCancel() override;
  std::unique_ptr<CDlgBase> CreateInstance() const override;
  int GetTemplateId() const override;

 private:
  // Start.
  bool FillFromArguments();
  void FillFromPluginFile(const std::wstring& path);
  void RememberLayout();
  void WaitForEditorWindow() const;
  void PlaceBesideEditor();

  // Filling.
  int ScanFolder(const std::wstring& folder, bool withSubfolders);
  int ScanFolderWaiting(const std::wstring& folder, bool withSubfolders);
  void AddSyllable(const std::wstring& path, ListedFolders& listed);
  void OpenFolder(const wchar_t* path);
  void SortEntries();

  // Rows and columns.
  void SetupColumns();
  void UpdateColumns();
  void InsertColumn(int position, int id, const std::wstring& title, int width, int format);
  int ColumnIndexOf(int columnId) const;
  void SortAndShow();
  void InsertRow(int index);
  void FillColumn(int columnId, bool SyllableEntry::*marked);
  void SetCell(int row, int columnId, bool marked);
  void SetMarkedCell(int index, bool marked);
  void UpdateLlsmCell(int index);
  void SelectRow(int row);
  int SelectedRow() const;
  int RowCount() const;
  int IndexOfRow(int row) const;

  // State of entries. An index that is none is ignored.
  SyllableEntry* EntryAt(int index);
  void SetEdited(int index, bool edited, bool notify);
  void SetHasMap(int index, bool hasMap, bool notify);
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
  void SelectNeighbour(bool previous);
  void SelectSyllable(int index);
  void SetEditedByMessage(int index, bool edited);
  void SetCurrentEdited(bool edited, const FrqMap* map);
  void AnswerOfEntry(UINT message, int index, LPARAM target);
  bool IsEdited(int index);
  bool IsAnyEdited() const;
  bool IsFailed(int index);
  bool HasMap(int index);
  int CountMaps() const;

  HWND ListView() const { return View; }
  EditorSender ToEditor() const;
  ThumbnailSender ToThumbnail() const { return ThumbnailSender(Thumbnail.Hwnd); }

  // Check.
  void RunCheck(const CheckFrqSettings& settings);
  int CheckEntries(const CheckLibrary& library, const CheckFrqSettings& settings);
  void FindFailure(FindFailureRecord& record);
  void LocateFailure(int index, SampleCount sample);
  void ApplyFailure(int index, SampleCount sample, bool apply);
  bool ApplyToEntry(int index, SampleCount sample, bool apply, bool notify);
  void ShowModifyBar(bool show);
  static unsigned WINAPI ModifyBarThread(void* list);

  // Thumbnails.
  void ShowThumbnail(bool show);
  static unsigned WINAPI ThumbnailThread(void* list);
  void RunThumbnail();
  void StartWindow(unsigned(WINAPI* thread)(void*), HANDLE ready);
  void ListMaps(std::vector<ListedMap>& maps) const;
  void CopyMaps(const MapCopy* copies, std::size_t count);
  void TakeMap(const ReadMapRecord& record);

  std::wstring Argument;
  std::vector<SyllableEntry> Entries;  // ordered by SortEntries; no entry moves while its maps are shown
  int FillCount = 0;                   // folders opened so far: tells a handler that the entries were replaced under it
  int CurrentIndex = -1;               // the syllable shown in the editor
  HWND View = nullptr;                 // the list view, which is looked up once: each cell is written through it
  int MinTrackWidth = 0;
  int MinTrackHeight = 0;
  int LeftMargin = 0;  // of the list view in the window, kept at the right too
  int TopMargin = 0;
  CModifyFailureDlg ModifyBar;        // runs on a thread of its own while it is open
  std::vector<ThreadHandle> Threads;  // begun by the list; the ended ones go when another one begins
  EventHandle ReadyEvent;             // set at the end of OnInitDialog
  double DpiScaleX = 1.0;
  double DpiScaleY = 1.0;
  int SavedCount = 0;                // maps saved since the start
  bool PluginAnswer = false;         // the list was opened on a plug-in file, which the host reads back
  std::set<std::wstring> SeenPaths;  // waves already added; lives during a fill only
};

// CCreateFrqDlg: the progress dialog that owns a job of making or converting maps.
//
// It runs modally on the editor's thread and starts a fixed number of workers, which draw items from one list through
// one counter; a worker makes its map by a run of the resampler, or by conversion, and then has the list forget what it
// held of the syllable. No error of an item is shown here: what became of each is summed up when the job has ended. The
// user can abort, which lets the runs that are under way come to their end: a resampler is never killed.
//
// The workers share the list of items and the settings of the job, which are fixed before the first worker starts
// and stay until the last has gone; nextIndex_ and leavingCount_, which nothing but an atomic increment touches;
// Aborting, an atomic flag (a worker that sees it late takes one item more, which is harmless); the store, which has
// locks of its own; and the results, each of which is the worker's that has drawn its item. All else belongs to the
// dialog's thread, and the workers reach it by posted messages alone.
#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "base/handle.h"
#include "frqmap/mrqstore.h"
#include "resampler/createjob.h"
#include "resampler/jobsum.h"
#include "resampler/mapmaking.h"
#include "resources/ids.h"
#include "window/templatedialog.h"

enum CreateFrqMessage : UINT {
  WM_CREATEFRQ_STARTED = 32769,      // index of an item, -: a worker has taken it
  WM_CREATEFRQ_WORKER_DONE = 32770,  // -, thread: a worker is leaving
};

class CCreateFrqDlg : public CTemplateDlg<CCreateFrqDlg, IDD_CREATEFRQ> {
 public:
  // The workers are as many as the processors.
  CCreateFrqDlg();
  CCreateFrqDlg(CreateMode mode, HWND editorWindow, HWND listWindow, const std::wstring& resamplerPath,
                int workerCount);

  // The job, to be filled in before the dialog runs.
  CreateMode Mode = CreateMode::All;
  HWND EditorWindow = nullptr;
  HWND ListWindow = nullptr;
  std::wstring ResamplerPath;
  ::FrqType FrqType = FrqTypeFrq;  // the kind that is made; a conversion's source
  bool Vs4uUseFrq = true;
  int Vs4uOffset = 24;
  int Vs4uRange = 84;
  bool InitBoth = true;
  int WorkerCount = 0;       // the most; once they are started, how many did
  int CurrentIndex = 0;      // the syllable that a job for one is about
  std::wstring CurrentWave;  // its wave
  ::FrqType TargetType = FrqTypeFrq;
  bool MakesListedKind = true;  // false: the list keeps what it holds of a syllable, edits too

  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  INT_PTR OnInitDialog(LPARAM lParam) override;
  // Does nothing: Enter must not end a dialog whose workers run.
  void OnOK() override {}
  // The end of the job comes here too; nothing else closes the dialog.
  void OnCancel() override;

  // The syllables whose maps the job had begun to make when it ended, as the list numbers them. A map whose making
  // failed has gone, and nobody was told.
  std::vector<int> BegunSyllables() const;
  // The ended job's sum, and whether the file that holds the maps of a folder could be tidied up.
  JobSum Sum() const { return SumOf(workList_, results_); }
  bool IsCompact() const { return compact_; }

 private:
  // Gives the number of items.
  int BuildWorkList();
  void AddFromList();
  bool HasMap(const std::wstring& wave, ::FrqType kind, class ListedFolders& listed) const;
  void StartWorkers();
  void OnStarted(std::size_t index);
  void OnWorkerDone();
  void LookForMaps();

  // These run on a worker's thread.
  static unsigned WINAPI WorkerProc(void* self);
  void WorkThrough();
  ItemResult Work(const WorkItem& item);
  ItemResult Create(const std::wstring& wave);
  ItemResult Convert(const std::wstring& wave);

  std::unique_ptr<ThreadHandle[]> workers_;  // null: no worker can be running
  std::atomic<int> leavingCount_ = 0;        // workers that have nothing left to do
  std::atomic<bool> aborting_ = false;       // set by the user, read by the workers
  std::vector<WorkItem> workList_;
  std::vector<ItemResult> results_;  // one for each item
  std::atomic<int> nextIndex_ = -1;  // the item drawn last
  bool compact_ = true;
  int startedCount_ = 0;            // items that the user has been told of
  MrqStore Store;                   // the dialog's own, not the list's
};

// CheckProgress: how far a check is, and the window that shows it and can abort it.
//
// The check keeps its own thread and the editor's busy, so that the window has a third one. It comes when a check has
// taken a second: most are over before. It has no owner, since the owner's thread would have to answer for it.
#pragma once

#include <windows.h>

#include <atomic>
#include <mutex>
#include <string>

#include "base/handle.h"
#include "resources/ids.h"
#include "window/templatedialog.h"

class CheckProgress {
 public:
  // `over` is the window in whose middle it comes. `count` maps are to be looked at.
  CheckProgress(HWND over, int count);
  // The window has gone afterwards. Sends of other threads to this one are answered meanwhile.
  ~CheckProgress();
  CheckProgress(const CheckProgress&) = delete;
  CheckProgress& operator=(const CheckProgress&) = delete;

  int Count() const { return count_; }
  // Goes on to the next map; false once the user has aborted.
  bool Begin(const std::wstring& wavePath);
  // Whether the window has been there, and with it the need to keep others painted.
  bool IsShown() const { return isShown_; }

 private:
  friend class CCheckProgressDlg;

  struct State {
    int Begun = 0;
    std::wstring WavePath = {};
  };
  State Present() const;
  // About how long the check still takes [s].
  int SecondsLeft(int begun) const;
  static unsigned WINAPI ThreadProc(void* self);

  const HWND over_;
  const int count_;
  const ULONGLONG start_ = GetTickCount64();
  mutable std::mutex mutex_;
  State state_;  // guarded
  std::atomic<bool> isShown_ = false;
  std::atomic<bool> isAborted_ = false;
  const EventHandle ended_;
  ThreadHandle thread_;  // none: there is no window
};

class CCheckProgressDlg : public CTemplateDlg<CCheckProgressDlg, IDD_CHECKPROGRESS> {
 public:
  // Set before Run.
  CheckProgress* Progress = nullptr;

  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  INT_PTR OnInitDialog(LPARAM lParam) override;
  // Does nothing: Enter ends no check.
  void OnOK() override {}
  // Ends the check after the map that is being looked at.
  void OnCancel() override;

 private:
  void MoveOver(HWND window) const;
  void Update();

  HWND before_ = nullptr;  // the window that was active
};

// SoundRun: something that is listened to: made and played on a thread of its own, for each command anew.
//
// The thread works with copies: it looks at no map and no window. The thread and the object both own what they share,
// since a resampler may still be running when the window has gone. A run begins when the one before it has come to its
// end, so that one at a time is at work in the folder.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "base/handle.h"
#include "resampler/listensound.h"

class SoundRun {
 public:
  SoundRun() = default;
  // Stops, and gives the thread some time to go.
  ~SoundRun() { StopAndWait(); }
  SoundRun(const SoundRun&) = delete;
  SoundRun& operator=(const SoundRun&) = delete;

  // Stops what runs. EDM_LISTENING comes to `window` when a file begins and at the end, whatever happens.
  void Start(HWND window, const std::wstring& folder, ListenInput input);
  // The sound ends at once; a resampler that runs is let come to its end.
  void Stop() const;
  // Waits some ten seconds at most.
  void StopAndWait();

  // True between a start and the end, or the stop.
  bool IsRunning() const;
  // The number of the file that sounds; -1 before the first one, and for none.
  int Sounding() const;
  // To be asked of a run that is not running.
  SoundEnd End() const;

 private:
  struct Shared;
  struct Begun;
  static unsigned WINAPI ThreadProc(void* argument);

  std::shared_ptr<Shared> state_;  // of the last run; null before the first one
  ThreadHandle thread_;
};

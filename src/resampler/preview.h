// CPreview: a syllable rendered by the resampler with its map as it stands, and played.
//
// The wave is copied into a private folder, its map is saved beside the copy, and the resampler runs there, so that
// nothing of the voicebank is touched. All of it happens on a thread of its own for each press of Play.
//
// The thread works with copies that were made when the user pressed: it looks at no map and no window, and touches
// nothing of this object but the state of the last render, which nobody else reads. The thread and the object both own
// what they share, since a resampler may still be running when the window has gone.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "base/handle.h"
#include "resampler/rendering.h"

class CPreview {
 public:
  CPreview();
  // Stops, and gives the thread some time to go.
  ~CPreview();
  CPreview(const CPreview&) = delete;
  CPreview& operator=(const CPreview&) = delete;

  // The private folder for scratch files, or empty: there is nothing to clear then.
  void SetFolder(const std::wstring& folder);
  // Deletes the files in the folder. Files in use stay, and so do folders.
  void ClearFolder() const;

  // True between a press and the end that is posted.
  bool IsRunning() const { return running_; }
  // WM_PREVIEW_DONE comes to the window, whatever happens.
  void Start(PreviewInput input);
  // The sound ends soon. A resampler that runs is let come to its end, and its sound ends as soon as it begins.
  void Stop();
  // Whether the render that was begun last has come to its end, which it posts then. Any program may post that too.
  bool HasEnded() const;
  // How the last render came to its end.
  PreviewEnd End() const;
  // To be called when the end has come.
  void Finish();
  // Stops, and waits some ten seconds at most.
  void StopAndWait();

 private:
  struct Shared;
  static unsigned WINAPI ThreadProc(void* argument);

  bool running_ = false;
  ThreadHandle thread_;
  std::shared_ptr<Shared> state_;
};

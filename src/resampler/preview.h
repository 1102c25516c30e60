// CPreview: a syllable rendered by the resampler with its map as it stands, and played.
//
// The wave is copied into a private folder, its map is saved beside the copy, and the resampler runs there, so that
// nothing of the voicebank is touched. All of it happens on a thread of its own for each press of Play.
//
// What the thread works with was copied when the user pressed: it looks at no map and no window, and touches nothing of
// this object but the state of the last render, which nobody else reads. The thread and the object both own what they
// share, since a resampler may still be running when the window has gone.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "base/handle.h"
#include "frqmap/frqmap.h"
#include "frqmap/mrqfile.h"
#include "resampler/commandline.h"

// What went wrong, and what went well, in the last preview, with paths and the command line. No window shows it.
extern std::wstring PreviewLogText;

// What of it the user is told.
enum class PreviewEnd {
  Well,         // or stopped
  NotPrepared,  // the wave or its map could not be put into the folder
  NotStarted,   // the resampler could not be started
  Silent,       // it ran and rendered nothing
  NotPlayed,    // the system does not play it
};

struct PreviewInput {
  std::wstring WavePath;
  ::FrqType FrqType = FrqTypeFrq;
  FrqMap Map;
  std::optional<MrqEntry> Entry;  // of the kind that keeps its maps in desc.mrq: what the list's store holds, which
                                  // is not the edits; users know to save before they listen
  RenderSettings Settings;
  std::wstring ResamplerPath;
  HWND Window = nullptr;  // owns what the system may have to show, and is posted the end
};

class CPreview {
 public:
  CPreview();
  // Stops, and gives the thread some time to go.
  ~CPreview();
  CPreview(const CPreview&) = delete;
  CPreview& operator=(const CPreview&) = delete;

  // The private folder for scratch files, or empty: there is nothing to clear then.
  void SetFolder(const std::wstring& folder);
  // Deletes the files in the folder. What is in use stays, and so do folders.
  void ClearFolder() const;

  // Between a press and the end that is posted.
  bool IsRunning() const { return Running; }
  // WM_PREVIEW_DONE comes to the window, whatever happens.
  void Start(PreviewInput input);
  // The sound ends soon. A resampler that runs is let come to its end, and its sound ends as soon as it begins.
  void Stop();
  // Whether the render that was begun last has come to its end, which it posts then. Any program may post that too.
  bool HasEnded() const;
  // How it came to its end.
  PreviewEnd End() const;
  // The end has come.
  void Finish();
  // Stops, and waits some ten seconds at most.
  void StopAndWait();

 private:
  struct Shared;
  static unsigned WINAPI ThreadProc(void* argument);

  bool Running = false;
  ThreadHandle Thread;
  std::shared_ptr<Shared> State;
};

// Renders a whole wave, at its average pitch [Hz] shifted by semitones, with the map beside it. 0, or -1 if the wave
// cannot be read or the resampler cannot be started; whether it rendered anything, the file shows. `commandLine` is
// what it was called with.
int RunResamplerRender(HWND owner, std::wstring& commandLine, const std::wstring& resamplerPath,
                       const std::wstring& inputWave, double frequency, const RenderSettings& settings,
                       const std::wstring& outputWave);

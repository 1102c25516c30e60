// Listening: the commands that let the user hear the recording, the curve or both, and compare the saved curve with the
// edited one. Play is no part of it: what it does is the preview's (previewpanel.h).
//
// It runs on the main thread. The sound is the stretch of the selected frames, or the whole where none or one is
// selected, as it stands when the command comes; a sound that is on ends then.
#pragma once

#include <windows.h>

#include <string>

#include "app/editorsettings.h"
#include "app/framepane.h"
#include "app/previewpanel.h"
#include "app/shownmap.h"
#include "app/voicebank.h"
#include "base/tempfolder.h"
#include "resampler/soundrun.h"

class Listening {
 public:
  Listening(Voicebank& bank, const ShownMap& map, const FramePane& frames, const EditorSettings& settings,
            PreviewPanel& preview)
      : bank_(bank), map_(map), frames_(frames), settings_(settings), preview_(preview) {}

  // The editor's window, once it has come, is where words stand.
  void Attach(HWND editor) { editor_ = editor; }
  // Ends what sounds, and leaves nothing behind.
  void Close();

  // `command`: ID_LISTEN_RECORDING or one of those that follow. Play's own sound ends too.
  void OnCommand(UINT command, const std::wstring& wavePath);
  void Stop();
  bool IsSounding() const { return run_.IsRunning(); }
  // Space ends what sounds, wherever the focus is, and does nothing else as long as it is held. True if the key was
  // taken; without a sound it is not.
  bool TakeKey(const MSG& message);
  // Something has begun or ended, or somebody else has posted the number.
  void OnTold();

 private:
  void Start(UINT command, const std::wstring& wavePath);
  // The part of no frames stands for the whole.
  FrameRange SelectedPart() const;
  // Empty if the two can be compared.
  std::wstring WhyNotComparable(const ListenInput& input) const;
  std::wstring TextOfEnd() const;
  std::wstring TextOfNoCurve() const;
  // Tells nothing if the text is empty.
  void Tell(const std::wstring& text) const;

  Voicebank& bank_;
  const ShownMap& map_;
  const FramePane& frames_;
  const EditorSettings& settings_;
  PreviewPanel& preview_;
  HWND editor_ = nullptr;
  TempFolder folder_;  // made by the first command
  SoundRun run_;
  UINT command_ = 0;        // the last one given
  std::wstring resampler_;  // the resampler for it
  bool isEndNews_ = false;  // the end of the run has not been dealt with
  int told_ = -1;           // the sound of a comparison that has been told of
  bool isSpaceHeld_ = false;
};

// Listening: the commands that let the user hear the recording, the curve or both, and compare the saved curve with the
// edited one. Play is no part of it: what it does is the preview's (previewpanel.h).
//
// It runs on the main thread. What is heard is the stretch of the selected frames, or the whole where none or one is
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

  // The editor's window when it has come; where words stand.
  void Attach(HWND editor) { editor_ = editor; }
  // Ends what sounds, and leaves nothing behind.
  void Close();

  // One of ID_LISTEN_RECORDING and the following. Play's own sound ends too.
  void OnCommand(UINT command, const std::wstring& wavePath);
  void Stop();
  bool IsSounding() const { return run_.IsRunning(); }
  // Space ends what sounds, wherever the focus is, and does nothing else as long as it is held; true if it is dealt
  // with. Without a sound it is anybody's.
  bool TakeKey(const MSG& message);
  // Something has begun or ended, or somebody else has posted the number.
  void OnTold();

 private:
  void Start(UINT command, const std::wstring& wavePath);
  // Of no frames: the whole.
  FrameRange SelectedPart() const;
  // Empty where it can be done.
  std::wstring WhyNotComparable(const ListenInput& input) const;
  std::wstring TextOfEnd() const;
  std::wstring TextOfNoCurve() const;
  // Nothing for an empty text.
  void Tell(const std::wstring& text) const;

  Voicebank& bank_;
  const ShownMap& map_;
  const FramePane& frames_;
  const EditorSettings& settings_;
  PreviewPanel& preview_;
  HWND editor_ = nullptr;
  TempFolder folder_;  // made by the first command
  SoundRun run_;
  UINT command_ = 0;        // that was given last
  std::wstring resampler_;  // of that one
  bool isEndNews_ = false;  // the end of the run has not been dealt with
  int told_ = -1;           // which one of a comparison has been told of
  bool isSpaceHeld_ = false;
};

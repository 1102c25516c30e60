// WavePitches: the pitches of the recording that is shown, for the pencil of the table and for the reading of frames.
//
// It opens the wave, which SoundPitches does not, when the first one needs it, and anew when the file is another one by
// time and size. One thread uses it.
#pragma once

#include <optional>
#include <string>

#include "base/filesystem.h"
#include "pitch/soundpitches.h"

class WavePitches {
 public:
  void SetWave(const std::wstring& path);

  // The pitches for a map with this hop and so many frames. Null where the wave cannot be read or the map cannot be of
  // it. The pointer holds until the next call. The file is looked at, and read if it is not known: tens of milliseconds
  // for each second.
  SoundPitches* Load(SampleCount hop, SampleCount frameCount);
  // The same pitches as they were loaded last; null where they were not.
  SoundPitches* Loaded(SampleCount hop, SampleCount frameCount);

 private:
  void Read(SampleCount hop);

  std::wstring path_;
  std::optional<FileFacts> file_;      // of the wave when it was read, or could not be read
  SampleCount hop_ = 0;                // the one that was asked for then
  std::optional<SoundPitches> sound_;  // none of a wave that cannot be read
};

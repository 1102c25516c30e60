// The sounds of a syllable as wave files: its recording, its curve as a tone, both at a time, or the renderings of the
// saved curve and of the edited one. They are made apart from the thread that plays them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "resampler/curvetone.h"
#include "resampler/rendering.h"

enum class ListenTo { Recording, Curve, Both, Compare };

struct ListenInput {
  ListenTo What = ListenTo::Recording;
  FrameRange Part;        // no frames: the whole
  PreviewInput Syllable;  // its wave and the map as it stands; the rest serves a comparison
  FrqMap Saved;           // for a comparison
};

enum class SoundEnd {
  Well,         // played, or stopped
  NoWave,       // there is no recording that can be read
  Behind,       // the recording ends before the part
  NoCurve,      // no frame of the part has a pitch
  NotPrepared,  // this and what follows: as PreviewEnd has them
  NotStarted,
  Silent,
  NotPlayed,
};

// Makes the files in the folder and gives them in the order in which they are to be heard; none where `end` tells why.
// Both at a time are the recording on the left and the tone on the right. A comparison begins with the saved curve and
// asks between the two whether it has been stopped.
std::vector<std::wstring> MakeSounds(const std::wstring& folder, const ListenInput& input,
                                     const std::function<bool()>& isStopped, SoundEnd& end);

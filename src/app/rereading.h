// Rereading: the command that reads the selected frames anew from the recording, and with each press on the same frames
// offers the next reading.
//
// It runs on the main thread.
#pragma once

#include <string>
#include <vector>

#include "app/framepane.h"
#include "app/shownmap.h"
#include "pitch/readings.h"
#include "pitch/wavepitches.h"

class Rereading {
 public:
  Rereading(ShownMap& map, FramePane& frames, WavePitches& pitches) : map_(map), frames_(frames), pitches_(pitches) {}

  // Reads the selected frames, or all where none is. Gives what is to be told of it.
  std::wstring Read();

 private:
  // A reading and the map as it left it. If anything else is done since, the next reading is the first again.
  struct Done {
    Reading Which;
    int Index;
    std::vector<int> Rows;
    std::vector<double> Map;
  };

  bool IsSame(const Done& done, const std::vector<int>& rows) const;

  ShownMap& map_;
  FramePane& frames_;
  WavePitches& pitches_;
  std::optional<Done> last_;
};

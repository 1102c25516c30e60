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

  // All frames where none is selected. What is to be told of it.
  std::wstring Read();

 private:
  // A reading as the map was left by it. Whatever else is done since makes the next one the first again.
  struct Done {
    Reading which;
    int index;
    std::vector<int> rows;
    std::vector<double> map;
  };

  bool IsSame(const Done& done, const std::vector<int>& rows) const;

  ShownMap& map_;
  FramePane& frames_;
  WavePitches& pitches_;
  std::optional<Done> last_;
};

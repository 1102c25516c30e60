// The facts of the syllables of a bank: found once, and then written as a table, as lines of JSON or as a page.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/sample.h"
#include "frqmap/frqmap.h"
#include "frqmap/frqtype.h"
#include "frqmap/mapfault.h"

// The facts of one map that is there.
struct MapFacts {
  FrqType Kind = FrqTypeUnknown;
  MapFault Fault{};  // none: it can be read, and the rest is told
  SampleCount Frames = 0;
  SampleCount Hop = 0;     // samples per frame
  SampleCount Voiced = 0;  // frames with a pitch
  double Key = 0.0;        // [Hz] as the windows show it
  double Low = 0.0;        // [Hz] least pitch; 0 where there is none
  double High = 0.0;       // [Hz] greatest pitch
};

// Neighbouring frames that the check has marked for the same reason.
struct Finding {
  SampleCount First = 0, Last = 0;  // frames
  double Begin = 0.0, End = 0.0;    // [s] from the first frame to behind the last
  std::int32_t Mark = 0;            // CheckMark
  double From = 0.0;                // [Hz] mean of their pitches; 0 without one
  double To = 0.0;                  // [Hz] suggested; FrqNoPitch to take the pitch away, 0 without a suggestion
};

struct SyllableFacts {
  std::wstring Wave;           // its path
  double Seconds = 0.0;        // of sound; 0 where the wave cannot be read
  bool HasSound = false;       // the wave can be read
  std::vector<MapFacts> Maps;  // in the order of the kinds
};

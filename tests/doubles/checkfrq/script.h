// What a test tells the stand-in for the check library, and what that was called with.
#pragma once

#include <cstddef>

struct CheckScript {
  struct Answer {
    int Call;  // from 1; 0 for none
    int Frame;
    int Mark;
    double Suggested;
  };
  Answer Answers[16];
  int StopAt;  // the call that ends the run

  int Calls;
  unsigned char Settings[24];
  // Of the last call; a size of 0 where the record was missing.
  unsigned char Frames[1 << 16], Regions[1 << 12];
  std::size_t FramesSize, RegionsSize;
};

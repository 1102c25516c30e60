// The orders of a test to the stand-in for the check library, and what that was called with.
#pragma once

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

  int CrashAt = 0;  // the call that reads memory which is not there
  int PauseMs = 0;  // of each call
};

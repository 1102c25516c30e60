// The sample voicebank: its syllables, and every file of it in memory.
//
// It lets a newcomer try the program at once and gives the tests something real to open. Some maps are faultless, some
// hold the errors that pitch analysis makes on real voices, and some are missing.
#pragma once

#include <string>
#include <vector>

#include "base/bytes.h"

struct BankFile {
  std::u8string path;  // relative to the voicebank's folder, with "/"
  Bytes bytes;
};

// All files: waves with their maps, oto.ini in each folder, and character.txt. They have the same bytes on every run.
std::vector<BankFile> MakeSampleBank();

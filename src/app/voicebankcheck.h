// VoicebankCheck: one run of the check over the maps of all syllables. It runs on the list's thread, and the editor's
// waits for it.
#pragma once

#include <windows.h>

#include "app/messages.h"
#include "app/voicebank.h"
#include "check/checkrun.h"
#include "dialogs/checkprogress.h"

class VoicebankCheck {
 public:
  VoicebankCheck(Voicebank& bank, HWND editor);

  // Maps that nobody has looked at yet are read; one that cannot be read is left out.
  void Run(const CheckLibrary& library, const CheckFrqSettings& settings);
  const CheckSum& Sum() const { return sum_; }

 private:
  // False if the run ends there.
  bool Check(int index, const EntryFacts& facts, const CheckLibrary& library, const CheckFrqSettings& settings);
  void KeepPainted();

  Voicebank& bank_;
  Document& syllables_;  // bank_'s document
  const HWND editor_;
  CheckSum sum_;
  CheckProgress progress_;
  ULONGLONG painted_ = 0;  // [ms] when the windows were last painted
};

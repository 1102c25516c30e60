// The check of one map: by ear where the recording can be read, and by the course of the map where not.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "batch/banks.h"
#include "batch/facts.h"
#include "batch/order.h"
#include "check/checkrecords.h"
#include "frqmap/frqmap.h"

// The settings of a check for one bank. Any thread may ask.
class CheckSettings {
 public:
  CheckSettings(Bank& bank, const Order& call) : bank_(bank), call_(call) {}

  // The note of the call, or the middle of the bank: of the keys of all its maps. Reads these when it is first asked.
  const CheckFrqSettings& OfBank();

 private:
  int MiddleNote();

  Bank& bank_;
  const Order& call_;
  std::once_flag asked_;
  CheckFrqSettings settings_;
};

// Marks the frames of the map as the check of the windows does. False without memory or for a map without frames.
bool JudgeMap(FrqMap& map, const std::wstring& mapPath, CheckSettings& settings);

// The marks of a map, run by run; those of fewer frames than `leastFrames` lose theirs.
std::vector<Finding> TakeFindings(FrqMap& map, int leastFrames);

// The reason of a finding in words: "an octave too high".
std::string ReasonText(std::int32_t mark);
// The reason of a finding for programs: "octave-high".
std::string ReasonName(std::int32_t mark);

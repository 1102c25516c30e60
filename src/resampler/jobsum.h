// The end of a job of making maps: the sum of what its workers have met, item by item.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "resampler/createjob.h"

enum class ItemEnd : std::uint8_t {
  NotReached,      // nobody came to it
  Made,            // the map is there
  NotKept,         // the map that was there could not be kept, so that it was left as it is
  NotStarted,      // the resampler could not be started; Error is the system's code
  LibraryRefused,  // the library that makes the kind is missing, or made no map
  EndedBadly,      // it ran and said that it failed; Error is its exit code
  NothingMade,     // it ran, and there is no map
  NotConverted,    // the map could not be converted
  Refused,         // its replacement cannot be made, so that it was left as it is
};

// The end of one item of the work list.
struct ItemResult {
  ItemEnd End = ItemEnd::NotReached;
  std::int32_t Error = 0;
};

struct JobSum {
  int Made = 0;
  int NotReached = 0;
  std::vector<std::wstring> Failed;  // waves of failed items, in the order of the list
  ItemResult First;                  // the result of the first of these
};

// `results` belong to `items` one by one.
JobSum SumOf(const std::vector<WorkItem>& items, const std::vector<ItemResult>& results);

// CheckLibrary, the library that looks for wrong frames, loaded as long as a check runs; CheckQuery, a map put before
// it.
//
// The program judges no map itself: it hands each one over in three records and takes marks back (checkrecords.h). The
// library is loaded for each run anew, so that the user can exchange it while the program runs.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "base/handle.h"
#include "check/checkrecords.h"

// A map as the library sees it. The map itself may change while the library works: it is not looked at then.
struct CheckQuery {
  // Without memory for the map there are no Frames, and the map is left out; without Regions the library finds them
  // itself or does without.
  CheckQuery(FrqMap& map, const std::wstring& mapPath);

  CheckRecordPtr<CheckFrameRecord> Frames;
  CheckRecordPtr<CheckRegionRecord> Regions;
};

// The results of a run.
struct CheckSum {
  enum Ending { Ended, Aborted, BrokeOff } End = Ended;  // by the library's wish too; by the user; by its failure
  int Maps = 0;                                          // to be looked at
  int Marks = 0;                                         // frames
  int Judged = 0;                                        // maps
  std::vector<std::wstring> Unread;                      // waves whose maps could not be read
};

class CheckLibrary {
 public:
  CheckLibrary();

  bool IsLoaded() const { return !!module_; }
  // A library without the entry point is loaded all the same, and checks nothing.
  bool HasEntry() const { return entry_ != nullptr; }

  // Has the library judge a map that has frames. Where it has judged, TakeCheckResults puts its marks in the place of
  // the map's. Otherwise those stay, and the whole run ends: the library wants that, or it has failed with an
  // exception.
  enum class Verdict { Judged, Stopped, Failed };
  Verdict Judge(const CheckFrqSettings& settings, const CheckQuery& query) const;

 private:
  struct ModuleTraits {
    using Type = HMODULE;
    static Type Null() { return nullptr; }
    static void Close(Type module);
  };

  UniqueHandle<ModuleTraits> module_;
  CheckFrequencyMapEntry entry_ = nullptr;
};

// The library that looks for wrong frames, as long as a check runs, and a map put before it.
//
// The program judges no map itself: it hands each one over in three records and takes marks back (checkrecords.h). The
// library is loaded for each run anew, so that the user can exchange it while the program runs.
#pragma once

#include <windows.h>

#include <string>

#include "base/handle.h"
#include "check/checkrecords.h"

struct CheckOutcome {
  enum { Skipped, Stopped, Checked } What = Skipped;
  int Marks = 0;  // frames that were marked, of a map that was checked
};

class CheckLibrary {
 public:
  CheckLibrary();

  bool IsLoaded() const { return !!module_; }
  // A library without the entry point is loaded all the same, and checks nothing.
  bool HasEntry() const { return entry_ != nullptr; }

  // Puts a loaded map before the library. Checked: its marks are those of the library now. Stopped: the library ends
  // the whole run, and the marks are as they were. Skipped: as they were for want of memory.
  CheckOutcome Check(const CheckFrqSettings& settings, FrqMap& map, const std::wstring& mapPath) const;

 private:
  struct ModuleTraits {
    using Type = HMODULE;
    static Type Null() { return nullptr; }
    static void Close(Type module) { FreeLibrary(module); }
  };

  UniqueHandle<ModuleTraits> module_;
  CheckFrequencyMapEntry entry_ = nullptr;
};

// The order that a call of the program gives, whatever it looked like on the command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch/reporttexts.h"
#include "frqmap/frqtype.h"

enum class Command { List, Check, Create, Convert, Shift, Key, Report, Export, Import, Restore };
enum class CurveFormat { Csv, PitchTier };

struct Order {
  Command What = Command::List;
  std::vector<std::string> Folders;  // in the form in which they were typed
  bool Recursive = false;            // whatever banks lie below them
  std::string Only;                  // a pattern for names of waves; empty: all
  int Jobs = 0;                      // threads; 0: one for each core
  bool IsJson = false;
  bool IsDryRun = false;  // nothing is written
  bool KeepsOld = true;   // maps that are overwritten are kept

  std::optional<FrqType> Kind;  // of map; none: every kind that is there, or the one that the command is for

  std::optional<int> Note;  // of the check; none: the bank's own middle
  bool HasTransition = false, BeginsFar = false, EndsFar = false;
  int LeastFrames = 1;  // of a finding
  bool Fixes = false;

  bool MakesAll = false;  // maps that are there are made anew
  std::string Resampler;  // empty: the analysis in this program

  FrqType From = FrqTypeUnknown, To = FrqTypeUnknown;
  double Cents = 0.0;

  std::string Output;  // file of a report, or folder of an export or import; empty: beside each wave
  ReportLanguage Language = ReportLanguage::English;
  CurveFormat Format = CurveFormat::Csv;

  bool ListsRuns = false;  // a restore lists the runs and puts nothing back
  int Run = 1;             // the latest one is 1
};

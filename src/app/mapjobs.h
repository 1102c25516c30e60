// MapJobs: the commands that make maps or convert them, from the questions they begin with to the end of the job.
//
// It lives for one command. The editor, which owns what is shown, sees to what has to be read anew after a job.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "app/editorsettings.h"
#include "app/messages.h"
#include "document/document.h"
#include "resampler/createjob.h"
#include "resampler/jobsum.h"

// The end of a job.
struct JobOutcome {
  std::vector<int> Begun;  // syllables whose maps are no longer what they were, by their index; a negative one is the
                           // current syllable
  JobSum Sum;
  bool IsCompact = true;  // false: a file that holds the maps of a folder could not be tidied up
};

class MapJobs {
 public:
  MapJobs(HWND editor, HWND list, const EditorSettings& settings, const Document& syllables)
      : editor_(editor), list_(list), settings_(settings), syllables_(syllables) {}

  // Asks for the job of a menu's command; none if the user goes back. Edits that it would cost are asked about.
  std::optional<CreateFrqJob> Ask(UINT command) const;
  // Does the job, with the list disabled meanwhile. `currentWave`: the wave of the syllable that is shown.
  JobOutcome Run(const CreateFrqJob& job, const std::wstring& currentWave) const;

 private:
  std::optional<CreateFrqJob> AskInitialize() const;
  std::optional<CreateFrqJob> AskInitializeAll() const;
  std::optional<CreateFrqJob> AskConvert() const;
  std::optional<CreateFrqJob> AskOfKind(CreateMode mode) const;
  bool AskOfVs4ufrq(CreateFrqJob& job) const;
  bool AskOfMrq(CreateFrqJob& job) const;
  bool HasMap() const;
  bool MakesListedKind(const CreateFrqJob& job) const;
  bool CostsEdits(const CreateFrqJob& job) const;
  // True if the job costs no edits, or the user lets them go.
  bool MayCost(const CreateFrqJob& job) const;
  JobOutcome RunDialog(const CreateFrqJob& job, const std::wstring& currentWave) const;

  const HWND editor_;
  const HWND list_;
  const EditorSettings& settings_;
  const Document& syllables_;
};

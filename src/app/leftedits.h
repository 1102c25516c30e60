// The edits of a run that did not end in order: what there is of them, and the question about them.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "app/voicebank.h"
#include "document/journalreplay.h"

struct LeftEdits {
  std::wstring Journal;  // its file
  JournalContent Content;
  std::vector<std::wstring> Waves;  // of the syllables whose maps are as they were left
};

// Finds those of the latest run whose folder can be opened here: any, or `folder` alone if that is not empty. Journals
// that hold nothing go.
std::optional<LeftEdits> FindLeftEdits(Voicebank& bank, const std::wstring& folder);

// Says what there is and asks once. False: the user gives them up.
bool AskForLeftEdits(HWND owner, const LeftEdits& edits);

// Says how it went, once they have been brought back.
std::wstring TextOf(const RestoreReport& report);

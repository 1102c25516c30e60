// The commands that lead from one place that wants work to the next, through all syllables and round again.
#pragma once

#include <windows.h>

#include <cstdint>

#include "app/messages.h"
#include "app/voicebank.h"
#include "base/sample.h"

// A value of FindFailureRecord::Show. All others who ask the list for a run leave the bar where it is.
constexpr std::uint8_t kShowWithBar = 2;

// Goes on from the syllable that is shown, as the user would choose the next one in the list. `command`:
// ID_GO_NEXTUNSAVED, ID_GO_NEXTUNREADABLE or ID_GO_NEXTMISSING. False if there is none. The second reads maps that
// nobody has looked at yet.
bool GoToSyllable(UINT command, const FileListSender& list, Voicebank& bank);

// Goes to the next run of marked frames from a sample position of the map that is shown; negative for none. False if
// there is no other.
bool GoToMark(bool forward, const FileListSender& list, int index, SampleCount sample);

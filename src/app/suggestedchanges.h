// The rest of a check's work in words: the run that the bar shows, and the list of all that Modify All would change.
#pragma once

#include <windows.h>

#include <string>

#include "app/framepane.h"
#include "app/messages.h"
#include "document/document.h"

// Says which run of how many stands at a sample position, and why it is marked; empty without a mark there.
std::wstring TextOfRun(Document& syllables, int index, SampleCount sample);

// Runs the window of the suggestions to its end, and has the list modify all if the user wants it. False, without a
// window, if nothing would change.
bool ShowSuggestions(HWND editor, const FileListSender& list, Document& syllables, FramePane& frames);

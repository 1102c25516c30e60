// The command that finds a syllable: its window, and the way to what was chosen there.
#pragma once

#include <windows.h>

#include <string>

#include "app/messages.h"
#include "app/voicebank.h"

// Runs the window to its end. `folder`: what the voicebank was opened from.
void FindSyllable(HWND editor, const FileListSender& list, Voicebank& bank, const std::wstring& folder);

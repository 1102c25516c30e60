// The command that puts kept maps back: its window, and what the voicebank that is open must hear of it.
#pragma once

#include <windows.h>

#include "app/editcommands.h"
#include "app/messages.h"
#include "app/voicebank.h"

// The item stands at the end of the menu.
void AddPutBackItem(HMENU menu);

// Runs the window of the kept maps to its end. Where a chosen map has edits they are asked about first.
void PutKeptMapsBack(HWND editor, const FileListSender& list, Voicebank& bank, const EditCommands& edits);

// Runs of a resampler: without a window or a console, waited for however long they take. Any thread may run one.
#pragma once

#include <windows.h>

#include <string>

#include "resampler/noterange.h"

// Runs a program to its end. Gives 0, or the system's error if it cannot be started; `exitCode`, which may be null, is
// written only for a program that ran. `owner` is the window for what the system itself may have to show.
DWORD RunHidden(HWND owner, const std::wstring& program, const std::wstring& commandLine, LONG* exitCode);

// Makes the map of a wave: by a run of the resampler, or, for the family that has no program to be run, by the library,
// with the notes to be analysed between and whether a .frq replaces the analysis. Gives 0 or a nonzero code. It does
// not look whether there is a map now: that is the list's business.
int RunResamplerCreateMap(HWND owner, const std::wstring& resamplerPath, const std::wstring& wave,
                          const NoteRange& vs4uRange, bool vs4uUseFrq, LONG* exitCode);

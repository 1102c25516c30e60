// A sound file played by the system's media control, under one alias for the whole process. An alias belongs to the
// thread that opened it.
#pragma once

#include <windows.h>

#include <string>

// Opens the file and plays it, from its beginning for a negative `from` [ms], to its end less `endTrim` [ms], a
// negative one of which counts from `from`. Comes back when the sound has begun. 0, or the error of the device. After a
// failure too the caller has to close.
DWORD PlayMci(const std::wstring& path, int from, int endTrim);

bool IsMciPlaying();
DWORD CloseMci();

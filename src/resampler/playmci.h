// A sound file played by the system's media control. Sounds that may overlap have an alias each: an alias in use cannot
// be opened again, on whichever thread. It belongs to the thread that opened it.
#pragma once

#include <windows.h>

#include <string>

inline constexpr wchar_t kPreviewAlias[] = L"Utau";

// Opens the file and plays it, from its beginning for a negative `from` [ms], to its end less `endTrim` [ms], a
// negative one of which counts from `from`. Comes back when the sound has begun. Gives 0, or the error of the device.
// The caller has to close after a failure too.
DWORD PlayMci(const std::wstring& path, int from, int endTrim, const std::wstring& alias = kPreviewAlias);

bool IsMciPlaying(const std::wstring& alias = kPreviewAlias);
DWORD CloseMci(const std::wstring& alias = kPreviewAlias);

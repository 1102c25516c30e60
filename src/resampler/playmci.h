// A sound file played by the system's media control. Sounds that may overlap have an alias each: one that is in use
// cannot be opened again, on whichever thread. It belongs to the thread that opened it.
#pragma once

#include <windows.h>

#include <string>

inline constexpr wchar_t kPreviewAlias[] = L"Utau";

// Opens the file and plays it, from its beginning for a negative `from` [ms], to its end less `endTrim` [ms], a
// negative one of which counts from `from`. Comes back when the sound has begun. 0, or the error of the device. After a
// failure too the caller has to close.
DWORD PlayMci(const std::wstring& path, int from, int endTrim, const std::wstring& alias = kPreviewAlias);

bool IsMciPlaying(const std::wstring& alias = kPreviewAlias);
DWORD CloseMci(const std::wstring& alias = kPreviewAlias);

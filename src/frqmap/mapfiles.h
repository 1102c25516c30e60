// Map files on the disk: which exist, and their loading, saving and deletion by the name of the wave they belong to.
//
// Maps take narrow paths in code page 932, the files below are opened by wide ones. This is where the two meet.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "frqmap/frqmap.h"

// A path in code page 932, as wcstombs_s gives it under a Japanese locale into a buffer of 260 bytes, but whatever the
// locale of the process is. None if a character has no place there, or if more than 259 bytes are needed.
std::optional<std::string> NarrowPath(std::wstring_view wide);

// The way back.
std::wstring WidePath(std::string_view narrow);

// Whether there is a map of that name: a file, or an entry of the store for .mrq. `store` may be null.
bool MapFileExists(const std::wstring& mapPath, MrqStore* store);

// Gives a map to the guard ahead of its end. False if there is one that has been kept nowhere. `store` may be null, and
// then a .mrq is nobody's.
bool KeepMapFile(const std::wstring& mapPath, const MrqStore* store);

// Deletes a map with all that belongs to it; false if the map itself stayed. The guard gets it first. `store` may be
// null, and then a .mrq stays; `keepEntry` leaves the entry in the store.
bool DeleteMapFile(const std::wstring& mapPath, MrqStore* store, bool keepEntry);

// Brings a map back as the guard has kept it: the bytes of a file, or of an entry with its head. 0, or -1 with the
// reason in GetLastError. `store` may be null without .mrq.
int RestoreMapFile(const std::wstring& mapPath, ByteSpan kept, MrqStore* store);

// FrqMap::Load and Save on the map file of a wave. A path that is not expressible narrowly fails like a missing one:
// the map is cleared by a load, and a save gives -1 with ERROR_PATH_NOT_FOUND.
int LoadMap(FrqMap& map, const std::wstring& wavePath, FrqType kind, MrqStore* store);
int SaveMap(FrqMap& map, const std::wstring& wavePath, FrqType kind, MrqStore* store);

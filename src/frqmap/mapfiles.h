// Map files on the disk: which exist, and their loading, saving and deletion by the name of the wave they belong to.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "frqmap/frqmap.h"

// Whether there is a map of that name: a file, or an entry of the store for .mrq. `store` may be null.
bool MapFileExists(const std::wstring& mapPath, MrqStore* store);

// Files that the analysis of some kinds keeps beside a map, there or not: the same for a kind, in the same order.
std::vector<std::wstring> MapCompanions(const std::wstring& mapPath);

// Gives a map to the guard ahead of its end. False if there is one that has been kept nowhere. `store` may be null, and
// then a .mrq is nobody's.
bool KeepMapFile(const std::wstring& mapPath, const MrqStore* store);

// Deletes a map with all that belongs to it; false if the map itself stayed. The guard gets it first. `store` may be
// null, and then a .mrq stays; `keepEntry` leaves the entry in the store.
bool DeleteMapFile(const std::wstring& mapPath, MrqStore* store, bool keepEntry);

// Brings a map back as the guard has kept it: the bytes of a file, or of an entry with its head. 0, or -1 with the
// reason in Disk().LastError. `store` may be null without .mrq.
int RestoreMapFile(const std::wstring& mapPath, ByteSpan kept, MrqStore* store);

// FrqMap::Load and Save on the map file of a wave.
int LoadMap(FrqMap& map, const std::wstring& wavePath, FrqType kind, MrqStore* store);
int SaveMap(FrqMap& map, const std::wstring& wavePath, FrqType kind, MrqStore* store);

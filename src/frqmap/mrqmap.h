// Maps of the kind .mrq: no file has their name, they are entries of a store.
#pragma once

#include <string>

#include "frqmap/frqmap.h"
#include "frqmap/mrqstore.h"

// The key of a map's entry: its path without the extension.
std::wstring MrqKey(const std::wstring& mapPath);

// Header and frames of a map from the entry of its name, with the levels of its wave; the rest is that of a new map. 0,
// or -1 without a store or an entry.
int LoadMrq(FrqMap& map, const std::wstring& mapPath, const MrqStore* store);

// Keeps the map in the store, not rounded, and writes it to the file. 0, or -1 without a store or if the file cannot be
// written, with the reason in Disk().LastError; the store keeps it all the same.
int SaveMrq(const FrqMap& map, const std::wstring& mapPath, MrqStore* store);

bool MrqExists(const std::wstring& mapPath, const MrqStore& store);

// Deletes the resampler's analysis of the wave and, unless it is to be kept, the entry. False if that is still in the
// file.
bool DeleteMrq(const std::wstring& mapPath, MrqStore& store, bool keepEntry);

// One change of a desc.mrq file: opened and locked against other programs, made in memory, kept, written as a whole,
// and looked at once more before it counts.
//
// The lock is of the file, so that it holds between programs. All of these fail with the reason in LastError of the
// files and leave the file byte for byte as it was; one that was not there stays behind, empty, since another program
// may already wait for its lock.
#pragma once

#include <memory>
#include <string>

#include "frqmap/mrqwriting.h"

// The file to be read; null if there is none, or if it is larger than 64 MiB.
std::unique_ptr<FileStream> OpenMrqFile(FileSystem& files, const std::wstring& path);

// WriteMrqEntry on a file, which is made if need be.
bool SaveMrqEntry(FileSystem& files, const std::wstring& path, const std::u16string& name, const MrqEntry& entry,
                  std::int32_t timestamp);

// KillMrqEntries on a file; where there is none, one is made with a header alone. True if no reader finds the entry
// now.
bool RemoveMrqEntry(FileSystem& files, const std::wstring& path, const std::u16string& name);

// Gives the entry to the guard before another program may change it. False if there is one that could not be kept.
bool KeepMrqEntry(FileSystem& files, const std::wstring& path, const std::u16string& name);

// CompactMrqEntries on a file. Also 0 for one that cannot be opened; where there is none, one is made with a header
// alone.
int CompactMrqFile(const std::wstring& path, std::int32_t timestamp, FileSystem& files = Disk());

// Whether a name from a file is one of a wave in the file's folder: a name that leads anywhere else is nobody's.
bool IsPlainMrqName(std::u16string_view name);

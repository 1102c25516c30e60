// Saving in place: a file becomes another one without a moment at which it is empty, and is what it was if that fails.
//
// There is no temporary file beside it and nothing is renamed: what a voicebank holds is what its user put there, and
// programs that have a map open go on with the same file. Each change is told to the guard before it is made.
#pragma once

#include <functional>

#include "base/fileguard.h"
#include "base/filesystem.h"

// Makes these bytes the whole content of the file, in one write; the file is made if need be. The old bytes go to the
// guard first if they are still to be kept. False, with the reason in LastError and the file as it was: one that was
// not there is gone again. A file that holds these bytes already is not written.
bool WriteInPlace(FileSystem& files, const std::wstring& path, Bytes bytes);

// Makes a change of an open file. `isThere`, if there is one, looks at the file then, and fails the change by false if
// the file is not as it should be. If anything fails, the old bytes are put back; LastError is that of the first
// failure. The change has an End at the guard unless the old bytes could not be put back.
bool MakeChange(FileSystem& files, FileStream& stream, const FileChange& change,
                const std::function<bool()>& isThere = {});

// Puts back the bytes and the length from before a change, however far it got.
bool TakeBack(FileStream& stream, const FileChange& change);

// The length of an open file; none, with the reason in LastError, if the system does not tell it. A failure must not
// pass for an empty file, whose content nobody would put back.
std::optional<std::int64_t> SizeOf(FileSystem& files, const FileStream& stream);

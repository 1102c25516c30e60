// Whole files: one open, one read or write, one close. Maps and texts come through here.
//
// Codecs work on bytes, so that nothing is half written because of what a map holds.
#pragma once

#include <optional>
#include <string>

#include "base/bytes.h"

// The bytes of a file; none if it cannot be opened or read, or is larger than 64 MiB: a map of six hours.
std::optional<Bytes> ReadWholeFile(const std::wstring& path);
// The same into `bytes`, whose memory is used as far as it goes. False if the file cannot be read or is too large.
bool ReadWholeFile(const std::wstring& path, Bytes& bytes);

// Writes the file in place, with these bytes as its whole content. False, with the reason in Disk().LastError, if it
// cannot be opened, which leaves it as it was, or not written to the end, which leaves it as far as it got.
bool WriteWholeFile(const std::wstring& path, ByteSpan bytes);

// Whether something of that name exists and is no folder, or is one.
bool FileExists(const std::wstring& path);
bool FolderExists(const std::wstring& path);

// Whether a file is marked read-only; Disk().LastError then says that access is denied. Windows refuses to write one by
// itself. Wine leaves that to the host system, where an administrator may write any file: the mark must hold there too.
bool RefuseReadOnly(const std::wstring& path);

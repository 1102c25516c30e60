// Whether a voicebank's folder can be written to, and where the system redirects writes that it does not allow.
//
// A voicebank often lies under the host's program folder. There the system quietly sends the files of a plain user to a
// shadow tree in the user's profile ("VirtualStore"), where the program would not look for a map.
#pragma once

#include <windows.h>

#include <string>

// The shadow of a path: 0 for a root and for a path under a protected folder of the system; -1, which leaves `shadow`
// alone, for any other and where there is no place for shadows. Nothing need lie there.
int GetVirtualStorePath(const std::wstring& path, std::wstring& shadow);

// The answer of the system's own access check for the current user: 1 may write, 0 may not, -1 cannot be told.
int CanWriteFolder(const std::wstring& folder);

// Replaces the path of a file by that of its shadow if only the shadow exists or it was written later. Always 0.
int PickNewerVirtualStoreFile(std::wstring& path);

// Whether something of that name exists; `isFile` is set only then, and tells whether it is no folder.
bool FileExistsAsFile(const std::wstring& path, bool& isFile);

// Paths for libraries and programs of others that take them as bytes in the user's code page, into a buffer of 260.
//
// A character that the code page lacks would arrive there as another one: the system puts a look-alike in its place,
// which may make the name of another file. Such a path goes by the short names that the system keeps beside the long
// ones.
#pragma once

#include <optional>
#include <string>

// Whether the path comes out of the code page as it went in, fits, and is opened as it stands.
bool IsNarrow(const std::wstring& path);

// The path that a program that takes bytes would read; the path itself if it is narrow.
std::wstring ReadNarrowly(const std::wstring& path);

// A narrow path to the same file, or to the place of one that is not there yet: the path itself, the one with short
// names for its folders, or the one with short names alone. None where there is no such path.
std::optional<std::wstring> NarrowForm(const std::wstring& path);

// The bytes of the NarrowForm; none where there is no such path.
std::optional<std::string> NarrowBytes(const std::wstring& path);

// Paths by their text alone: taken apart and put together as Windows does it, but without it.
//
// The separator is "\\". All else is told of full paths, which begin with a drive or a server.
#pragma once

#include <string>

// Code units of the longest path that Windows knows, with the zero behind it.
inline constexpr std::size_t kLongestPath = 32768;

// The path of the folder, without a separator at its end but for the root of a drive. Empty for a path without one.
inline std::wstring FolderOf(const std::wstring& path) {
  const std::size_t separator = path.find_last_of(L'\\');
  if (separator == std::wstring::npos) return {};
  const bool root = separator > 0 && path[separator - 1] == L':';
  return path.substr(0, root ? separator + 1 : separator);
}

inline std::wstring FileNameOf(const std::wstring& path) {
  return path.substr(path.find_last_of(L'\\') + 1);
}

// The path of a name in a folder. A folder that ends in a separator, as a root does, gets no second one.
inline std::wstring PathIn(const std::wstring& folder, const std::wstring& name) {
  return folder.ends_with(L'\\') ? folder + name : folder + L'\\' + name;
}

// The path of a name that is not empty, seen from a folder: without "." and "..", which lead no further than to the
// root. A name that is a full path stands for itself, and one that begins with "\\" goes out from the folder's root.
// The path is empty if it would be longer than any can be.
std::wstring PathSeenFrom(const std::wstring& folder, const std::wstring& name);

// The extension goes from the last dot of the name to its end; a name with a blank behind that dot has none.
std::wstring PathWithoutExtension(const std::wstring& path);

// The path with `extension`, which comes with its dot, in the place of the extension that is there.
std::wstring PathWithExtension(const std::wstring& path, const std::wstring& extension);

// Whether the system would open each name of a path as it stands. It drops a blank or a dot at the end of one, and
// takes NUL.wav for a device.
bool HasPlainNames(const std::wstring& path);

// The form of a full path in which the system opens the very file of that name: the extended one ("\\?\") for a path
// that is long or has names that are not plain, and the path itself for all others. Every call that takes a path is
// given this; nothing keeps it.
std::wstring ApiPath(const std::wstring& path);

// The way back from ApiPath: a path in the extended form, as the program keeps it.
std::wstring PlainPath(const std::wstring& path);

// Paths by their text alone: taken apart and put together as Windows does it, but without it.
//
// The separator is "\\". What counts beyond that is told for full paths, which begin with a drive or a server.
#pragma once

#include <string>

// Code units that a path may have for Windows to open it.
inline constexpr std::size_t kPathLimit = 259;

// Empty for a path without a separator. The root of a drive keeps its own.
inline std::wstring FolderOf(const std::wstring& path) {
  const std::size_t separator = path.find_last_of(L'\\');
  if (separator == std::wstring::npos) return {};
  const bool root = separator > 0 && path[separator - 1] == L':';
  return path.substr(0, root ? separator + 1 : separator);
}

inline std::wstring FileNameOf(const std::wstring& path) {
  return path.substr(path.find_last_of(L'\\') + 1);
}

// A root keeps its own separator, and gets no second one.
inline std::wstring PathIn(const std::wstring& folder, const std::wstring& name) {
  return folder.ends_with(L'\\') ? folder + name : folder + L'\\' + name;
}

// The path of a name that is not empty, seen from a folder: without "." and "..", which lead no further than to the
// root. A name that is a full path stands for itself, and one that begins with "\\" goes out from the folder's root.
// Empty if the path is too long.
std::wstring PathSeenFrom(const std::wstring& folder, const std::wstring& name);

// The extension goes from the last dot of the name to its end; a name with a blank behind that dot has none.
std::wstring PathWithoutExtension(const std::wstring& path);

// `extension` with its dot, in the place of the one that is there. The path as it was if the new one is too long.
std::wstring PathWithExtension(const std::wstring& path, const std::wstring& extension);

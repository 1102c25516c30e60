// The two halves of a path: all before the last "\\", and what is behind it.
#pragma once

#include <string>

// Empty for a path without a separator.
inline std::wstring FolderOf(const std::wstring& path) {
  const std::size_t separator = path.find_last_of(L'\\');
  return separator == std::wstring::npos ? std::wstring() : path.substr(0, separator);
}

inline std::wstring FileNameOf(const std::wstring& path) {
  return path.substr(path.find_last_of(L'\\') + 1);
}

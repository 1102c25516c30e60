// The two halves of a path: all before the last "\\", and what is behind it; and the two put together.
#pragma once

#include <string>

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

#include "base/path.h"

#include <algorithm>

namespace {

bool HasDrive(const std::wstring& path) {
  return path.size() > 1 && path[1] == L':';
}

// Length of what ".." never leads out of, its separator included: "C:\\", "\\\\server\\", "\\". It does lead out of a
// share, as it does for the shell.
std::size_t RootLength(const std::wstring& path) {
  const bool isShare = path.starts_with(L"\\\\");
  const std::size_t end = isShare ? std::min(path.find(L'\\', 2), path.size()) : HasDrive(path) ? 2 : 0;
  return path.substr(end, 1) == L"\\" ? end + 1 : end;
}

std::wstring WithoutDots(const std::wstring& path) {
  const std::size_t root = RootLength(path);
  std::wstring result = path.substr(0, root);
  for (std::size_t start = root; start < path.size();) {
    const std::size_t end = std::min(path.find(L'\\', start), path.size() - 1) + 1;
    const std::wstring part = path.substr(start, end - start);
    if (part == L"..\\" && result.size() > root) {
      result.resize(std::max(root, result.find_last_of(L'\\', result.size() - 2) + 1));
    } else if (part != L".\\" && part != L"..\\") {
      result += part;
    }
    start = end;
  }
  return result;
}

std::size_t ExtensionStart(const std::wstring& path) {
  const std::size_t dot = path.find_last_of(L"\\ .");
  return dot != std::wstring::npos && path[dot] == L'.' ? dot : path.size();
}

}  // namespace

std::wstring PathSeenFrom(const std::wstring& folder, const std::wstring& name) {
  std::wstring path = name;
  if (!folder.empty() && !HasDrive(name) && !name.starts_with(L"\\\\")) {
    path = name.starts_with(L'\\') ? PathIn(folder.substr(0, RootLength(folder)), name.substr(1))
                                   : PathIn(folder, name);
  }
  return path.size() <= kPathLimit ? WithoutDots(path) : L"";
}

std::wstring PathWithoutExtension(const std::wstring& path) {
  return path.substr(0, ExtensionStart(path));
}

std::wstring PathWithExtension(const std::wstring& path, const std::wstring& extension) {
  const std::wstring renamed = PathWithoutExtension(path) + extension;
  return renamed.size() <= kPathLimit ? renamed : path;
}

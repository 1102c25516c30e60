#include "base/path.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

bool HasDrive(const std::wstring& path) {
  return path.size() > 1 && path[1] == L':';
}

// The length of the root, which ".." never leads out of, its separator included: "C:\\", "\\\\server\\", "\\". It does
// lead out of a share, as it does for the shell.
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

constexpr std::wstring_view kExtended = L"\\\\?\\";
constexpr std::wstring_view kExtendedShare = L"\\\\?\\UNC";

// A folder may have this many units less one, so that a short name still fits into it.
constexpr std::size_t kShortEnough = 248;

// Paths that begin with "\\\\?\\" or "\\\\.\\" are not ours to change.
bool IsOfDevices(const std::wstring& path) {
  return path.starts_with(kExtended) || path.starts_with(L"\\\\.\\");
}

bool IsOnDrive(const std::wstring& path) {
  return HasDrive(path) && path.size() > 2 && (path[2] == L'\\' || path[2] == L'/');
}

bool EqualsInAscii(std::wstring_view name, std::wstring_view upper) {
  const auto raise = [](wchar_t c) { return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c; };
  return std::ranges::equal(name, upper, {}, raise);
}

// A name is that of a device by its part before the first dot or colon, blanks at the end of that part left out.
bool IsDevice(std::wstring_view name) {
  name = name.substr(0, name.find_first_of(L".:"));
  name = name.substr(0, name.find_last_not_of(L' ') + 1);
  constexpr std::array<std::wstring_view, 7> kNames = {L"CON",    L"PRN",     L"AUX",   L"NUL",
                                                       L"CONIN$", L"CONOUT$", L"CLOCK$"};
  for (const std::wstring_view device : kNames) {
    if (EqualsInAscii(name, device)) return true;
  }
  const bool isPort = EqualsInAscii(name.substr(0, 3), L"COM") || EqualsInAscii(name.substr(0, 3), L"LPT");
  return isPort && name.size() == 4 && std::wstring_view(L"0123456789\u00B9\u00B2\u00B3").find(name[3]) != name.npos;
}

// The system reads nothing but "\\" and names in the extended form, so "/", "\\\\" and dots are resolved here.
std::wstring Literal(std::wstring path) {
  std::ranges::replace(path, L'/', L'\\');
  if (path.ends_with(L"\\.") || path.ends_with(L"\\..")) path += L'\\';
  const auto isDoubled = [](wchar_t a, wchar_t b) { return a == L'\\' && b == L'\\'; };
  path.erase(std::unique(path.begin() + 1, path.end(), isDoubled), path.end());
  path = WithoutDots(path);
  if (path.ends_with(L'\\') && path.size() > RootLength(path)) path.pop_back();
  return path;
}

}  // namespace

std::wstring PathSeenFrom(const std::wstring& folder, const std::wstring& name) {
  std::wstring path = name;
  if (!folder.empty() && !HasDrive(name) && !name.starts_with(L"\\\\")) {
    path = name.starts_with(L'\\') ? PathIn(folder.substr(0, RootLength(folder)), name.substr(1))
                                   : PathIn(folder, name);
  }
  return path.size() < kLongestPath ? WithoutDots(path) : L"";
}

std::wstring PathWithoutExtension(const std::wstring& path) {
  return path.substr(0, ExtensionStart(path));
}

std::wstring PathWithExtension(const std::wstring& path, const std::wstring& extension) {
  return PathWithoutExtension(path) + extension;
}

bool HasPlainNames(const std::wstring& path) {
  for (std::size_t start = 0, end = 0; start < path.size(); start = end + 1) {
    end = std::min(path.find_first_of(L"\\/", start), path.size());
    const std::wstring_view name = std::wstring_view(path).substr(start, end - start);
    const bool leads = name == L"." || name == L"..";
    if (name.ends_with(L' ') || (name.ends_with(L'.') && !leads) || IsDevice(name)) return false;
  }
  return true;
}

std::wstring ApiPath(const std::wstring& path) {
  const bool isShare = path.starts_with(L"\\\\");
  if (IsOfDevices(path) || (!isShare && !IsOnDrive(path))) return path;
  if (path.size() < kShortEnough && HasPlainNames(path)) return path;
  return isShare ? std::wstring(kExtendedShare) + Literal(path).substr(1) : std::wstring(kExtended) + Literal(path);
}

std::wstring PlainPath(const std::wstring& path) {
  if (path.starts_with(kExtendedShare)) return L'\\' + path.substr(kExtendedShare.size());
  const std::wstring plain = path.starts_with(kExtended) ? path.substr(kExtended.size()) : path;
  return IsOnDrive(plain) ? plain : path;
}

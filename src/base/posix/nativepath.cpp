#include "base/posix/nativepath.h"

#include "base/utf8.h"

namespace {

constexpr wchar_t kBackslashInName = 0xF05C;

}  // namespace

std::string NativePath(std::wstring_view path) {
  std::wstring native(path);
  for (wchar_t& c : native) c = c == L'\\' ? L'/' : c == kBackslashInName ? L'\\' : c;
  return NameBytesOf(native);
}

std::wstring PathFromNative(std::string_view native) {
  std::wstring path = WideOf(native);
  for (wchar_t& c : path) c = c == L'/' ? L'\\' : c == L'\\' ? kBackslashInName : c;
  return path;
}

#include "base/wildcard.h"

namespace {

wchar_t Lower(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

}  // namespace

// The last "*", where the rest does not fit, takes one character more of the name and the rest is tried again.
bool FitsPattern(std::wstring_view name, std::wstring_view pattern) {
  std::size_t n = 0, p = 0, star = pattern.npos, resume = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == L'*') {
      star = p++;
      resume = n;
    } else if (p < pattern.size() && (pattern[p] == L'?' || Lower(pattern[p]) == Lower(name[n]))) {
      ++n, ++p;
    } else if (star != pattern.npos) {
      p = star + 1;
      n = ++resume;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(L'*', p) == pattern.npos;
}

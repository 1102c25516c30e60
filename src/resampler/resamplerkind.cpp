#include "resampler/resamplerkind.h"

#include <algorithm>
#include <string_view>

#include "base/wildcard.h"
#include "frqmap/mapkind.h"

namespace {

// As the shell finds it: behind the last separator that something follows, and a drive's colon is one.
std::wstring_view NamePart(std::wstring_view path) {
  std::size_t start = 0;
  for (std::size_t i = 0; i + 1 < path.size(); ++i) {
    const bool separates = path[i] == L'\\' || path[i] == L'/' || path[i] == L':';
    if (separates && path[i + 1] != L'\\' && path[i + 1] != L'/') start = i + 1;
  }
  return path.substr(start);
}

}  // namespace

FrqType GetResamplerKind(const std::wstring& path) {
  const std::wstring_view name = NamePart(path);
  const auto row = std::ranges::find_if(MapKinds(), [&](const MapKind& kind) {
    return !kind.Resamplers.empty() && FitsPattern(name, kind.Resamplers);
  });
  return row == MapKinds().end() ? FrqTypeFrq : row->Type;
}

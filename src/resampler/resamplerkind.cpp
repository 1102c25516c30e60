#include "resampler/resamplerkind.h"

#include <string_view>

#include "base/wildcard.h"

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
  static constexpr struct {
    const wchar_t* wildcard;
    FrqType kind;
  } kFamilies[] = {
      {L"vs4u*.exe", FrqTypeVs4ufrq}, {L"model4*.exe", FrqTypeFrc},      {L"tips*.exe", FrqTypePmk},
      {L"w4u*.exe", FrqTypeDio},      {L"moresampler*.exe", FrqTypeMrq},
  };
  const std::wstring_view name = NamePart(path);
  for (const auto& family : kFamilies) {
    if (FitsPattern(name, family.wildcard)) return family.kind;
  }
  return FrqTypeFrq;
}

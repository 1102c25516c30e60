#include "resampler/resamplerkind.h"

#include <windows.h>
#include <shlwapi.h>

FrqType GetResamplerKind(const std::wstring& path) {
  static constexpr struct {
    const wchar_t* wildcard;
    FrqType kind;
  } kFamilies[] = {
      {L"vs4u*.exe", FrqTypeVs4ufrq}, {L"model4*.exe", FrqTypeFrc},      {L"tips*.exe", FrqTypePmk},
      {L"w4u*.exe", FrqTypeDio},      {L"moresampler*.exe", FrqTypeMrq},
  };
  const wchar_t* const name = PathFindFileNameW(path.c_str());
  for (const auto& family : kFamilies) {
    if (PathMatchSpecW(name, family.wildcard)) return family.kind;
  }
  return FrqTypeFrq;
}

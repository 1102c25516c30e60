#include "resampler/bundled.h"

#include <windows.h>

#include "base/files.h"
#include "base/path.h"

std::wstring BundledResampler() {
  constexpr DWORD kLongestPath = 32768;
  std::wstring program(kLongestPath, L'\0');
  program.resize(GetModuleFileNameW(nullptr, program.data(), kLongestPath));
  const std::wstring resampler = PathIn(FolderOf(program), L"basic-resampler.exe");
  return FileExists(resampler) ? resampler : std::wstring();
}

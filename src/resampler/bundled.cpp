#include "resampler/bundled.h"

#include "base/files.h"
#include "base/path.h"
#include "base/systempath.h"

std::wstring BundledResampler() {
  const std::wstring path = PathIn(FolderOf(ProgramPath()), L"basic-resampler.exe");
  return FileExists(path) ? path : std::wstring();
}

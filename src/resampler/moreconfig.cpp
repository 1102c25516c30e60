#include "resampler/moreconfig.h"

#include <windows.h>

#include "base/path.h"
#include "voicebank/libfile.h"

bool IsMoreCompatibilityOff(const std::wstring& resamplerPath) {
  static constexpr std::wstring_view kKey = L"resampler-compatibility ";
  bool off = false;
  const auto parse = [&off](const LineSource& next) {
    std::wstring line;
    while (next(line)) {
      if (!line.starts_with(kKey)) continue;
      off = lstrcmpW(line.c_str() + kKey.size(), L"on") != 0;
      return;
    }
  };
  const std::wstring folder = FolderOf(resamplerPath);
  const std::wstring file = folder.empty() ? L"moreconfig.txt" : folder + L"\\moreconfig.txt";
  ParseTextFile(file, CharsetRule::MoreConfig, parse);
  return off;
}

#include "voicebank/pluginfile.h"

#include <windows.h>

#include <string_view>

#include "base/files.h"
#include "base/handle.h"
#include "base/path.h"

bool IsPluginFile(const std::wstring& path) {
  const FileHandle file(
      CreateFileW(ApiPath(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  char head[10];
  DWORD read = 0;
  if (!file || !::ReadFile(file.get(), head, sizeof(head), &read, nullptr)) return false;
  const std::string_view start(head, read);
  return start == "[#SETTING]" || start == "[#VERSION]";
}

void AnswerHost(const std::wstring& path, bool saved) {
  static constexpr std::uint8_t kAnswer[] = {'d', 'u', 'm', 'm', 'y', '\n'};
  WriteWholeFile(path, saved ? ByteSpan(kAnswer) : ByteSpan());
}

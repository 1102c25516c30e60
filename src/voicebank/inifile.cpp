#include "voicebank/inifile.h"

#include <windows.h>

#include "base/files.h"
#include "base/text.h"
#include "voicebank/keyvalue.h"

namespace UtauCommon {

int INIFILE::Load(const std::wstring& path) {
  const std::optional<Bytes> file = ReadWholeFile(path);
  if (!file) return 0;
  std::string_view text(reinterpret_cast<const char*>(file->data()), file->size());
  const bool utf8 = HasUtf8Mark(text);
  if (utf8) text.remove_prefix(kUtf8MarkSize);
  for (const std::string_view line : SplitLines(text)) {
    // A zero byte ends its line, as it would end a C string.
    AddKeyValue(Widen(line.substr(0, line.find('\0')), utf8 ? CP_UTF8 : 932), values_);
  }
  return 0;
}

std::wstring INIFILE::GetValue(const std::wstring& key, const std::wstring& defaultText) const {
  const auto found = values_.find(key);
  return found == values_.end() ? defaultText : found->second;
}

}  // namespace UtauCommon

#include "voicebank/inifile.h"

namespace UtauCommon {

void INIFILE::Parse(const LineSource& next) {
  std::wstring line;
  while (next(line)) {
    if (const auto entry = SplitKeyValue(line)) values_[std::wstring(entry->key)] = entry->value;
  }
}

std::wstring INIFILE::GetValue(const std::wstring& key, const std::wstring& defaultText) const {
  const auto found = values_.find(key);
  return found == values_.end() ? defaultText : found->second;
}

}  // namespace UtauCommon

#include "voicebank/keyvalue.h"

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    lines.push_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    const bool pair = text.substr(end, 2) == "\r\n";
    text.remove_prefix(end + (pair ? 2 : 1));
  }
  return lines;
}

bool HasUtf8Mark(std::string_view text) {
  return text.starts_with("\xEF\xBB\xBF");
}

void AddKeyValue(std::wstring_view line, std::map<std::wstring, std::wstring>& values) {
  const std::size_t sign = line.find(L'=');
  if (sign == std::wstring_view::npos) return;
  values[std::wstring(line.substr(0, sign))] = line.substr(sign + 1);
}

#include "voicebank/textlines.h"

#include <algorithm>

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kOtoMark = "#Charset:UTF8";

// The host writes its mark as a key of the first section, so a line before it is expected. The search ends at a zero
// byte, where the host's own would.
bool HasPluginMark(std::string_view file) {
  const std::string_view text = file.substr(0, file.find('\0'));
  return text.find("\nCharset=UTF-8") != text.npos || text.find("\rCharset=UTF-8") != text.npos;
}

}  // namespace

TextEncoding DetectEncoding(std::string_view file, CharsetRule rule) {
  bool marked = file.starts_with(kByteOrderMark);
  if (rule == CharsetRule::OtoIni) marked = marked || file.starts_with(kOtoMark);
  if (rule == CharsetRule::PluginFile) marked = marked || HasPluginMark(file);
  return marked ? TextEncoding::Utf8 : TextEncoding::ShiftJis;
}

std::string_view SkipByteOrderMark(std::string_view file) {
  return file.substr(file.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
}

bool CutLine(std::string_view& rest, std::string_view& line) {
  if (rest.empty()) return false;
  const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
  line = rest.substr(0, end);
  line = line.substr(0, line.find('\0'));
  rest.remove_prefix(end);
  const std::size_t endSize = rest.starts_with("\r\n") ? 2 : 1;
  rest.remove_prefix(std::min(endSize, rest.size()));
  return true;
}

std::optional<KeyValue> SplitKeyValue(std::wstring_view line) {
  const std::size_t sign = line.find(L'=');
  if (sign == line.npos) return std::nullopt;
  return KeyValue{line.substr(0, sign), line.substr(sign + 1)};
}

#include "batch/html.h"

#include "base/utf8.h"

namespace {

constexpr std::string_view kNoCharacter = "\xEF\xBF\xBD";  // U+FFFD

bool IsPlain(unsigned char c) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  return isLetter || (c >= '0' && c <= '9') ||
         std::string_view("-._~").find(static_cast<char>(c)) != std::string_view::npos;
}

std::string Encoded(std::string_view bytes) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string link;
  for (const char byte : bytes) {
    const auto c = static_cast<unsigned char>(byte);
    if (c == '\\' || c == '/') {
      link += '/';
    } else if (IsPlain(c)) {
      link += byte;
    } else {
      link.append({'%', kDigits[c >> 4], kDigits[c & 15]});
    }
  }
  return link;
}

}  // namespace

std::string Escaped(std::string_view utf8) {
  std::string text;
  text.reserve(utf8.size());
  for (const char c : utf8) {
    switch (c) {
      case '&': text += "&amp;"; break;
      case '<': text += "&lt;"; break;
      case '>': text += "&gt;"; break;
      case '"': text += "&quot;"; break;
      case '\'': text += "&#39;"; break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
          text += kNoCharacter;
        } else {
          text += c;
        }
    }
  }
  return text;
}

// A colon in the first name is encoded, or it would make a scheme of the text before it.
std::string LinkTo(std::wstring_view path) {
  const std::string bytes = NameBytesOf(path);
  const bool hasDrive = bytes.size() > 2 && bytes[1] == ':' && (bytes[2] == '\\' || bytes[2] == '/');
  if (hasDrive) return "file:///" + bytes.substr(0, 2) + Encoded(std::string_view(bytes).substr(2));
  const std::string link = Encoded(bytes);
  if (link.starts_with("//")) return "file:" + link;
  return link.starts_with('/') ? "file://" + link : link;
}

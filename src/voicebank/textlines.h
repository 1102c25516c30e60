// The ground of every text file of a voicebank and of the host: which encoding a file is in, where its lines end, and
// the key=value lines among them. Portable: turning bytes into wide text is the system's business (libfile.h).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

// The mark that makes a sort of file UTF-8. A byte order mark always does; without any mark a file is Shift-JIS.
enum class CharsetRule : std::uint32_t {
  MoreConfig = 0,  // the byte order mark alone
  OtoIni = 1,      // also "#Charset:UTF8" at the very start
  PluginFile = 2,  // also a line that begins with "Charset=UTF-8", but for the first
  IniFile = 3,     // the byte order mark alone
};

enum class TextEncoding : std::uint32_t {
  ShiftJis = 0,
  Utf8 = 1,
};

TextEncoding DetectEncoding(std::string_view file, CharsetRule rule);

// The file without its byte order mark, if it has one.
std::string_view SkipByteOrderMark(std::string_view file);

// Takes the next line off the front of `rest`, false if there is none. CR, LF and CR LF end a line; an end of line at
// the very end adds no empty one. A zero byte ends its line early, as it would end a C string.
bool CutLine(std::string_view& rest, std::string_view& line);

// Gives the lines of a text one after the other; false behind the last. The grammars take their lines from one, so that
// a file is never held a second time as a list of lines.
using LineSource = std::function<bool(std::wstring& line)>;

struct KeyValue {
  std::wstring_view key;
  std::wstring_view value;
};

// The texts before and behind the first "=", neither trimmed; none without a "=".
std::optional<KeyValue> SplitKeyValue(std::wstring_view line);

// The lines of a voicebank's and the host's text files, and the key=value lines among them: the portable ground.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// Lines of a text as bytes; CR, LF and CR LF end a line, and an end of line at the very end adds no empty one.
std::vector<std::string_view> SplitLines(std::string_view text);

// Whether the bytes begin with the mark of UTF-8.
bool HasUtf8Mark(std::string_view text);
inline constexpr std::size_t kUtf8MarkSize = 3;

// Enters a line that has a "=": key before the first one, value behind it, neither trimmed. A later value of the same
// key replaces the earlier one.
void AddKeyValue(std::wstring_view line, std::map<std::wstring, std::wstring>& values);

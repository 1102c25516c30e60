#include "base/notename.h"

#include <array>
#include <cstddef>
#include <cwchar>
#include <string_view>

namespace {

constexpr int kLowest = 24;
constexpr int kHighest = 119;
constexpr std::array<std::wstring_view, 12> kNames = {L"C",  L"C#", L"D",  L"D#", L"E",  L"F",
                                                      L"F#", L"G",  L"G#", L"A",  L"A#", L"B"};

// Characters behind these are not looked at.
constexpr std::size_t kLongestName = 15;
// A higher octave is refused: the number of the note might not fit into an int.
constexpr long kHighestOctave = 99'999'999;

std::wstring UpperCase(std::wstring text) {
  for (wchar_t& c : text) {
    if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
  }
  return text;
}

}  // namespace

std::wstring NoteNameFromNumber(int number) {
  if (number < kLowest || number > kHighest) return {};
  const auto octave = static_cast<wchar_t>(L'0' + number / 12 - 1);
  return std::wstring(kNames[static_cast<std::size_t>(number % 12)]) + octave;
}

int NoteNumberFromName(const std::wstring& text) {
  const std::wstring start = text.substr(0, kLongestName);
  const std::size_t digit = start.find_first_of(L"0123456789");
  if (digit == start.npos) return -1;
  const long octave = std::wcstol(start.c_str() + digit, nullptr, 10);
  if (octave > kHighestOctave) return -1;
  const std::wstring name = UpperCase(start.substr(0, digit));
  for (std::size_t index = 0; index < kNames.size(); ++index) {
    if (name == kNames[index]) return static_cast<int>(index) + (static_cast<int>(octave) + 1) * 12;
  }
  return -1;
}

#include "base/utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace {

constexpr char32_t kNoCharacter = 0xFFFD;
constexpr char32_t kLastCharacter = 0x10FFFF;
constexpr char32_t kFirstOfPairs = 0x10000;
constexpr char32_t kByteUnits = 0xDC00;  // a byte that is no UTF-8 lies as much above it as its value

bool IsHigh(char32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLow(char32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

void Append(std::string& bytes, char32_t character) {
  const auto tail = [&](int shift) { bytes += static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
  if (character < 0x80) {
    bytes += static_cast<char>(character);
  } else if (character < 0x800) {
    bytes += static_cast<char>(0xC0 | (character >> 6));
    tail(0);
  } else if (character < kFirstOfPairs) {
    bytes += static_cast<char>(0xE0 | (character >> 12));
    tail(6);
    tail(0);
  } else {
    bytes += static_cast<char>(0xF0 | (character >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

void Append(std::wstring& text, char32_t character) {
  if (sizeof(wchar_t) > 2 || character < kFirstOfPairs) {
    text += static_cast<wchar_t>(character);
    return;
  }
  const char32_t above = character - kFirstOfPairs;
  text += static_cast<wchar_t>(0xD800 + (above >> 10));
  text += static_cast<wchar_t>(0xDC00 + (above & 0x3FF));
}

// Takes the characters of ASCII that a text begins with, which are one unit in each form: most of any path.
template <typename From, typename To>
void TakePlain(std::basic_string_view<From>& text, std::basic_string<To>& into) {
  const auto isPlain = [](From unit) { return static_cast<std::make_unsigned_t<From>>(unit) < 0x80; };
  const auto length = static_cast<std::size_t>(std::ranges::find_if_not(text, isPlain) - text.begin());
  into.append(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
  text.remove_prefix(length);
}

// Takes one character, or one unit that is none.
char32_t TakeCharacter(std::wstring_view& text) {
  const auto unit = static_cast<char32_t>(text.front());
  text.remove_prefix(1);
  if (!IsHigh(unit) || text.empty() || !IsLow(static_cast<char32_t>(text.front()))) return unit;
  const auto low = static_cast<char32_t>(text.front());
  text.remove_prefix(1);
  return kFirstOfPairs + ((unit - 0xD800) << 10) + (low - 0xDC00);
}

enum class StrayBytes { Shown, Kept };

std::string BytesOf(std::wstring_view text, StrayBytes stray) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    TakePlain(text, bytes);
    if (text.empty()) break;
    const char32_t character = TakeCharacter(text);
    if (stray == StrayBytes::Kept && character >= kByteUnits + 0x80 && character <= kByteUnits + 0xFF) {
      bytes += static_cast<char>(character - kByteUnits);
    } else {
      const bool isNone = IsHigh(character) || IsLow(character) || character > kLastCharacter;
      Append(bytes, isNone ? kNoCharacter : character);
    }
  }
  return bytes;
}

// The number of bytes of a character that begins with this one; 0 if no character does.
std::size_t LengthFrom(std::uint8_t first) {
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4) return 0;
  return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// Takes one character, or one byte that belongs to none.
char32_t TakeCharacter(std::string_view& utf8) {
  constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800, kFirstOfPairs};
  const auto first = static_cast<std::uint8_t>(utf8.front());
  const std::size_t length = LengthFrom(first);
  char32_t character = length == 1 ? first : first & (0x7F >> length);
  bool isOne = length > 0 && length <= utf8.size();
  for (std::size_t i = 1; isOne && i < length; ++i) {
    const auto next = static_cast<std::uint8_t>(utf8[i]);
    isOne = (next & 0xC0) == 0x80;
    character = character << 6 | (next & 0x3F);
  }
  isOne =
      isOne && character >= kLeast[length] && character <= kLastCharacter && !IsHigh(character) && !IsLow(character);
  utf8.remove_prefix(isOne ? length : 1);
  return isOne ? character : kByteUnits + first;
}

}  // namespace

std::string Utf8Of(std::wstring_view text) {
  return BytesOf(text, StrayBytes::Shown);
}

std::string NameBytesOf(std::wstring_view name) {
  return BytesOf(name, StrayBytes::Kept);
}

std::wstring WideOf(std::string_view utf8) {
  std::wstring text;
  text.reserve(utf8.size());
  for (TakePlain(utf8, text); !utf8.empty(); TakePlain(utf8, text)) Append(text, TakeCharacter(utf8));
  return text;
}

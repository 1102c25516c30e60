// Wide text as UTF-16, which files of Windows hold, whatever a wide character is to the system.
#pragma once

#include <string>
#include <string_view>

inline std::u16string Utf16Of(std::wstring_view text) {
  std::u16string units;
  units.reserve(text.size());
  for (const wchar_t c : text) {
    const auto point = static_cast<char32_t>(c);
    if (point >= 0x10000) units += static_cast<char16_t>(0xD7C0 + (point >> 10));
    units += static_cast<char16_t>(point >= 0x10000 ? 0xDC00 + (point & 0x3FF) : point);
  }
  return units;
}

// A unit without its other half stays as it is.
inline std::wstring WideOf(std::u16string_view units) {
  std::wstring text;
  text.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    const bool isPair =
        sizeof(wchar_t) > 2 && units[i] >> 10 == 0x36 && i + 1 < units.size() && units[i + 1] >> 10 == 0x37;
    if (isPair) {
      text += static_cast<wchar_t>(0x10000 + ((units[i] & 0x3FF) << 10) + (units[i + 1] & 0x3FF));
      ++i;
    } else {
      text += static_cast<wchar_t>(units[i]);
    }
  }
  return text;
}

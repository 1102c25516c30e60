#include "base/text.h"

#include <cstdarg>
#include <cwchar>

namespace {

constexpr std::size_t kFirstSize = 256;
constexpr std::size_t kLargestSize = 65536;

}  // namespace

std::wstring LoadResString(UINT id) {
  // The call does not tell a text that just fits from one that was cut, so a full buffer means to try a larger one.
  for (std::size_t size = kFirstSize; size <= kLargestSize; size *= 2) {
    std::wstring text(size, L'\0');
    const int length = LoadStringW(GetModuleHandleW(nullptr), id, text.data(), static_cast<int>(size));
    if (length < static_cast<int>(size) - 1) {
      text.resize(static_cast<std::size_t>(length));
      return text;
    }
  }
  return {};
}

std::wstring Widen(std::string_view bytes, UINT codePage) {
  const int size = static_cast<int>(bytes.size());
  std::wstring text(bytes.size(), L'\0');  // no code page makes more units than it has bytes
  const int length = MultiByteToWideChar(codePage, 0, bytes.data(), size, text.data(), size);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::wstring SystemErrorText(DWORD error) {
  wchar_t* found = nullptr;
  const DWORD flags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM;
  const DWORD userDefault = MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT);
  FormatMessageW(flags, nullptr, error, userDefault, reinterpret_cast<wchar_t*>(&found), 0, nullptr);
  if (!found) return L"Error " + std::to_wstring(static_cast<int>(error));
  std::wstring text = found;
  LocalFree(found);
  return text;
}

std::wstring LocalTimeText(std::int64_t seconds) {
  constexpr std::int64_t kFrom1601 = 11'644'473'600;
  const auto ticks = static_cast<std::uint64_t>(seconds + kFrom1601) * 10'000'000;
  const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  SYSTEMTIME utc{}, local{};
  FileTimeToSystemTime(&time, &utc);
  SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
  wchar_t date[80] = L"", clock[80] = L"";
  GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &local, nullptr, date, 80);
  GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &local, nullptr, clock, 80);
  return std::wstring(date) + L" " + clock;
}

std::wstring WindowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::wstring FormatText(const wchar_t* format, ...) {
  // The runtime's own form: the standard one of this compiler takes "%s" for narrow text.
  va_list arguments;
  va_start(arguments, format);
  va_list again;
  va_copy(again, arguments);
  // Negative for a text that cannot be made.
  const int length = _vscwprintf(format, arguments);
  std::wstring text(length < 0 ? 0 : static_cast<std::size_t>(length), L'\0');
  _vsnwprintf(text.data(), text.size(), format, again);
  va_end(again);
  va_end(arguments);
  return text;
}

// Texts of the program and of the system.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

// A text of the string table; empty if there is none.
std::wstring LoadResString(UINT id);

// Bytes of a code page as wide text. Invalid bytes become what the system makes of them.
std::wstring Widen(std::string_view bytes, UINT codePage);

// The system's words for an error code, in the user's language, as they come: with a line break at their end. "Error 5"
// where the system has none.
std::wstring SystemErrorText(DWORD error);

// A time [s since 1970] as the user writes it, in local time.
std::wstring LocalTimeText(std::int64_t seconds);

// The text of a window.
std::wstring WindowText(HWND window);

// printf over wide text, "%s" being wide. The format is the program's own or a resource, never a text from a file.
std::wstring FormatText(const wchar_t* format, ...);

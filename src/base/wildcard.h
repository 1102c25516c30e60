// Patterns of names, as users write them for many files at once.
#pragma once

#include <string_view>

// Whether a name fits a pattern of "*" for any text and "?" for one character; without regard to case in ASCII.
bool FitsPattern(std::wstring_view name, std::wstring_view pattern);

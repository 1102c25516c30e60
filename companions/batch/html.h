// Texts and links as HTML takes them, whatever the names of files hold.
#pragma once

#include <string>
#include <string_view>

// A text as HTML takes it, also in attributes in quotes. Control characters, which HTML does not take, become U+FFFD.
std::string Escaped(std::string_view utf8);

// The address of a file by its path, which is relative to the page or full; folders are parted by "\\" or "/".
std::string LinkTo(std::wstring_view path);

// Paths of Linux and the Mac in the form in which the program keeps paths, and back.
//
// The program takes paths apart at "\\", as Windows does. Here a "\\" stands for each "/", and one that is really in a
// name is U+F05C, as other programs that bring Windows paths to such systems have it. Bytes that are no UTF-8 are kept
// (base/utf8.h), so that every name there is leads to its file.
#pragma once

#include <string>
#include <string_view>

std::string NativePath(std::wstring_view path);
std::wstring PathFromNative(std::string_view native);

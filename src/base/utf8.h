// Wide text and UTF-8, in both directions: files and consoles take bytes, the program keeps names and texts wide, in
// UTF-16 or UTF-32 as the system has it.
//
// A name on a disk may hold bytes that are no UTF-8. Each of them is kept as one unit of its own, U+DC80 to U+DCFF, so
// that the name leads back to its file; a text for people shows what is no character as U+FFFD.
#pragma once

#include <string>
#include <string_view>

// The text for people: U+FFFD stands for all that is no character, lone surrogates included.
std::string Utf8Of(std::wstring_view text);

// The name for the system: units that stand for a byte become that byte again; other lone surrogates are U+FFFD.
std::string NameBytesOf(std::wstring_view name);

// The text of bytes. A byte that belongs to no character becomes the unit that stands for it. Characters that are spelt
// longer than they need be, halves of a pair and those beyond U+10FFFF are none.
std::wstring WideOf(std::string_view utf8);

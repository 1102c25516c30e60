// How a name is spelled for a search: as it is written, but for what looks alike, and in Roman letters as it is said.
//
// Names of waves are kana, Roman letters, or both, and a keyboard gives what it gives: the two spellings are what a
// typed part and a name are compared by. Portable; no locale has a say.
#pragma once

#include <string>
#include <string_view>

// The text in lower case, with letters and kana of one width, hiragana for katakana, and a kana with its voicing mark
// as one character. Control characters become blanks.
std::wstring PlainSpelling(std::wstring_view text);

bool HasKana(std::wstring_view plain);

// A plain spelling with its kana as they are typed, and one way to write each: "si" for "shi", "tu" for "tsu", "zya"
// for "ja", a doubled consonant for a small tsu, a second vowel for a long mark. Some that sound alike become the same,
// as "zi" and "di". `isTyped`: the text may break off within a syllable, and an end that could become either of two
// spellings is taken for the letters that both begin with, so that names that fit stay listed while somebody types.
std::wstring RomajiSpelling(std::wstring_view plain, bool isTyped);

// Names of notes, as resamplers take them: a note of the scale and an octave, A4 being number 69.
#pragma once

#include <string>

// "C1" to "B8" for 24 to 119; empty for any other number.
std::wstring NoteNameFromNumber(int number);

// The number of a name in upper or lower case, of any octave; -1 for a text that is no name.
int NoteNumberFromName(const std::wstring& text);

// The call of a host to a resampler: the positions of its command line, taken apart.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct NoteToRender {
  double hz = 440.0;                    // of the note's name
  double velocity = 100.0;              // percent; the consonant takes 2 ^ (1 - velocity / 100) of its length
  double offsetMs = 0.0;                // where the sound is taken from
  double lengthMs = 0.0;                // of the note, above 0
  double consonantMs = 0.0;             // from the offset on, kept out of the stretching
  double cutoffMs = 0.0;                // left out at the end; a negative one counts from the offset to where it ends
  double volume = 100.0;                // percent
  double modulation = 0.0;              // percent of the sung deviations from the average pitch that are kept
  double tempo = 120.0;                 // beats per minute
  std::vector<double> pitchBend = {0};  // [cents], 96 to a beat from the start of the note; never empty
};

struct ResamplerCall {
  std::wstring input;
  std::wstring output;               // empty where only the map is wanted
  std::optional<NoteToRender> note;  // exactly where there is an output
};

// Reads the arguments behind the program's name: input, output, note name, velocity, flags, offset, length, consonant,
// cutoff, volume, modulation, "!" and tempo, pitch bend. All behind the length may be missing. An output called "nul"
// asks for the map alone, and then nothing behind it is looked at: programs that only want the map put dummies there.
// None for a call that makes no sense. Flags are taken and have no effect.
std::optional<ResamplerCall> ParseCall(const std::vector<std::wstring>& arguments);

// A curve of cents: two characters for each value, which are the twelve bits of a signed number in the alphabet of base
// 64, high ones first, and "#n#" for n more of the last value. It ends at the first character that does not fit.
std::vector<double> DecodePitchBend(std::wstring_view text);

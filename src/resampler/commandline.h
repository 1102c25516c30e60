// What a resampler is called with: the command line that makes a wave's map, and the one that renders a preview.
//
// Resamplers of all families take the same positions, and hosts have always written them in these very forms.
#pragma once

#include <cstdint>
#include <string>

#include "voicebank/wavefile.h"

// The line that makes a map: a note that nobody wants, since the map beside the wave is what the run is for.
std::wstring CreateCommandLine(const std::wstring& wave);

// What the user asks of a preview.
struct RenderSettings {
  int PitchShift = 0;    // semitones
  int Modulation = 100;  // percent
  std::wstring Flags;    // without double quotes
  bool Direct = false;   // play the wave itself

  friend bool operator==(const RenderSettings&, const RenderSettings&) = default;
};

// Percent of modulation that a text asks for: all of it where nothing was typed, 0 for what is no number, and -200 to
// 200 else.
int ModulationFromText(const std::wstring& text);

// Flags stand in double quotes on the command line, and hold none.
std::wstring WithoutQuotes(std::wstring flags);

// The note that is nearest to a map's average [Hz], shifted by semitones. Averages under 55 Hz, and what is no number,
// count as 55 Hz.
int NoteToRender(double hz, int pitchShift);

// Length [ms] of a wave at its own rate, to the precision of a float. Computed in integers of 32 bits, which wrap for
// data over 512 MiB; 0 for a format without channels, bits or rate.
double RenderLengthMs(const WaveFormat& format, std::uint32_t dataSize);

// The line that renders a whole wave at its average pitch. A note that has no name leaves its position empty, and two
// blanks stand side by side.
std::wstring RenderCommandLine(const std::wstring& wave, const std::wstring& output, double keyHz, double lengthMs,
                               const RenderSettings& settings);

// The command lines of a resampler: the one that makes a wave's map, and the one that renders a preview.
//
// Resamplers of all families take the same positions, and hosts have always written them in these very forms.
#pragma once

#include <cstdint>
#include <string>

#include "voicebank/wavefile.h"

// The line that makes a map. Nobody wants the note that it asks for, since the run is for the map beside the wave.
std::wstring CreateCommandLine(const std::wstring& wave);

// The user's wishes for a preview.
struct RenderSettings {
  int PitchShift = 0;    // semitones
  int Modulation = 100;  // percent
  std::wstring Flags;    // without double quotes
  bool Direct = false;   // play the wave itself

  friend bool operator==(const RenderSettings&, const RenderSettings&) = default;
};

// The modulation that a text asks for [percent]: all of it where nothing was typed, 0 for what is no number, and -200
// to 200 else.
int ModulationFromText(const std::wstring& text);

// Flags stand in double quotes on the command line, and hold none.
std::wstring WithoutQuotes(std::wstring flags);

// The note that is nearest to a map's key [Hz], shifted by semitones. A key under 55 Hz, or one that is no number,
// counts as 55 Hz.
int NoteToRender(double hz, int pitchShift);

// Length [ms] of a wave at its own rate, to the precision of a float. Computed in integers of 32 bits, which wrap for
// data over 512 MiB; 0 for a format without channels, bits or rate.
double RenderLengthMs(const WaveFormat& format, std::uint32_t dataSize);

// The line that renders a whole wave at its key. A note that has no name leaves its position empty, and two blanks
// stand side by side.
std::wstring RenderCommandLine(const std::wstring& wave, const std::wstring& output, double keyHz, double lengthMs,
                               const RenderSettings& settings);

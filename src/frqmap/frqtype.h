// The numbers of the kinds of frequency map, and how their files are named. What a kind is tells its row (mapkind.h).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/sample.h"

enum FrqType : std::int32_t {
  FrqTypeUnknown = -1,
  FrqTypeFrq = 0,
  FrqTypeVs4ufrq = 1,
  FrqTypeFrc = 2,
  FrqTypePmk = 3,
  FrqTypeDio = 4,
  FrqTypeMrq = 5,
};

// Frequency [Hz] of a frame without pitch, and the strict threshold above which a frequency is a pitch.
inline constexpr double FrqNoPitch = 55.0;

// Samples per second of every map's time axis, whatever the rate of its wave.
inline constexpr SampleCount FrqSampleRate = 44100;

// Extension with its dot, "" for an unknown kind.
std::wstring_view FrqExtensionW(FrqType kind);

// The first kind whose extension ends the path, without regard to case; FrqTypeUnknown if none does.
FrqType FrqTypeFromPathW(std::wstring_view path);

// Name of the map file of a wave: a.wav gives a_wav.frq, or a.dio and a.mrq for the two kinds that drop the wave's
// extension. The last "." of the whole path counts, also one in a folder's name.
std::wstring MapPathFromWaveW(std::wstring_view wavePath, FrqType kind);

// The way back: a.dio and a_wav.frq give a.wav. What held no "_" comes back as it was.
std::wstring WavePathFromMapW(std::wstring_view mapPath);

// The analysis file that one resampler family keeps beside a wave: a.wav.llsm.
std::wstring LlsmPathFromWave(std::wstring_view wavePath);

// Highest frequency [Hz] that a kind can hold: 44100 / 50 for .pmk, whose periods are whole samples and not under 50;
// note 119 for all others.
double MaxFrequencyOfKind(FrqType kind);

// Lowest frequency [Hz] that an edit may give before the frame counts as one without pitch.
double MinFrequencyOfKind(FrqType kind);

// Frames in a map file of `size` bytes, told from its size alone; records, not frames, for .pmk. 0 where the file is
// smaller than its header, for .mrq, and for unknown kinds.
std::uint32_t FrameCountFromFileSize(std::uint32_t size, FrqType kind);

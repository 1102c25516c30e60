// WaveHeader: format and, when asked for, samples of a wave file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "voicebank/wavefile.h"

// Whether the name is one of a wave that can be read: .wav and .wave, .aif and .aiff, without regard to case.
bool IsSoundFile(const std::wstring& path);

class WaveHeader {
 public:
  WaveFormat format;
  std::vector<std::uint8_t> extension;  // bytes of the format of a .wav behind its fields
  std::vector<std::uint8_t> samples;    // the data chunk; empty after a header-only read
  std::uint32_t dataSize = 0;           // bytes in the data chunk, also after a header-only read
  bool loaded = false;

  void Reset();

  // 0 or -1. The name tells the kind of file, without regard to case: .wav and .wave, .aif and .aiff. Another name is
  // refused unread and changes nothing, while a failed read leaves the defaults.
  int Load(const std::wstring& path, bool headerOnly);
  // Load with the samples, within limits: -1 for a wave that has more bytes of samples than `mostBytes` or is longer
  // than `mostSeconds`. Opens the file once, and reads of a .wav that is too large the header alone.
  int LoadWithin(const std::wstring& path, std::uint32_t mostBytes, double mostSeconds);
  // Load for a file of any name, read as a .wav.
  int LoadWav(const std::wstring& path, bool headerOnly);
  // Load for a file of any name, read as an AIFF, always with the samples. A file beyond 64 MiB is refused.
  int LoadAiff(const std::wstring& path);

  // Length [s], told in whole milliseconds: computed in integers that truncate, and wrap for data over 512 MiB.
  // 0 for a format that has no channels, bits or rate.
  double LengthSeconds() const;

 private:
  int Take(std::optional<DecodedWave> wave);
};

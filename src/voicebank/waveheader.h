// WaveHeader: format and, when asked for, samples of a wave file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The first seven fields of a wave's "fmt " chunk, as they lie in the file.
struct WaveFormat {
  std::uint16_t formatTag = 0;
  std::uint16_t channels = 1;
  std::uint32_t samplesPerSec = 44100;
  std::uint32_t avgBytesPerSec = 0;
  std::uint16_t blockAlign = 0;
  std::uint16_t bitsPerSample = 16;
  std::uint16_t extraSize = 0;
};

class WaveHeader {
 public:
  WaveFormat format;
  std::vector<std::uint8_t> samples;  // the data chunk; empty after a header-only read
  std::uint32_t dataSize = 0;         // bytes in the data chunk, also after a header-only read
  bool loaded = false;

  void Reset();

  // 0 or -1. Only ".wav" and ".wave" are known, without regard to case; another name is refused unread and changes
  // nothing, while a failed read leaves the defaults.
  int Load(const std::wstring& path, bool headerOnly);

  // Length [s], told in whole milliseconds: computed in integers that truncate, and wrap for data over 512 MiB.
  // 0 for a format that has no channels, bits or rate.
  double LengthSeconds() const;

 private:
  bool LoadWav(const std::wstring& path, bool headerOnly);
};

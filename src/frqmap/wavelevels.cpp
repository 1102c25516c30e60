#include "frqmap/wavelevels.h"

#include <exception>

#include "frqmap/levels.h"
#include "voicebank/waveheader.h"

int ReadWaveLevels(const std::wstring& wavePath, std::vector<double>& levels, SampleCount hop) {
  levels.clear();
  WaveHeader wave;
  if (wave.Load(wavePath, false) != 0 || wave.format.bitsPerSample != 16) return -1;
  try {
    levels = LevelsOfSamples(wave.samples, wave.format.channels, hop);
  } catch (const std::exception&) {
    return -1;  // a tiny hop makes many levels; the map is worth more than they are
  }
  return 0;
}

std::uint32_t ReadSamplesPerChannel(const std::wstring& wavePath) {
  WaveHeader wave;
  // A header that cannot be read leaves the defaults, which tell of no data.
  wave.Load(wavePath, true);
  if (wave.format.bitsPerSample == 0 || wave.format.channels == 0) return 0;
  return wave.dataSize * 8u / wave.format.bitsPerSample / wave.format.channels;
}

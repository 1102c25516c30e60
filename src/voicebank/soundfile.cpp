#include "voicebank/soundfile.h"

#include <cstdint>

#include "voicebank/waveheader.h"

namespace {

constexpr std::uint32_t kMostBytes = 32 << 20;

}  // namespace

std::optional<Sound> ReadRecording(const std::wstring& path) {
  WaveHeader wave;
  if (wave.Load(path, false) != 0 && wave.LoadWav(path, false) != 0) return std::nullopt;
  return SoundOfWave(wave.format, wave.samples);
}

std::optional<Sound> ReadSound(const std::wstring& path, double mostSeconds) {
  WaveHeader wave;
  if (wave.LoadWithin(path, kMostBytes, mostSeconds) != 0) return std::nullopt;
  return SoundOfWave(wave.format, wave.samples);
}

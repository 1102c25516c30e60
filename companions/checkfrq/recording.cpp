#include "recording.h"

#include <cstdint>

#include "frqmap/frqtype.h"
#include "voicebank/waveheader.h"

namespace {

// What is made of a wave to listen to it takes some six times its bytes for a while, in a process of 32 bits.
constexpr std::uint32_t kMostBytes = 32 << 20;

}  // namespace

std::wstring WaveOfMap(std::u16string_view mapPath) {
  std::wstring path = WavePathFromMapW(std::wstring(mapPath.begin(), mapPath.end()));
  const bool isFull = path.starts_with(L"\\\\") || (path.size() > 2 && path[1] == L':' && path[2] == L'\\');
  return isFull ? path : std::wstring();
}

std::optional<Sound> ReadRecording(const std::wstring& wavePath, double mostSeconds) {
  WaveHeader wave;
  if (wave.LoadWav(wavePath, true) != 0 || wave.dataSize > kMostBytes || wave.LengthSeconds() > mostSeconds ||
      wave.LoadWav(wavePath, false) != 0) {
    return std::nullopt;
  }
  return SoundOfWave(wave.format, wave.samples);
}

#include "recording.h"

#include <cstdint>
#include <exception>
#include <string>

#include "frqmap/frqtype.h"
#include "voicebank/waveheader.h"

namespace {

constexpr double kLongestSeconds = 600.0;
constexpr std::uint32_t kMostBytes = 64 << 20;

bool IsFullPath(const std::wstring& path) {
  return path.starts_with(L"\\\\") || (path.size() > 2 && path[1] == L':' && path[2] == L'\\');
}

bool IsBearable(const WaveHeader& wave) {
  return wave.dataSize <= kMostBytes && wave.LengthSeconds() <= kLongestSeconds;
}

}  // namespace

std::optional<Sound> RecordingOf(std::u16string_view mapPath) noexcept {
  try {
    const std::wstring path = WavePathFromMapW(std::wstring(mapPath.begin(), mapPath.end()));
    if (!IsFullPath(path)) return std::nullopt;
    WaveHeader wave;
    if (wave.LoadWav(path, true) != 0 || !IsBearable(wave) || wave.LoadWav(path, false) != 0) return std::nullopt;
    return SoundOfWave(wave.format, wave.samples);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

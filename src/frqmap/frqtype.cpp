#include "frqmap/frqtype.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

struct KindRow {
  std::string_view ExtensionA;
  std::wstring_view ExtensionW;
  std::uint32_t HeaderBytes;
  std::uint32_t RecordBytes;  // 0: no file of its own, so that no size tells anything
};

// One row per kind, in the order of FrqType.
constexpr std::array<KindRow, 6> kKinds = {{
    {".frq", L".frq", 40, 16},
    {".vs4ufrq", L".vs4ufrq", 1384, 104},
    {".frc", L".frc", 40, 16},
    {".pmk", L".pmk", 14, 8},
    {".dio", L".dio", 20, 16},
    {".mrq", L".mrq", 0, 0},
}};

const KindRow* RowOf(FrqType kind) {
  return kind == FrqTypeUnknown ? nullptr : &kKinds[kind];
}

// Map files of these two are named like the wave without its extension, so the way back always gives ".wav".
bool DropsWaveExtension(FrqType kind) {
  return kind == FrqTypeDio || kind == FrqTypeMrq;
}

// Extensions are plain ASCII, so no locale has a say.
template <typename Char>
bool EqualsIgnoringCase(std::basic_string_view<Char> a, std::basic_string_view<Char> b) {
  const auto lower = [](Char c) { return c >= 'A' && c <= 'Z' ? static_cast<Char>(c - 'A' + 'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](Char x, Char y) { return lower(x) == lower(y); });
}

template <typename Char>
FrqType KindOfExtension(std::basic_string_view<Char> extension, std::basic_string_view<Char> KindRow::*column) {
  const auto row = std::find_if(kKinds.begin(), kKinds.end(), [&](const KindRow& candidate) {
    return EqualsIgnoringCase(extension, candidate.*column);
  });
  return row == kKinds.end() ? FrqTypeUnknown : static_cast<FrqType>(row - kKinds.begin());
}

// What stands from the last "." on, also where that dot is in a folder's name. In code page 932 a "." is never the
// second byte of a character, so both forms may look for it character by character.
template <typename Char>
std::basic_string_view<Char> FromLastDot(std::basic_string_view<Char> path) {
  const std::size_t dot = path.rfind(Char{'.'});
  return dot == path.npos ? std::basic_string_view<Char>() : path.substr(dot);
}

template <typename Char>
std::basic_string<Char> MapPathFromWave(std::basic_string_view<Char> wave, FrqType kind,
                                        std::basic_string_view<Char> extension) {
  const std::basic_string_view<Char> waveExtension = FromLastDot(wave);
  std::basic_string<Char> path(wave.substr(0, wave.size() - waveExtension.size()));
  if (!waveExtension.empty() && !DropsWaveExtension(kind)) path.append(1, Char{'_'}).append(waveExtension.substr(1));
  return path.append(extension);
}

// `underscore` is where the last "_" stands: finding it is what the two forms do differently.
template <typename Char>
std::basic_string<Char> WavePathFromMap(std::basic_string_view<Char> map, std::size_t underscore,
                                        std::basic_string_view<Char> KindRow::*column) {
  constexpr std::string_view kWave = ".wav";
  const std::basic_string_view<Char> extension = FromLastDot(map);
  std::size_t end = underscore;
  if (DropsWaveExtension(KindOfExtension(extension, column))) end = map.size() - extension.size();
  std::basic_string<Char> path(map.substr(0, end));
  if (end != map.npos) path.append(kWave.begin(), kWave.end());
  return path;
}

bool IsLeadByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

// The last one-byte character that is one of `wanted`. A second byte that looks like one is stepped over.
std::size_t FindLastCharacterOf(std::string_view path, std::string_view wanted) {
  std::size_t found = path.npos;
  for (std::size_t i = 0; i < path.size(); ++i) {
    if (IsLeadByte(path[i])) {
      ++i;
    } else if (wanted.find(path[i]) != wanted.npos) {
      found = i;
    }
  }
  return found;
}

// The shell's rule: no extension where a "\" or a blank follows the last dot.
std::string_view ShellExtension(std::string_view path) {
  const std::size_t last = FindLastCharacterOf(path, ".\\ ");
  return last == path.npos || path[last] != '.' ? std::string_view() : path.substr(last);
}

}  // namespace

std::string_view FrqExtensionA(FrqType kind) {
  const KindRow* row = RowOf(kind);
  return row ? row->ExtensionA : std::string_view();
}

std::wstring_view FrqExtensionW(FrqType kind) {
  const KindRow* row = RowOf(kind);
  return row ? row->ExtensionW : std::wstring_view();
}

FrqType FrqTypeFromPathA(std::string_view path) {
  return KindOfExtension(ShellExtension(path), &KindRow::ExtensionA);
}

FrqType FrqTypeFromPathW(std::wstring_view path) {
  return KindOfExtension(FromLastDot(path), &KindRow::ExtensionW);
}

std::string MapPathFromWaveA(std::string_view wavePath, FrqType kind) {
  return MapPathFromWave(wavePath, kind, FrqExtensionA(kind));
}

std::wstring MapPathFromWaveW(std::wstring_view wavePath, FrqType kind) {
  return MapPathFromWave(wavePath, kind, FrqExtensionW(kind));
}

std::string WavePathFromMapA(std::string_view mapPath) {
  return WavePathFromMap(mapPath, FindLastCharacterOf(mapPath, "_"), &KindRow::ExtensionA);
}

std::wstring WavePathFromMapW(std::wstring_view mapPath) {
  return WavePathFromMap(mapPath, mapPath.rfind(L'_'), &KindRow::ExtensionW);
}

std::wstring LlsmPathFromWave(std::wstring_view wavePath) {
  return std::wstring(wavePath).append(L".llsm");
}

// Note 119 stands as a number, so that every platform's pow gives the same last digit.
double MaxFrequencyOfKind(FrqType kind) {
  return kind == FrqTypePmk ? FrqSampleRate / 50.0 : 7902.132820097988;
}

// For .pmk an edit under a tenth of the highest frequency gives a frame without pitch. Users rely on that drop: it is
// no clamp at 88.2.
double MinFrequencyOfKind(FrqType kind) {
  return kind == FrqTypePmk ? 88.2 : FrqNoPitch;
}

std::uint32_t FrameCountFromFileSize(std::uint32_t size, FrqType kind) {
  const KindRow* row = RowOf(kind);
  if (!row || row->RecordBytes == 0 || size < row->HeaderBytes) return 0;
  return (size - row->HeaderBytes) / row->RecordBytes;
}

#include "frqmap/frqtype.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

struct KindRow {
  std::wstring_view Extension;
  std::uint32_t HeaderBytes;
  std::uint32_t RecordBytes;  // 0: no file of its own, so that no size tells anything
};

// One row per kind, in the order of FrqType.
constexpr std::array<KindRow, 6> kKinds = {{
    {L".frq", 40, 16},
    {L".vs4ufrq", 1384, 104},
    {L".frc", 40, 16},
    {L".pmk", 14, 8},
    {L".dio", 20, 16},
    {L".mrq", 0, 0},
}};

const KindRow* RowOf(FrqType kind) {
  return kind == FrqTypeUnknown ? nullptr : &kKinds[kind];
}

// Map files of these two are named like the wave without its extension, so the way back always gives ".wav".
bool DropsWaveExtension(FrqType kind) {
  return kind == FrqTypeDio || kind == FrqTypeMrq;
}

// Extensions are plain ASCII, so no locale has a say.
bool EqualsIgnoringCase(std::wstring_view a, std::wstring_view b) {
  const auto lower = [](wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](wchar_t x, wchar_t y) { return lower(x) == lower(y); });
}

// What stands from the last "." on, also where that dot is in a folder's name.
std::wstring_view FromLastDot(std::wstring_view path) {
  const std::size_t dot = path.rfind(L'.');
  return dot == path.npos ? std::wstring_view() : path.substr(dot);
}

}  // namespace

std::wstring_view FrqExtensionW(FrqType kind) {
  const KindRow* row = RowOf(kind);
  return row ? row->Extension : std::wstring_view();
}

FrqType FrqTypeFromPathW(std::wstring_view path) {
  const std::wstring_view extension = FromLastDot(path);
  const auto row = std::find_if(kKinds.begin(), kKinds.end(), [&](const KindRow& candidate) {
    return EqualsIgnoringCase(extension, candidate.Extension);
  });
  return row == kKinds.end() ? FrqTypeUnknown : static_cast<FrqType>(row - kKinds.begin());
}

std::wstring MapPathFromWaveW(std::wstring_view wavePath, FrqType kind) {
  const std::wstring_view waveExtension = FromLastDot(wavePath);
  std::wstring path(wavePath.substr(0, wavePath.size() - waveExtension.size()));
  if (!waveExtension.empty() && !DropsWaveExtension(kind)) path.append(1, L'_').append(waveExtension.substr(1));
  return path.append(FrqExtensionW(kind));
}

std::wstring WavePathFromMapW(std::wstring_view mapPath) {
  const std::size_t end = DropsWaveExtension(FrqTypeFromPathW(mapPath)) ? mapPath.rfind(L'.') : mapPath.rfind(L'_');
  const std::wstring path(mapPath.substr(0, end));
  return end == mapPath.npos ? path : path + L".wav";
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

#include "frqmap/frqtype.h"

#include <algorithm>
#include <cstddef>

#include "frqmap/mapkind.h"

namespace {

bool DropsWaveExtension(FrqType kind) {
  const MapKind* const row = FindMapKind(kind);
  return row && row->DropsWaveExtension;
}

// Extensions are plain ASCII, so no locale has a say.
bool EqualsIgnoringCase(std::wstring_view a, std::wstring_view b) {
  const auto lower = [](wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](wchar_t x, wchar_t y) { return lower(x) == lower(y); });
}

// The name from its last "." on, also where that dot is in a folder's name.
std::wstring_view FromLastDot(std::wstring_view path) {
  const std::size_t dot = path.rfind(L'.');
  return dot == path.npos ? std::wstring_view() : path.substr(dot);
}

}  // namespace

std::wstring_view FrqExtensionW(FrqType kind) {
  const MapKind* const row = FindMapKind(kind);
  return row ? row->Extension : std::wstring_view();
}

FrqType FrqTypeFromPathW(std::wstring_view path) {
  const std::wstring_view extension = FromLastDot(path);
  const auto row = std::ranges::find_if(
      MapKinds(), [&](const MapKind& kind) { return EqualsIgnoringCase(extension, kind.Extension); });
  return row == MapKinds().end() ? FrqTypeUnknown : row->Type;
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

double MaxFrequencyOfKind(FrqType kind) {
  const MapKind* const row = FindMapKind(kind);
  return row ? row->HighestHz : FindMapKind(FrqTypeFrq)->HighestHz;
}

double MinFrequencyOfKind(FrqType kind) {
  const MapKind* const row = FindMapKind(kind);
  return row ? row->LowestHz : FrqNoPitch;
}

std::uint32_t FrameCountFromFileSize(std::uint32_t size, FrqType kind) {
  const MapKind* const row = FindMapKind(kind);
  if (!row || row->RecordBytes == 0 || size < row->HeaderBytes) return 0;
  return (size - row->HeaderBytes) / row->RecordBytes;
}

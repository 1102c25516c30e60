#include "resampler/commandline.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cwchar>
#include <limits>

#include "base/notename.h"
#include "frqmap/frqtype.h"

namespace {

constexpr int kAllModulation = 100;  // percent
constexpr int kMostModulation = 200;
constexpr double kHighestHz = 1e6;  // beyond any note; keeps the number of one within its type

// The number as "%g" writes it, whatever the locale: six digits, and two in an exponent.
std::wstring ShortNumber(double value) {
  std::array<char, 32> text;
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, 6);
  return std::wstring(text.data(), end);
}

std::wstring Quoted(const std::wstring& text) {
  return L"\"" + text + L"\"";
}

}  // namespace

std::wstring CreateCommandLine(const std::wstring& wave) {
  return Quoted(wave) + L" nul 100 100 GN 0 50";
}

int ModulationFromText(const std::wstring& text) {
  if (text.empty()) return kAllModulation;
  const long long value = std::wcstoll(text.c_str(), nullptr, 10);
  // The system reads a number from a box likewise: one that its type does not hold is none.
  if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) return 0;
  return static_cast<int>(std::clamp<long long>(value, -kMostModulation, kMostModulation));
}

std::wstring WithoutQuotes(std::wstring flags) {
  std::ranges::replace(flags, L'"', L' ');
  return flags;
}

int NoteToRender(double hz, int pitchShift) {
  const double pitch = hz > FrqNoPitch ? std::min(hz, kHighestHz) : FrqNoPitch;
  return static_cast<int>(12.0 * std::log(pitch / 440.0) / std::log(2.0) + 69.5) + pitchShift;
}

double RenderLengthMs(const WaveFormat& format, std::uint32_t dataSize) {
  if (format.bitsPerSample == 0 || format.channels == 0 || format.samplesPerSec == 0) return 0.0;
  const std::uint32_t frames = dataSize * 8u / format.bitsPerSample / format.channels;
  return static_cast<float>(frames * 1000.0 / format.samplesPerSec);
}

std::wstring RenderCommandLine(const std::wstring& wave, const std::wstring& output, double keyHz, double lengthMs,
                               const RenderSettings& settings) {
  const std::wstring note = NoteNameFromNumber(NoteToRender(keyHz, settings.PitchShift));
  // Velocity 100, then the flags; offset 0, the length, no consonant and no cutoff; volume 100, the modulation; 120
  // beats a minute, and a pitch bend that is flat.
  return Quoted(wave) + L" " + Quoted(output) + L" " + note + L" 100 " + Quoted(settings.Flags) + L" 0 " +
         ShortNumber(lengthMs) + L" 0 0 100 " + std::to_wstring(settings.Modulation) + L" !120 AA#1#";
}

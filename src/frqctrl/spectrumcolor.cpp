#include "frqctrl/spectrumcolor.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace {

// The places of the three ramps, first to last: bits of red 0, of green 8, of blue 16.
constexpr int kRed = 0, kGreen = 8, kBlue = 16;
constexpr int kChannels[][3] = {
    {kBlue, kGreen, kRed}, {kBlue, kRed, kGreen}, {kGreen, kBlue, kRed},
    {kGreen, kRed, kBlue}, {kRed, kGreen, kBlue}, {kRed, kBlue, kGreen},
};

std::uint32_t Brightened(int value, int channel) {
  return static_cast<std::uint32_t>(value / 2 + 128) << channel;
}

}  // namespace

std::uint32_t SpectrumColor(int colorTable, int level, bool highContrast) {
  const bool grey = highContrast || colorTable < 0 || colorTable >= static_cast<int>(std::size(kChannels));
  std::uint32_t color = 0;
  for (int ramp = 0; ramp < 3; ++ramp) {
    const int value = grey ? level : std::clamp(3 * (level - 85 * ramp), 0, 255);
    color |= Brightened(value, kChannels[grey ? 0 : colorTable][ramp]);
  }
  return color;
}

SpectrumPalette SpectrumColors(int colorTable, bool highContrast) {
  std::array<std::uint32_t, 256> colors;
  for (std::size_t level = 0; level < colors.size(); ++level) {
    colors[level] = SpectrumColor(colorTable, static_cast<int>(level), highContrast);
  }
  return colors;
}

// The colours of the spectrum: three ramps over an intensity, dealt out to red, green and blue by a colour table.
#pragma once

#include <array>
#include <cstdint>

// 0x00BBGGRR, as COLORREF has it. The least is mid-grey and the greatest white, so that the curve reads on all of them.
// `colorTable`: 0 Cool, 1 Purple, 2 Jade, 3 Grassy, 4 Flame, 5 Ruby; with `highContrast`, or any other, it is grey.
// `level`: 0 to 255.
std::uint32_t SpectrumColor(int colorTable, int level, bool highContrast);

using SpectrumPalette = std::array<std::uint32_t, 256>;

// The colours of all levels.
SpectrumPalette SpectrumColors(int colorTable, bool highContrast);

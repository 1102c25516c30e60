#include "frqctrl/palette.h"

namespace {

// COLORREF is 0x00BBGGRR; the order is that of TableColor.
constexpr TablePalette kNormal = {
    0xFFFFFF, 0xFFFFFF, 0xC0C0C0, 0xE0E0E0, 0x808080, 0xFFFF00, 0x0000FF, 0x577AB9,
    0xFF0000, 0x0000FF, 0x577AB9, 0x808080, 0xFF8080, 0x8080FF, 0x00FF00, 0xC0C0FF,
};
constexpr TablePalette kHighContrast = {
    0xFFFFFF, 0xFFFFFF, 0xC0C0C0, 0xE0E0E0, 0x000000, 0xE0E0E0, 0x000000, 0xB0B0B0,
    0x404040, 0x000000, 0xB0B0B0, 0x808080, 0x606060, 0x202020, 0xE0E0E0, 0x808080,
};

}  // namespace

const TablePalette& PaletteFor(bool highContrast) {
  return highContrast ? kHighContrast : kNormal;
}

bool IsHighContrast() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof(contrast);
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

// CFrqCtrl: the spectrum of the recording behind the curve.
//
// It is analysed late, on the first paint that needs it, and painted cell by cell into the layer's memory.
#include <windows.h>

#include <algorithm>
#include <array>
#include <exception>
#include <vector>

#include "frqctrl/frqctrl.h"
#include "frqctrl/spectrumcolor.h"
#include "voicebank/waveheader.h"

namespace {

// What a column is in samples where no map tells it.
constexpr double kUsualHop = 256.0;
constexpr double kProjectHop = 220.5;

// A column of cells: its pixels, and the steps of its notes.
struct CellColumn {
  std::size_t left;
  std::size_t right;
  const std::uint8_t* steps;
};

}  // namespace

void CFrqCtrl::ForgetSpectrum() {
  Steps.reset();
  Spectrum.Free();
  SampleRate = 0;
}

// A table that comes out empty is asked for again with the next paint: the wave may be there by then.
int CFrqCtrl::EnsureSpectrum() {
  if (!Spectrum.empty()) return 0;
  // Under the box that tells of an error the window may be painted again.
  if (Analyzing) return -1;
  WaveHeader wave;
  if (wave.Load(WavePath, false) != 0) return -1;
  Analyzing = true;
  try {
    AnalyzeWave(Spectrum, {wave.format.channels, wave.format.bitsPerSample, wave.samples});
    SampleRate = wave.format.samplesPerSec;
    Steps.emplace(Spectrum, SampleRate);
  } catch (const std::exception& error) {
    ForgetSpectrum();
    MessageBoxA(GetActiveWindow(), error.what(), nullptr, MB_ICONERROR);
    InvalidateRect(Hwnd, nullptr, FALSE);  // what the box has covered
  }
  Analyzing = false;
  return 0;
}

double CFrqCtrl::ColumnHop() const {
  if (IsMapLoaded()) return Map->Hop;
  return MapKind == FrqTypeVs4ufrq ? kProjectHop : kUsualHop;
}

void CFrqCtrl::DrawSpectrum(PixelBitmap& pixels) {
  const PixelRect& plot = Geometry.PlotRect;
  const SpectrumPalette colors = SpectrumColors(ColorTable, IsHighContrast());
  GdiFlush();
  pixels.Fill({plot.left, plot.top, plot.right, plot.bottom}, colors[0]);
  if (plot.left >= plot.right || WavePath.empty() || EnsureSpectrum() != 0 || Spectrum.empty()) return;
  const IntensityTable intensity(Brightness);
  std::array<std::uint32_t, 256> pixelOfStep;
  for (std::size_t step = 0; step < pixelOfStep.size(); ++step) {
    pixelOfStep[step] = PixelBitmap::PixelOf(colors[intensity.OfStep(static_cast<std::uint8_t>(step))]);
  }

  const double width = Geometry.ColumnWidth();
  std::vector<CellColumn> columns;
  Geometry.WalkColumns([&](std::int64_t column, double x) {
    const std::int64_t entry = SpectrumEntryOfColumn(column, ColumnHop(), Spectrum.size());
    if (entry >= 0) {
      const int right = std::min(plot.right, static_cast<int>(x + width));
      columns.push_back(
          {static_cast<std::size_t>(x), static_cast<std::size_t>(right), Steps->Of(static_cast<std::size_t>(entry))});
    }
    return true;
  });

  const auto plotLeft = static_cast<std::size_t>(plot.left);
  // A note's cells are found once, in its first row of pixels, and copied to its others.
  int noteAbove = kNoNote;
  for (int y = plot.top; const int note : Geometry.NotesOfSpectrumRows()) {
    if (note == noteAbove && note != kNoNote) {
      std::ranges::copy(pixels.Row(y - 1).subspan(plotLeft), pixels.Row(y).begin() + plot.left);
    } else if (note != kNoNote) {
      const std::span<std::uint32_t> row = pixels.Row(y);
      const auto index = static_cast<std::size_t>(Steps->IndexOf(note));
      for (const CellColumn& column : columns) {
        std::ranges::fill(row.subspan(column.left, column.right - column.left), pixelOfStep[column.steps[index]]);
      }
    }
    noteAbove = note;
    ++y;
  }
}

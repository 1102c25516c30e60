#include "frqctrl/spectrumbands.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numbers>

#include "base/note.h"

namespace {

constexpr int kSilentStep = 128;  // t of the level 0.0
constexpr int kLowestBrightness = -5;
constexpr int kOffsets[] = {130, 140, 150, 160, 185, 200, 210, 225, 230};  // uneven, tuned by eye

double EdgeBin(double hz, std::uint32_t sampleRate) {
  const double binWidth = sampleRate * (1.0 / 2048.0);
  const double bin = hz * 3.0 / binWidth / std::numbers::pi;
  if (bin < 0.0) return 0.0;
  return bin >= 1024.0 ? 1023.0 : bin;
}

// The magnitude at a bin that is not whole.
double MagnitudeAt(double bin, const double* magnitudes) {
  const auto whole = static_cast<std::size_t>(bin);
  const double fraction = bin - static_cast<double>(whole);
  if (fraction == 0.0) return magnitudes[whole];
  const double above = whole + 1 < SpectrumBins ? magnitudes[whole + 1] : 0.0;
  return (1.0 - fraction) * magnitudes[whole] + fraction * above;
}

// t = trunc(level^0.4 * 512 + 128), held where an integer holds it.
int TruncatedPower(double level) {
  if (!(level > 0.0)) return kSilentStep;
  return static_cast<int>(std::min(std::pow(level, 0.4) * 2048.0 * 0.25 + 128.0, 1e6));
}

int IntensityOf(int t, int brightness) {
  const int column = brightness - kLowestBrightness;
  if (column < 0 || column >= static_cast<int>(std::size(kOffsets))) return std::clamp(t, 0, 255);
  return std::clamp((t - kOffsets[column]) * 5, 0, 255);
}

// The least level of each step from 1 on, found by halving: neighbouring doubles have neighbouring bits, and a power
// never falls where its base rises.
std::array<double, 255> MakeThresholds() {
  std::array<double, 255> thresholds;
  std::uint64_t low = 0;
  for (std::size_t i = 0; i < thresholds.size(); ++i) {
    std::uint64_t high = std::bit_cast<std::uint64_t>(1.0);
    const int wanted = kSilentStep + static_cast<int>(i) + 1;
    while (low + 1 < high) {
      const std::uint64_t middle = low + (high - low) / 2;
      (TruncatedPower(std::bit_cast<double>(middle)) < wanted ? low : high) = middle;
    }
    thresholds[i] = std::bit_cast<double>(high);
  }
  return thresholds;
}

// The number of sorted thresholds that a level reaches. No branch depends on the level: none could be predicted.
std::uint8_t StepAmong(const std::array<double, 255>& thresholds, double level) {
  std::size_t step = 0;
  for (std::size_t half = 128; half > 0; half /= 2) {
    step += static_cast<std::size_t>(level >= thresholds[step + half - 1]) * half;
  }
  return static_cast<std::uint8_t>(step);
}

const std::array<double, 255>& Thresholds() {
  static const std::array<double, 255> thresholds = MakeThresholds();
  return thresholds;
}

}  // namespace

void BuildNoteBands(int lowNote, int highNote, std::uint32_t sampleRate, std::vector<NoteBand>& bands) {
  for (int note = lowNote; note <= highNote; ++note) {
    bands.push_back({EdgeBin(NoteToHz(note - 0.5), sampleRate), EdgeBin(NoteToHz(note + 0.5), sampleRate)});
  }
}

double BandLevel(const NoteBand& band, const double* magnitudes) {
  if (band.HighBin < band.LowBin) return 0.0;
  const auto low = static_cast<std::size_t>(band.LowBin), high = static_cast<std::size_t>(band.HighBin);
  const double highFraction = band.HighBin - static_cast<double>(high);
  double sum = (static_cast<double>(low + 1) - band.LowBin) * MagnitudeAt(band.LowBin, magnitudes) +
               highFraction * MagnitudeAt(band.HighBin, magnitudes);
  for (std::size_t k = low + 1; k <= high; ++k) sum += magnitudes[k];
  return band.HighBin != band.LowBin ? sum / (band.HighBin - band.LowBin) : sum;
}

std::uint8_t LevelToStep(double level) {
  return StepAmong(Thresholds(), level);
}

IntensityTable::IntensityTable(int brightness) {
  for (std::size_t step = 0; step < intensities_.size(); ++step) {
    intensities_[step] = static_cast<std::uint8_t>(IntensityOf(kSilentStep + static_cast<int>(step), brightness));
  }
}

SpectrumSteps::SpectrumSteps(const SpectrumTable& table, std::uint32_t sampleRate)
    : table_(table), known_(table.size()) {
  constexpr double kLimit = SpectrumBins - 1;
  do {
    const int note = LowestNote + NoteCount();
    BuildNoteBands(note, note, sampleRate, bands_);
  } while (bands_.back().LowBin != kLimit || bands_.back().HighBin != kLimit);
  steps_.resize(table.size() * bands_.size());
}

const std::uint8_t* SpectrumSteps::Of(std::size_t entry) {
  std::uint8_t* const steps = &steps_[entry * bands_.size()];
  if (!known_[entry]) {
    const double* const magnitudes = table_[entry];
    for (std::size_t i = 0; i < bands_.size(); ++i) steps[i] = LevelToStep(BandLevel(bands_[i], magnitudes));
    known_[entry] = true;
  }
  return steps;
}

int SpectrumSteps::IndexOf(int note) const {
  return std::clamp(note - LowestNote, 0, NoteCount() - 1);
}

std::int64_t SpectrumEntryOfColumn(std::int64_t column, double hop, std::size_t entryCount) {
  const double entry = std::trunc(static_cast<double>(column) * (hop / 512.0) + 0.5);
  return entry >= 0.0 && entry < static_cast<double>(entryCount) ? static_cast<std::int64_t>(entry) : -1;
}

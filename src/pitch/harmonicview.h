// The harmonics in a longer stretch of sound around a moment: the levels of its spectrum, and how regularly they lie. A
// correlation of two periods is sharp in time but takes breath for a voice of another pitch; over some fifty
// milliseconds breath comes to nothing and harmonics stand out.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "pitch/realfft.h"
#include "pitch/repetition.h"

inline constexpr std::size_t kViewBins = kFftLength / 3;  // of levels and of lags

struct HarmonicView {
  std::array<float, kViewBins> levels;      // octaves of power over the mean of those looked at, a bin each
  // The inverse transform of the square root of the magnitudes: it is high at the lag of a pitch, and one at 0. (The
  // compression is that of Camacho and Harris 2008; of the transform, Tolonen and Karjalainen 2000.)
  std::array<float, kViewBins> regularity;
};

// The views of a signal, a hundredth of a second apart, made when they are first asked for. Views near the last one
// that was asked for are kept.
class HarmonicViews {
 public:
  explicit HarmonicViews(const Repetition& signal);

  // The view nearest to a moment, or the one `steps` later, negative for earlier, at most kMostSteps either way.
  const HarmonicView& Near(double seconds, std::ptrdiff_t steps = 0);
  static constexpr std::ptrdiff_t kMostSteps = 7;

  // The level at a frequency, between two bins along the line between them. -2 to about 1; 0 outside the bins that are
  // looked at.
  float LevelAt(const HarmonicView& view, double hz) const;
  // The regularity at a lag [s], 0 beyond the lags that there are.
  float RegularityAt(const HarmonicView& view, double lag) const;

 private:
  struct Slot {
    std::ptrdiff_t step = -1;
    HarmonicView view;
  };
  void Look(std::ptrdiff_t step, HarmonicView& view);

  const Repetition& signal_;
  double binsPerHz_;
  std::size_t top_;  // bins that are looked at
  std::vector<float> window_;
  std::vector<Slot> slots_;
  RealFft fft_;
  std::array<float, kFftLength> input_;
  std::array<float, kViewBins> re_, im_;
};

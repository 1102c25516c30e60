// How well a signal repeats itself: the normalised cross-correlation (Talkin 1995) that the candidates for a pitch are
// taken from and weighed by, and the signals that it is asked of. It knows nothing of voices or paths.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

using Signal = std::vector<float>;

// The samples through a Butterworth high-pass of second order, which takes out rumble: that is no voice, but would
// correlate with itself at any lag.
Signal WithoutRumble(std::span<const float> samples, double rate);

// Every `factor`-th sample behind a low-pass that ends at half of what the new rate can hold, so that the peaks of a
// correlation are wide enough to be seen between two lags.
Signal Decimated(const Signal& signal, std::ptrdiff_t factor);

// The signal at `factor` times its rate.
Signal Raised(const Signal& signal, std::ptrdiff_t factor);

class Repetition {
 public:
  Repetition(Signal signal, double rate);

  const Signal& Samples() const { return signal_; }
  double Rate() const { return rate_; }
  std::ptrdiff_t Size() const { return std::ssize(signal_); }

  // Mean square of the 10 ms around a sample.
  double PowerAt(std::ptrdiff_t centre) const;
  double LoudestPower(std::ptrdiff_t step) const;

  // Sets a power that counts as part of every window, so that sound next to silent correlates less.
  void SetNoisePower(double power) { noisePower_ = power; }

  // For each lag from `lag` on, the correlation of two windows of that lag, or of 10 ms where that is longer, that lie
  // so many samples apart and on both sides of a sample; -1 to 1. Near the ends of the signal they are moved inside.
  void AtEach(std::ptrdiff_t centre, std::ptrdiff_t lag, std::span<double> correlations) const;

 private:
  struct Windows {
    std::ptrdiff_t first, length;  // of the first of the two; a length of 0 if the signal is too short
    double energies;               // their product
  };
  Windows WindowsOf(std::ptrdiff_t centre, std::ptrdiff_t lag) const;
  std::ptrdiff_t LeastWindow() const;
  double Energy(std::ptrdiff_t first, std::ptrdiff_t last) const {
    return squares_[static_cast<std::size_t>(last)] - squares_[static_cast<std::size_t>(first)];
  }

  Signal signal_;
  double rate_;
  std::vector<double> squares_ = {0.0};  // summed from the start
  double noisePower_ = 0.0;
};

struct Peak {
  double offset;  // from the middle one of three neighbours, -0.5 to 0.5
  double height;
};

// The peak of the parabola through three values, the middle one being the greatest.
Peak PeakOf(double before, double middle, double after);

struct Repeat {
  double lag;  // [samples]
  double correlation;
};

// The greatest correlation within `reach` samples, at most kMostReach, of a lag.
inline constexpr std::ptrdiff_t kMostReach = 4;
Repeat BestNear(const Repetition& signal, std::ptrdiff_t centre, double nearLag, std::ptrdiff_t reach);

#include "measuring.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

// Samples are taken for a while, so that short work, which is easily disturbed, is measured more often. Where one lasts
// many seconds, three must do.
constexpr double kMeasuringMs = 3000.0;
constexpr double kLongMs = 20000.0;
constexpr std::size_t kFewestSamples = 3;
constexpr std::size_t kEnoughSamples = 9;
constexpr std::size_t kMostSamples = 2000;

// A sample of short work is of several goes, which last as long as this together.
constexpr double kSampleMs = 10.0;
constexpr double kLateStartMs = 1000.0;
constexpr int kMostGoes = 100;
constexpr int kGoesForLeast = 5;

// The number at a part of the way from the least to the greatest, on a straight line between two of them.
double QuantileOf(std::vector<double> numbers, double part) {
  std::ranges::sort(numbers);
  const double place = part * static_cast<double>(numbers.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, numbers.size() - 1);
  return std::lerp(numbers[below], numbers[above], place - static_cast<double>(below));
}

double MedianOf(const std::vector<double>& numbers) {
  return QuantileOf(numbers, 0.5);
}

double CostOf(const std::vector<double>& goes, Taken taken) {
  return taken == Taken::Least ? *std::ranges::min_element(goes) : MedianOf(goes);
}

// Takes samples of both sides. The side that goes first changes with each go, so that what one leaves behind for the
// other, and a machine that slows down, weigh on both alike.
class Sampler {
 public:
  explicit Sampler(const Row& row) : taken_(row.taken), work_(row.setUp()) {
    const auto go = [this] { Go(); };
    // The first go counts for nothing: caches fill, and the system starts what it starts late.
    double ms = MillisecondsOf(go);
    if (ms < kLateStartMs) ms = MillisecondsOf(go);
    goes_ = taken_ == Taken::Least ? kGoesForLeast : 1;
    while (goes_ < kMostGoes && goes_ * ms < kSampleMs) ++goes_;
  }

  void Take() {
    measured_.clear();
    yardstick_.clear();
    spentMs_ += MillisecondsOf([this] {
      for (int i = 0; i < goes_; ++i) Go();
    });
    values_.push_back(CostOf(measured_, taken_));
    yardsticks_.push_back(CostOf(yardstick_, taken_));
    ratios_.push_back(values_.back() / yardsticks_.back());
  }

  bool IsEnough() const {
    if (ratios_.size() < kFewestSamples) return false;
    if (ratios_.size() < kEnoughSamples) return spentMs_ >= kLongMs;
    return spentMs_ >= kMeasuringMs || ratios_.size() >= kMostSamples;
  }

  Measurement Result() const {
    const double median = MedianOf(ratios_), quartiles = QuantileOf(ratios_, 0.75) - QuantileOf(ratios_, 0.25);
    const double spread = median > 0.0 ? quartiles / 2.0 / median : 0.0;
    return {MedianOf(values_), MedianOf(yardsticks_), median, spread};
  }

 private:
  void Go() {
    if (isSwapped_) yardstick_.push_back(work_->Yardstick());
    measured_.push_back(work_->Measured());
    if (!isSwapped_) yardstick_.push_back(work_->Yardstick());
    isSwapped_ = !isSwapped_;
  }

  const Taken taken_;
  const std::unique_ptr<Work> work_;
  int goes_ = 1;
  bool isSwapped_ = false;
  std::vector<double> measured_, yardstick_;  // of one sample
  double spentMs_ = 0.0;
  std::vector<double> values_, yardsticks_, ratios_;
};

}  // namespace

Measurement Measure(const Row& row) {
  Sampler sampler(row);
  do {
    sampler.Take();
  } while (!sampler.IsEnough());
  return sampler.Result();
}

void Require(bool held, const char* what) {
  if (held) return;
  std::fprintf(stderr, "marlit_bench: %s\n", what);
  std::fflush(stderr);
  // The process ends at once: windows of other threads may be in the middle of anything.
  std::_Exit(1);
}

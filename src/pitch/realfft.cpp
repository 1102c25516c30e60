#include "pitch/realfft.h"

#include <cmath>
#include <numbers>

RealFft::RealFft() {
  for (std::size_t k = 0; k < kHalf; ++k) {
    const double angle = -2.0 * std::numbers::pi * static_cast<double>(k) / kFftLength;
    factors_.re[k] = static_cast<float>(std::cos(angle));
    factors_.im[k] = static_cast<float>(std::sin(angle));
    for (std::size_t output = 0; output < 3; ++output) {
      const double turned = 2.0 * angle * static_cast<double>(output + 1);
      firstFactors_[output].re[k] = static_cast<float>(std::cos(turned));
      firstFactors_[output].im[k] = static_cast<float>(std::sin(turned));
    }
  }
}

// The radix-4 autosort transform (Stockham). Each of the neighbours in the first pass has factors of its own, those in
// the other passes share theirs, so that all of them are computed four at a time.
void RealFft::FirstPass(const Complexes& from, Complexes& to) const {
  constexpr std::size_t kQuarter = kHalf / 4;
  const float* __restrict re = from.re.data();
  const float* __restrict im = from.im.data();
  float* __restrict outRe = to.re.data();
  float* __restrict outIm = to.im.data();
  const auto& [first, second, third] = firstFactors_;
  for (std::size_t p = 0; p < kQuarter; ++p) {
    const float sumRe = re[p] + re[p + 2 * kQuarter], sumIm = im[p] + im[p + 2 * kQuarter];
    const float apartRe = re[p] - re[p + 2 * kQuarter], apartIm = im[p] - im[p + 2 * kQuarter];
    const float otherRe = re[p + kQuarter] + re[p + 3 * kQuarter], otherIm = im[p + kQuarter] + im[p + 3 * kQuarter];
    // Times -i.
    const float turnedRe = im[p + kQuarter] - im[p + 3 * kQuarter], turnedIm = re[p + 3 * kQuarter] - re[p + kQuarter];
    const float oneRe = apartRe + turnedRe, oneIm = apartIm + turnedIm;
    const float twoRe = sumRe - otherRe, twoIm = sumIm - otherIm;
    const float threeRe = apartRe - turnedRe, threeIm = apartIm - turnedIm;
    outRe[4 * p] = sumRe + otherRe;
    outRe[4 * p + 1] = oneRe * first.re[p] - oneIm * first.im[p];
    outRe[4 * p + 2] = twoRe * second.re[p] - twoIm * second.im[p];
    outRe[4 * p + 3] = threeRe * third.re[p] - threeIm * third.im[p];
    outIm[4 * p] = sumIm + otherIm;
    outIm[4 * p + 1] = oneRe * first.im[p] + oneIm * first.re[p];
    outIm[4 * p + 2] = twoRe * second.im[p] + twoIm * second.re[p];
    outIm[4 * p + 3] = threeRe * third.im[p] + threeIm * third.re[p];
  }
}

template <std::size_t kStride>
void RealFft::Pass(const Complexes& from, Complexes& to) const {
  constexpr std::size_t kQuarter = kHalf / 4;
  for (std::size_t p = 0; p < kQuarter; p += kStride) {
    const float* __restrict re = from.re.data() + p;
    const float* __restrict im = from.im.data() + p;
    float* __restrict outRe = to.re.data() + 4 * p;
    float* __restrict outIm = to.im.data() + 4 * p;
    const float w1Re = firstFactors_[0].re[p], w1Im = firstFactors_[0].im[p];
    const float w2Re = firstFactors_[1].re[p], w2Im = firstFactors_[1].im[p];
    const float w3Re = firstFactors_[2].re[p], w3Im = firstFactors_[2].im[p];
    for (std::size_t i = 0; i < kStride; ++i) {
      const float sumRe = re[i] + re[i + 2 * kQuarter], sumIm = im[i] + im[i + 2 * kQuarter];
      const float apartRe = re[i] - re[i + 2 * kQuarter], apartIm = im[i] - im[i + 2 * kQuarter];
      const float otherRe = re[i + kQuarter] + re[i + 3 * kQuarter];
      const float otherIm = im[i + kQuarter] + im[i + 3 * kQuarter];
      const float turnedRe = im[i + kQuarter] - im[i + 3 * kQuarter];
      const float turnedIm = re[i + 3 * kQuarter] - re[i + kQuarter];
      const float oneRe = apartRe + turnedRe, oneIm = apartIm + turnedIm;
      const float twoRe = sumRe - otherRe, twoIm = sumIm - otherIm;
      const float threeRe = apartRe - turnedRe, threeIm = apartIm - turnedIm;
      outRe[i] = sumRe + otherRe;
      outRe[i + kStride] = oneRe * w1Re - oneIm * w1Im;
      outRe[i + 2 * kStride] = twoRe * w2Re - twoIm * w2Im;
      outRe[i + 3 * kStride] = threeRe * w3Re - threeIm * w3Im;
      outIm[i] = sumIm + otherIm;
      outIm[i + kStride] = oneRe * w1Im + oneIm * w1Re;
      outIm[i + 2 * kStride] = twoRe * w2Im + twoIm * w2Re;
      outIm[i + 3 * kStride] = threeRe * w3Im + threeIm * w3Re;
    }
  }
}

// Even values are transformed as real and odd ones as imaginary parts, and split afterwards (Cooley, Lewis and Welch
// 1970).
void RealFft::Transform(std::span<const float, kFftLength> input, std::span<float> re, std::span<float> im) {
  Complexes &a = work_[0], &b = work_[1];
  for (std::size_t i = 0; i < kHalf; ++i) {
    a.re[i] = input[2 * i];
    a.im[i] = input[2 * i + 1];
  }
  FirstPass(a, b);
  Pass<4>(b, a);
  Pass<16>(a, b);
  Pass<64>(b, a);
  constexpr std::size_t kQuarter = kHalf / 2;
  for (std::size_t i = 0; i < kQuarter; ++i) {
    b.re[i] = a.re[i] + a.re[i + kQuarter];
    b.im[i] = a.im[i] + a.im[i + kQuarter];
    b.re[i + kQuarter] = a.re[i] - a.re[i + kQuarter];
    b.im[i + kQuarter] = a.im[i] - a.im[i + kQuarter];
  }
  re[0] = b.re[0] + b.im[0];
  im[0] = 0.0f;
  const float* __restrict fromRe = b.re.data();
  const float* __restrict fromIm = b.im.data();
  float* __restrict toRe = re.data();
  float* __restrict toIm = im.data();
  for (std::size_t k = 1; k < re.size(); ++k) {
    const float evenRe = 0.5f * (fromRe[k] + fromRe[kHalf - k]), evenIm = 0.5f * (fromIm[k] - fromIm[kHalf - k]);
    const float oddRe = 0.5f * (fromIm[k] + fromIm[kHalf - k]), oddIm = 0.5f * (fromRe[kHalf - k] - fromRe[k]);
    toRe[k] = evenRe + oddRe * factors_.re[k] - oddIm * factors_.im[k];
    toIm[k] = evenIm + oddRe * factors_.im[k] + oddIm * factors_.re[k];
  }
}

// The constants of the transform, and its path for machines with AVX2: what the sources of the transform share.
#pragma once

#include <array>

#include "frqctrl/fft.h"

inline constexpr std::size_t kComplexLength = kTransformLength / 2;

// W(n, k) stands for exp(-2 pi i k / n).
struct FftTables {
  // Factors of the outputs 1, 2 and 3 of a butterfly, real and imaginary parts in turn, hence six.
  static constexpr std::size_t kFactors = 6;
  // The first pass goes over butterflies with factors of their own each: W(1024, j p) for p from 0 to 255.
  alignas(64) std::array<std::array<double, kComplexLength / 4>, kFactors> first;
  // In the next three all neighbours have the same: W(256, j p), W(64, j p), W(16, j p). The last needs none.
  std::array<std::array<double, kFactors>, 64 + 16 + 4> inner;
  // W(2048, k) for k from 0 to 512.
  std::array<double, kComplexLength / 2 + 1> splitRe, splitIm;
};

// Complex values between two passes, real and imaginary parts apart.
struct FftBuffer {
  alignas(64) double re[kComplexLength];
  alignas(64) double im[kComplexLength];
};

// Made at the first call.
const FftTables& TablesOfFft();

// The magnitudes of X[0], X[256], X[512] and X[768], which pair with themselves or each other in the last pass.
void FinishAtZero(const FftTables& tables, const FftBuffer& from, double* magnitudes);

// Null where this machine has no AVX2 or no fused multiply and add.
MagnitudeTransform Avx2Transform();

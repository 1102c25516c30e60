// The constants of the transform, and its path for machines with AVX2: what the sources of the transform share.
#pragma once

#include <array>
#include <cstdint>
#include <utility>

#include "frqctrl/fft.h"

// The longest of the complex transforms that the real one comes to. There is one of each power of two from there down
// to 1, and the one of n values gives the bins 512 / n * (4 k + 1), k from 0 to n - 1; a bin beyond 1,024 is that of
// 2,048 less it, conjugate.
inline constexpr std::size_t kComplexLength = kTransformLength / 4;

// The branches of the first pass of a complex transform of `length` values.
constexpr std::size_t RadixOf(std::size_t length) {
  if (length <= 8) return length;
  return length == 64 || length == 512 ? 8 : 4;
}

// The output of a butterfly of `radix` values that its branch `branch` goes on with. One of eight does the even ones
// first.
constexpr std::size_t OutputOf(std::size_t radix, std::size_t branch) {
  return radix == 8 ? 2 * branch % 8 + branch / 4 : branch;
}

// Magnitudes of a frame that are stored together: a whole line of the cache, which then need not be read before.
inline constexpr std::size_t kBinsAtATime = 8;

// W(n, k) stands for exp(-2 pi i k / n); each is a real and an imaginary part, both twice in a row, so that two lanes
// take them with one load.
struct FftTables {
  alignas(16) static constexpr double kRootOfHalf[2] = {0.70710678118654752440, 0.70710678118654752440};
  // For the passes over `length` real values, which do two steps of the splitting, butterfly i from 0 to length / 8 -
  // 1: W(length, i), W(length, i + length / 8), W(length, 2 i). Those for `length` values start at length / 8.
  static constexpr std::size_t kRealFactors = 12;
  alignas(64) std::array<std::array<double, kRealFactors>, 2 * kTransformLength / 8> Real;
  // For the passes over `length` complex values, butterfly i from 0 to length / RadixOf(length) - 1: W(length, j i) for
  // the output j of each branch but the first. Those for `length` values start at 4 * length.
  alignas(64) std::array<double, 8 * kComplexLength> Complex;
  // The complex transform of n values leaves the bin Bins[n + p] at its place p.
  std::array<std::uint16_t, 2 * kComplexLength> Bins;
};

// The tables are made at the first call.
const FftTables& TablesOfFft();

// None where this machine has no AVX2 or no fused multiply and add.
MagnitudeTransform Avx2Transform();

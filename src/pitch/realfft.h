// The transform of the pitch analysis: 1,024 real values in single precision, which is enough to tell harmonics from
// noise, and of which the processor takes twice as many at a time. The transform of the spectrum is another one, made
// for another length, for 16-bit samples and for magnitudes alone.
#pragma once

#include <array>
#include <cstddef>
#include <span>

inline constexpr std::size_t kFftLength = 1024;

class RealFft {
 public:
  RealFft();

  // The forward transform without a normalisation: as many bins from 0 on as `re` and `im` have room for, at most 512.
  void Transform(std::span<const float, kFftLength> input, std::span<float> re, std::span<float> im);

 private:
  static constexpr std::size_t kHalf = kFftLength / 2;
  struct Complexes {
    alignas(16) std::array<float, kHalf> re, im;
  };
  void FirstPass(const Complexes& from, Complexes& to) const;
  template <std::size_t kStride>
  void Pass(const Complexes& from, Complexes& to) const;

  Complexes factors_;           // exp(-2 pi i k / 1024)
  Complexes firstFactors_[3];   // of the outputs 1, 2 and 3 of a butterfly of the first pass
  Complexes work_[2];
};

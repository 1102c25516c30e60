// The one source of chance in the sample voicebank: a fixed sequence, so that every run makes the same files.
#pragma once

#include <cstdint>
#include <random>

// Even noise in -1..1. It is scaled by hand, because the library's distributions differ from one compiler to the next.
class Noise {
 public:
  explicit Noise(std::uint32_t seed) : generator_(seed) {}
  double Next() { return static_cast<double>(generator_()) / 2147483648.0 - 1.0; }

 private:
  std::mt19937 generator_;
};

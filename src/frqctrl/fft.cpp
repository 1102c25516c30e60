#include "frqctrl/fft.h"

#include <cmath>
#include <numbers>

#include "frqctrl/fftpasses.h"
#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace {

struct Scalar {
  using Value = double;
  static constexpr std::size_t kLanes = 1;

  static Value Broadcast(const double* from) { return *from; }
  static Value MultiplyAdd(Value a, Value b, Value c) { return a * b + c; }
  static Value MultiplySubtract(Value a, Value b, Value c) { return a * b - c; }
  static Value SquareRoot(Value value) { return std::sqrt(value); }
  static void LoadWindowed(const double* const* frames, std::size_t index, const double* factors, Value* values) {
    for (std::size_t i = 0; i < kSamplesAtATime; ++i) values[i] = frames[0][index + i] * factors[i];
  }
  static void Store(const Value* magnitudes, double* const* to, std::size_t bin) {
    to[0][bin] = magnitudes[0];
  }
  static void Begin() {}
  static void EndStores() {}
};

#if defined(__SSE2__)
[[gnu::target("avx")]] void ClearUpperHalves() {
  _mm256_zeroupper();
}

struct Sse2 {
  using Value = __m128d;
  static constexpr std::size_t kLanes = 2;

  static Value Broadcast(const double* from) { return _mm_load_pd(from); }
  static Value MultiplyAdd(Value a, Value b, Value c) { return a * b + c; }
  static Value MultiplySubtract(Value a, Value b, Value c) { return a * b - c; }
  static Value SquareRoot(Value value) { return _mm_sqrt_pd(value); }
  static void LoadWindowed(const double* const* frames, std::size_t index, const double* factors, Value* values) {
    const Value w = _mm_load_pd(factors);
    const Value a = _mm_loadu_pd(frames[0] + index) * w, b = _mm_loadu_pd(frames[1] + index) * w;
    values[0] = _mm_unpacklo_pd(a, b);
    values[1] = _mm_unpackhi_pd(a, b);
  }
  static void Store(const Value* magnitudes, double* const* to, std::size_t bin) {
    _mm_stream_pd(to[0] + bin, _mm_unpacklo_pd(magnitudes[0], magnitudes[1]));
    _mm_stream_pd(to[1] + bin, _mm_unpackhi_pd(magnitudes[0], magnitudes[1]));
  }
  // Each instruction would carry the upper halves along that another's use of the wide registers has left.
  static void Begin() {
    if (__builtin_cpu_supports("avx")) ClearUpperHalves();
  }
  static void EndStores() { _mm_sfence(); }
};
#endif

// Writes W(n, k) to `to`.
void PutFactor(double* to, std::size_t n, std::size_t k) {
  const double angle = -2.0 * std::numbers::pi * static_cast<double>(k) / static_cast<double>(n);
  to[0] = to[1] = std::cos(angle);
  to[2] = to[3] = std::sin(angle);
}

void MakeRealFactors(FftTables& tables) {
  for (std::size_t length = kTransformLength; length >= 8; length /= 4) {
    for (std::size_t i = 0; i < length / 8; ++i) {
      double* const factors = tables.Real[length / 8 + i].data();
      PutFactor(factors, length, i);
      PutFactor(factors + 4, length, i + length / 8);
      PutFactor(factors + 8, length, 2 * i);
    }
  }
}

void MakeComplexFactors(FftTables& tables) {
  for (std::size_t length = kComplexLength; length > 8; length /= 2) {
    const std::size_t radix = RadixOf(length);
    double* to = &tables.Complex[4 * length];
    for (std::size_t i = 0; i < length / radix; ++i) {
      for (std::size_t j = 1; j < radix; ++j, to += 4) PutFactor(to, length, i * OutputOf(radix, j));
    }
  }
}

// The output that a complex transform of `length` values leaves at `place`.
std::size_t OutputAt(std::size_t length, std::size_t place) {
  if (length == 1) return 0;
  const std::size_t radix = RadixOf(length), part = length / radix;
  return radix * OutputAt(part, place % part) + OutputOf(radix, place / part);
}

FftTables MakeTables() {
  FftTables tables{};
  MakeRealFactors(tables);
  MakeComplexFactors(tables);
  for (std::size_t length = kComplexLength; length >= 1; length /= 2) {
    for (std::size_t place = 0; place < length; ++place) {
      const std::size_t bin = kComplexLength / length * (4 * OutputAt(length, place) + 1);
      tables.Bins[length + place] = static_cast<std::uint16_t>(bin < kTransformBins ? bin : kTransformLength - bin);
    }
  }
  return tables;
}

}  // namespace

TransformWindow::TransformWindow(const double* window, double gain) {
  for (std::size_t i = 0; i < kTransformLength; ++i) {
    Factors[PlaceOf(i % kStride, i / kStride)] = window[i] * gain;
  }
}

const FftTables& TablesOfFft() {
  static const FftTables tables = MakeTables();
  return tables;
}

MagnitudeTransform TransformOf(FftPath path) {
  switch (path) {
    case FftPath::Scalar: return {TransformBy<Scalar>, Scalar::kLanes};
#if defined(__SSE2__)
    case FftPath::Sse2: return {TransformBy<Sse2>, Sse2::kLanes};
    case FftPath::Avx2: return Avx2Transform();
#endif
    default: return {};
  }
}

FftPath FastestFft() {
  for (const FftPath path : {FftPath::Avx2, FftPath::Sse2}) {
    if (TransformOf(path)) return path;
  }
  return FftPath::Scalar;
}

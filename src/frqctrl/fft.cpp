#include "frqctrl/fft.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>

#include "frqctrl/fftpasses.h"
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

struct Scalar {
  using Value = double;
  static constexpr std::size_t kLanes = 1;

  static Value Load(const double* from) { return *from; }
  static Value LoadUnaligned(const double* from) { return *from; }
  static void Store(double* to, Value value) { *to = value; }
  static void StoreUnaligned(double* to, Value value) { *to = value; }
  static Value Splat(double value) { return value; }
  static Value Reversed(Value value) { return value; }
  static Value MultiplyAdd(Value a, Value b, Value c) { return a * b + c; }
  static Value MultiplySubtract(Value a, Value b, Value c) { return a * b - c; }
  static Value SquareRoot(Value value) { return std::sqrt(value); }
  static void LoadPairs(const char* from, Value& even, Value& odd) {
    std::int16_t pair[2];
    std::memcpy(pair, from, sizeof(pair));
    even = pair[0] * kPairScale;
    odd = pair[1] * kPairScale;
  }
  static void StoreInterleaved(double* to, Value a, Value b, Value c, Value d) {
    to[0] = a, to[1] = b, to[2] = c, to[3] = d;
  }
};

#if defined(__SSE2__)
struct Sse2 {
  using Value = __m128d;
  static constexpr std::size_t kLanes = 2;

  static Value Load(const double* from) { return _mm_load_pd(from); }
  static Value LoadUnaligned(const double* from) { return _mm_loadu_pd(from); }
  static void Store(double* to, Value value) { _mm_store_pd(to, value); }
  static void StoreUnaligned(double* to, Value value) { _mm_storeu_pd(to, value); }
  static Value Splat(double value) { return _mm_set1_pd(value); }
  static Value Reversed(Value value) { return _mm_shuffle_pd(value, value, 1); }
  static Value MultiplyAdd(Value a, Value b, Value c) { return a * b + c; }
  static Value MultiplySubtract(Value a, Value b, Value c) { return a * b - c; }
  static Value SquareRoot(Value value) { return _mm_sqrt_pd(value); }
  static void LoadPairs(const char* from, Value& even, Value& odd) {
    const __m128i pairs = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
    even = _mm_cvtepi32_pd(_mm_slli_epi32(pairs, 16));
    odd = _mm_cvtepi32_pd(_mm_and_si128(pairs, _mm_set1_epi32(-65536)));
  }
  static void StoreInterleaved(double* to, Value a, Value b, Value c, Value d) {
    Store(to, _mm_unpacklo_pd(a, b));
    Store(to + 2, _mm_unpacklo_pd(c, d));
    Store(to + 4, _mm_unpackhi_pd(a, b));
    Store(to + 6, _mm_unpackhi_pd(c, d));
  }
};
#endif

// Factors of the butterfly `p` of a pass over `length` values.
std::array<double, FftTables::kFactors> FactorsOf(std::size_t length, std::size_t p) {
  std::array<double, FftTables::kFactors> factors;
  for (std::size_t output = 1; output <= 3; ++output) {
    const double angle = -2.0 * std::numbers::pi * static_cast<double>(output * p) / static_cast<double>(length);
    factors[2 * output - 2] = std::cos(angle);
    factors[2 * output - 1] = std::sin(angle);
  }
  return factors;
}

FftTables MakeTables() {
  FftTables tables;
  for (std::size_t p = 0; p < kComplexLength / 4; ++p) {
    const auto factors = FactorsOf(kComplexLength, p);
    for (std::size_t i = 0; i < factors.size(); ++i) tables.first[i][p] = factors[i];
  }
  auto* inner = tables.inner.data();
  for (const std::size_t length : {256u, 64u, 16u}) {
    for (std::size_t p = 0; p < length / 4; ++p) *inner++ = FactorsOf(length, p);
  }
  for (std::size_t k = 0; k < tables.splitRe.size(); ++k) {
    const auto factors = FactorsOf(kTransformLength, k);
    tables.splitRe[k] = factors[0];
    tables.splitIm[k] = factors[1];
  }
  return tables;
}

}  // namespace

TransformWindow::TransformWindow(const double* window) {
  for (std::size_t i = 0; i < kTransformBins; ++i) {
    even[i] = window[2 * i];
    odd[i] = window[2 * i + 1];
  }
}

const FftTables& TablesOfFft() {
  static const FftTables tables = MakeTables();
  return tables;
}

void FinishAtZero(const FftTables& tables, const FftBuffer& from, double* magnitudes) {
  constexpr std::size_t kQuarter = kComplexLength / 4;
  const LastButterfly<Scalar> last(from, 0);
  Split<Scalar>(tables, kQuarter, last.b, last.d, magnitudes);
  Split<Scalar>(tables, 2 * kQuarter, last.c, last.c, magnitudes);
  // Z[0] pairs with itself; its other half is X[1024], which nobody keeps.
  magnitudes[0] = 2.0 * std::abs(last.a.re + last.a.im);
}

MagnitudeTransform TransformOf(FftPath path) {
  switch (path) {
    case FftPath::Scalar: return TransformBy<Scalar>;
#if defined(__SSE2__)
    case FftPath::Sse2: return TransformBy<Sse2>;
    case FftPath::Avx2: return Avx2Transform();
#endif
    default: return nullptr;
  }
}

FftPath FastestFft() {
  for (const FftPath path : {FftPath::Avx2, FftPath::Sse2}) {
    if (TransformOf(path)) return path;
  }
  return FftPath::Scalar;
}

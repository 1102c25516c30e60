// The transform for machines with AVX2 and fused multiply and add. It is a source of its own because all of it is
// compiled for those, and runs only where the processor says so. Clang, with which files are fuzzed, does without it:
// it knows no such options for a part of a source.
#include "frqctrl/ffttables.h"

#if defined(__clang__)
MagnitudeTransform Avx2Transform() {
  return nullptr;
}
#elif defined(__SSE2__)
#include <immintrin.h>

#pragma GCC push_options
#pragma GCC target("avx2,fma")
#include "frqctrl/fftpasses.h"

namespace {

struct Avx2 {
  using Value = __m256d;
  static constexpr std::size_t kLanes = 4;

  static Value Load(const double* from) { return _mm256_load_pd(from); }
  static Value LoadUnaligned(const double* from) { return _mm256_loadu_pd(from); }
  static void Store(double* to, Value value) { _mm256_store_pd(to, value); }
  static void StoreUnaligned(double* to, Value value) { _mm256_storeu_pd(to, value); }
  static Value Splat(double value) { return _mm256_set1_pd(value); }
  static Value Reversed(Value value) { return _mm256_permute4x64_pd(value, 0x1B); }
  static Value MultiplyAdd(Value a, Value b, Value c) { return _mm256_fmadd_pd(a, b, c); }
  static Value MultiplySubtract(Value a, Value b, Value c) { return _mm256_fmsub_pd(a, b, c); }
  static Value SquareRoot(Value value) { return _mm256_sqrt_pd(value); }
  static void LoadPairs(const char* from, Value& even, Value& odd) {
    const __m128i pairs = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    even = _mm256_cvtepi32_pd(_mm_slli_epi32(pairs, 16));
    odd = _mm256_cvtepi32_pd(_mm_and_si128(pairs, _mm_set1_epi32(-65536)));
  }
  static void StoreInterleaved(double* to, Value a, Value b, Value c, Value d) {
    const Value ab = _mm256_unpacklo_pd(a, b), cd = _mm256_unpacklo_pd(c, d);
    const Value abHigh = _mm256_unpackhi_pd(a, b), cdHigh = _mm256_unpackhi_pd(c, d);
    Store(to, _mm256_permute2f128_pd(ab, cd, 0x20));
    Store(to + 4, _mm256_permute2f128_pd(abHigh, cdHigh, 0x20));
    Store(to + 8, _mm256_permute2f128_pd(ab, cd, 0x31));
    Store(to + 12, _mm256_permute2f128_pd(abHigh, cdHigh, 0x31));
  }
};

}  // namespace

// Named here, so that its code is made here.
static const MagnitudeTransform transform = TransformBy<Avx2>;
#pragma GCC pop_options

MagnitudeTransform Avx2Transform() {
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") ? transform : nullptr;
}
#endif

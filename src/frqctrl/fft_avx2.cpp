// The transform for machines with AVX2 and fused multiply and add. It is a source of its own because all of it is
// compiled for those, and runs only where the processor says so. Clang, with which files are fuzzed, does without it:
// it knows no such options for a part of a source.
#include "frqctrl/ffttables.h"

#if defined(__clang__)
MagnitudeTransform Avx2Transform() {
  return {};
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

  static Value Broadcast(const double* from) { return _mm256_broadcast_sd(from); }
  static Value MultiplyAdd(Value a, Value b, Value c) { return _mm256_fmadd_pd(a, b, c); }
  static Value MultiplySubtract(Value a, Value b, Value c) { return _mm256_fmsub_pd(a, b, c); }
  static Value SquareRoot(Value value) { return _mm256_sqrt_pd(value); }
  // Two values of frame `one` and two of frame `other`.
  static Value LoadPairs(const double* one, const double* other) {
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(one)), _mm_loadu_pd(other), 1);
  }
  static void LoadWindowed(const double* const* frames, std::size_t index, const double* factors, Value* values) {
    const Value ac = LoadPairs(frames[0] + index, frames[2] + index);
    const Value bd = LoadPairs(frames[1] + index, frames[3] + index);
    values[0] = _mm256_unpacklo_pd(ac, bd) * Broadcast(factors);
    values[1] = _mm256_unpackhi_pd(ac, bd) * Broadcast(factors + 1);
  }
  static void Store(const Value* magnitudes, double* const* to, std::size_t bin) {
    const Value ab = _mm256_unpacklo_pd(magnitudes[0], magnitudes[1]);
    const Value cd = _mm256_unpacklo_pd(magnitudes[2], magnitudes[3]);
    const Value abHigh = _mm256_unpackhi_pd(magnitudes[0], magnitudes[1]);
    const Value cdHigh = _mm256_unpackhi_pd(magnitudes[2], magnitudes[3]);
    _mm256_stream_pd(to[0] + bin, _mm256_permute2f128_pd(ab, cd, 0x20));
    _mm256_stream_pd(to[1] + bin, _mm256_permute2f128_pd(abHigh, cdHigh, 0x20));
    _mm256_stream_pd(to[2] + bin, _mm256_permute2f128_pd(ab, cd, 0x31));
    _mm256_stream_pd(to[3] + bin, _mm256_permute2f128_pd(abHigh, cdHigh, 0x31));
  }
  static void Begin() {}
  static void EndStores() { _mm_sfence(); }
};

}  // namespace

// The function is named here, so that its code is made here.
static const MagnitudeTransform::Function transform = TransformBy<Avx2>;
#pragma GCC pop_options

MagnitudeTransform Avx2Transform() {
  if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) return {};
  return {transform, Avx2::kLanes};
}
#endif

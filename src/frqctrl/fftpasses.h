// The passes of the transform as templates over a set of vector instructions, `V`, whose static members load, store,
// multiply and add V::kLanes numbers at a time. A source for a set of instructions that not every machine has includes
// this with the compiler told to use that set, so nothing else may be included from here on.
#pragma once

#include "frqctrl/ffttables.h"

template <class V>
struct Complexes {
  typename V::Value re, im;
};

template <class V>
inline Complexes<V> LoadComplexes(const FftBuffer& from, std::size_t index) {
  return {V::Load(from.re + index), V::Load(from.im + index)};
}

template <class V>
inline void StoreComplexes(FftBuffer& to, std::size_t index, const Complexes<V>& values) {
  V::Store(to.re + index, values.re);
  V::Store(to.im + index, values.im);
}

template <class V>
inline Complexes<V> Times(const Complexes<V>& x, typename V::Value re, typename V::Value im) {
  return {V::MultiplySubtract(x.re, re, x.im * im), V::MultiplyAdd(x.re, im, x.im * re)};
}

// The transform of four values, in place.
template <class V>
inline void Butterfly(Complexes<V>& a, Complexes<V>& b, Complexes<V>& c, Complexes<V>& d) {
  const Complexes<V> s{a.re + c.re, a.im + c.im}, t{a.re - c.re, a.im - c.im};
  const Complexes<V> u{b.re + d.re, b.im + d.im}, v{b.re - d.re, b.im - d.im};
  a = {s.re + u.re, s.im + u.im};
  b = {t.re + v.im, t.im - v.re};
  c = {s.re - u.re, s.im - u.im};
  d = {t.re - v.im, t.im + v.re};
}

// An even sample and the odd one behind it. V::LoadPairs gives both times kPairScale: they are taken in the upper half
// of 32 bits, where their sign is in its place already. Powers of two round nothing, so the gain makes up for it.
inline constexpr std::size_t kPairSize = 4;
inline constexpr double kPairScale = 65536.0;

// Pass 1: neighbours are different butterflies, whose four outputs each lie side by side.
template <class V>
void FirstPass(const FftTables& tables, const void* samples, const TransformWindow& window, double gain,
               FftBuffer& to) {
  constexpr std::size_t kQuarter = kComplexLength / 4;
  const auto gains = V::Splat(gain);
  const auto load = [&](std::size_t index) __attribute__((always_inline)) {
    Complexes<V> values;
    V::LoadPairs(static_cast<const char*>(samples) + index * kPairSize, values.re, values.im);
    values.re = values.re * V::Load(window.even + index) * gains;
    values.im = values.im * V::Load(window.odd + index) * gains;
    return values;
  };
  for (std::size_t p = 0; p < kQuarter; p += V::kLanes) {
    Complexes<V> a = load(p), b = load(p + kQuarter), c = load(p + 2 * kQuarter), d = load(p + 3 * kQuarter);
    Butterfly<V>(a, b, c, d);
    b = Times<V>(b, V::Load(&tables.first[0][p]), V::Load(&tables.first[1][p]));
    c = Times<V>(c, V::Load(&tables.first[2][p]), V::Load(&tables.first[3][p]));
    d = Times<V>(d, V::Load(&tables.first[4][p]), V::Load(&tables.first[5][p]));
    V::StoreInterleaved(to.re + 4 * p, a.re, b.re, c.re, d.re);
    V::StoreInterleaved(to.im + 4 * p, a.im, b.im, c.im, d.im);
  }
}

// The butterflies of passes 2 to 4 that have the factors `w` in common, which are `stride` neighbours. Those of the
// first have none: all are 1.
template <class V, bool kWithFactors>
inline void InnerButterflies(const double* w, std::size_t start, std::size_t stride, const FftBuffer& from,
                             FftBuffer& to) {
  constexpr std::size_t kQuarter = kComplexLength / 4;
  for (std::size_t q = start; q < start + stride; q += V::kLanes) {
    Complexes<V> a = LoadComplexes<V>(from, q), b = LoadComplexes<V>(from, q + kQuarter),
                 c = LoadComplexes<V>(from, q + 2 * kQuarter), d = LoadComplexes<V>(from, q + 3 * kQuarter);
    Butterfly<V>(a, b, c, d);
    if constexpr (kWithFactors) {
      b = Times<V>(b, V::Splat(w[0]), V::Splat(w[1]));
      c = Times<V>(c, V::Splat(w[2]), V::Splat(w[3]));
      d = Times<V>(d, V::Splat(w[4]), V::Splat(w[5]));
    }
    const std::size_t target = q + 3 * start;
    StoreComplexes<V>(to, target, a);
    StoreComplexes<V>(to, target + stride, b);
    StoreComplexes<V>(to, target + 2 * stride, c);
    StoreComplexes<V>(to, target + 3 * stride, d);
  }
}

template <class V>
void InnerPass(const std::array<double, FftTables::kFactors>* factors, std::size_t stride, const FftBuffer& from,
               FftBuffer& to) {
  InnerButterflies<V, false>(nullptr, 0, stride, from, to);
  for (std::size_t start = stride; start < kComplexLength / 4; start += stride) {
    InnerButterflies<V, true>((++factors)->data(), start, stride, from, to);
  }
}

// With Z the complex transform of N values, E = Z[k] + conj Z[N-k] and O = -i (Z[k] - conj Z[N-k]) are twice the
// transforms of the even and the odd samples; X[k] = (E + W(2N, k) O) / 2 and X[N-k] is the conjugate of
// (E - W(2N, k) O) / 2. The 2 is in the gain.
template <class V>
inline void Split(const FftTables& tables, std::size_t k, const Complexes<V>& low, const Complexes<V>& high,
                  double* magnitudes) {
  const Complexes<V> even{low.re + high.re, low.im - high.im};
  const Complexes<V> odd = Times<V>({low.im + high.im, high.re - low.re}, V::LoadUnaligned(&tables.splitRe[k]),
                                    V::LoadUnaligned(&tables.splitIm[k]));
  const Complexes<V> x{even.re + odd.re, even.im + odd.im}, y{even.re - odd.re, even.im - odd.im};
  V::StoreUnaligned(magnitudes + k, V::SquareRoot(V::MultiplyAdd(x.re, x.re, x.im * x.im)));
  V::StoreUnaligned(magnitudes + kComplexLength + 1 - k - V::kLanes,
                    V::Reversed(V::SquareRoot(V::MultiplyAdd(y.re, y.re, y.im * y.im))));
}

template <class V>
inline Complexes<V> Reversed(const Complexes<V>& values) {
  return {V::Reversed(values.re), V::Reversed(values.im)};
}

// The four inputs of the last pass from `index` on, transformed; that pass has no factors.
template <class V>
struct LastButterfly {
  Complexes<V> a, b, c, d;

  LastButterfly(const FftBuffer& from, std::size_t index)
      : a(Load(from, index)),
        b(Load(from, index + kComplexLength / 4)),
        c(Load(from, index + kComplexLength / 2)),
        d(Load(from, index + 3 * kComplexLength / 4)) {
    Butterfly<V>(a, b, c, d);
  }
  static Complexes<V> Load(const FftBuffer& from, std::size_t index) {
    return {V::LoadUnaligned(from.re + index), V::LoadUnaligned(from.im + index)};
  }
};

// Pass 5 and the split. Z[N-k] of each of the four outputs of butterfly k is an output of butterfly 256-k.
template <class V>
void LastPass(const FftTables& tables, const FftBuffer& from, double* magnitudes) {
  constexpr std::size_t kQuarter = kComplexLength / 4;
  for (std::size_t k = 1; k <= kQuarter / 2; k += V::kLanes) {
    const std::size_t mirrored = kQuarter + 1 - k - V::kLanes;
    const LastButterfly<V> low(from, k), high(from, mirrored);
    Split<V>(tables, k, low.a, Reversed<V>(high.d), magnitudes);
    Split<V>(tables, kQuarter + k, low.b, Reversed<V>(high.c), magnitudes);
    Split<V>(tables, mirrored, high.a, Reversed<V>(low.d), magnitudes);
    Split<V>(tables, kQuarter + mirrored, high.b, Reversed<V>(low.c), magnitudes);
  }
}

template <class V>
void TransformBy(const void* samples, const TransformWindow& window, double gain, double* magnitudes) {
  const FftTables& tables = TablesOfFft();
  FftBuffer one, other;
  FirstPass<V>(tables, samples, window, gain * (0.5 / kPairScale), one);
  InnerPass<V>(&tables.inner[0], 4, one, other);
  InnerPass<V>(&tables.inner[64], 16, other, one);
  InnerPass<V>(&tables.inner[80], 64, one, other);
  LastPass<V>(tables, other, magnitudes);
  FinishAtZero(tables, other, magnitudes);
}

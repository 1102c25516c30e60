// The passes of the transform as templates over a set of vector instructions, `V`, whose static members load, store,
// multiply and add a number of each of V::kLanes frames at a time. A source for a set of instructions that not every
// machine has includes this with the compiler told to use that set, so nothing else may be included from here on.
#pragma once

#include "frqctrl/ffttables.h"

template <class V>
struct Complexes {
  typename V::Value re, im;
};

// The values between the passes. The complex transform of n values is at Odd[n].
template <class V>
struct FftBuffers {
  alignas(64) Complexes<V> Odd[2 * kComplexLength];
  alignas(64) typename V::Value Reals[kTransformLength / 4];
  alignas(64) typename V::Value Squares[kTransformBins];
};

template <class V>
[[gnu::always_inline]] inline Complexes<V> Plus(const Complexes<V>& x, const Complexes<V>& y) {
  return {x.re + y.re, x.im + y.im};
}

template <class V>
[[gnu::always_inline]] inline Complexes<V> Minus(const Complexes<V>& x, const Complexes<V>& y) {
  return {x.re - y.re, x.im - y.im};
}

template <class V>
[[gnu::always_inline]] inline Complexes<V> Times(const Complexes<V>& x, const double* factor) {
  const auto re = V::Broadcast(factor), im = V::Broadcast(factor + 2);
  return {V::MultiplySubtract(x.re, re, x.im * im), V::MultiplyAdd(x.re, im, x.im * re)};
}

// The transform of four values, in place.
template <class V>
[[gnu::always_inline]] inline void Butterfly(Complexes<V>& a, Complexes<V>& b, Complexes<V>& c, Complexes<V>& d) {
  const Complexes<V> s = Plus<V>(a, c), t = Minus<V>(a, c), u = Plus<V>(b, d), v = Minus<V>(b, d);
  a = Plus<V>(s, u);
  b = {t.re + v.im, t.im - v.re};
  c = Minus<V>(s, u);
  d = {t.re - v.im, t.im + v.re};
}

// The outputs 0, 2, 4 and 6 of the transform of eight values.
template <class V>
[[gnu::always_inline]] inline void EvenButterfly(const Complexes<V>* x, Complexes<V>* even) {
#pragma GCC unroll 4
  for (std::size_t j = 0; j < 4; ++j) even[j] = Plus<V>(x[j], x[j + 4]);
  Butterfly<V>(even[0], even[1], even[2], even[3]);
}

// The outputs 1, 3, 5 and 7.
template <class V>
[[gnu::always_inline]] inline void OddButterfly(const Complexes<V>* x, Complexes<V>* odd) {
  const auto root = V::Broadcast(FftTables::kRootOfHalf);
  const Complexes<V> b = Minus<V>(x[1], x[5]), c = Minus<V>(x[2], x[6]), d = Minus<V>(x[3], x[7]);
  odd[0] = Minus<V>(x[0], x[4]);
  // W(8, 1), W(8, 2), W(8, 3)
  odd[1] = {(b.re + b.im) * root, (b.im - b.re) * root};
  odd[2] = {c.im, -c.re};
  odd[3] = {(d.im - d.re) * root, -(d.re + d.im) * root};
  Butterfly<V>(odd[0], odd[1], odd[2], odd[3]);
}

// The transform of kRadix values, in place.
template <class V, std::size_t kRadix>
[[gnu::always_inline]] inline void Butterfly(Complexes<V>* x) {
  if constexpr (kRadix == 2) {
    const Complexes<V> first = x[0];
    x[0] = Plus<V>(first, x[1]);
    x[1] = Minus<V>(first, x[1]);
  } else if constexpr (kRadix == 4) {
    Butterfly<V>(x[0], x[1], x[2], x[3]);
  } else if constexpr (kRadix == 8) {
    Complexes<V> even[4], odd[4];
    EvenButterfly<V>(x, even);
    OddButterfly<V>(x, odd);
#pragma GCC unroll 4
    for (std::size_t j = 0; j < 4; ++j) x[2 * j] = even[j], x[2 * j + 1] = odd[j];
  }
}

// Roots take their time in a unit of their own. Those of every second pair of bins, (k & 2) != 0, are taken beside the
// transforms, the others while the magnitudes are stored, so that none is waited for.
constexpr bool HasRoot(std::size_t bin) {
  return (bin & 2) != 0;
}

// Puts the squared magnitude, or the magnitude, of output kOutput of the last kRadix ones of the complex transform of
// kWhole values where it belongs. `bin`: the bin of output 0.
template <class V, std::size_t kWhole, std::size_t kRadix, std::size_t kOutput>
[[gnu::always_inline]] inline void StoreSquare(const Complexes<V>& x, typename V::Value* squares, std::size_t bin) {
  constexpr std::size_t kMore = kTransformLength / kRadix * kOutput, kLeast = kComplexLength / kWhole;
  const auto square = V::MultiplyAdd(x.re, x.re, x.im * x.im);
  if constexpr (kMore < kTransformBins) {
    squares[kMore + bin] = HasRoot(kLeast) ? V::SquareRoot(square) : square;
  } else {
    squares[kTransformLength - kMore - bin] = HasRoot(kTransformLength - kLeast) ? V::SquareRoot(square) : square;
  }
}

// The last pass over kRadix values. With eight the even outputs are done before the odd ones are begun, which read the
// memory again: so few values are needed at a time that the registers hold them.
template <class V, std::size_t kWhole, std::size_t kRadix>
[[gnu::always_inline]] inline void LastButterfly(const Complexes<V>* values, typename V::Value* squares,
                                                 std::size_t bin) {
  const auto store = [&]<std::size_t... kOutputs>(const Complexes<V>* x, std::index_sequence<kOutputs...>)
                         __attribute__((always_inline)) {
    (StoreSquare<V, kWhole, kRadix, kOutputs>(*x++, squares, bin), ...);
  };
  Complexes<V> x[kRadix];
  if constexpr (kRadix == 8) {
    EvenButterfly<V>(values, x);
    store(x, std::index_sequence<0, 2, 4, 6>());
    OddButterfly<V>(values, x);
    store(x, std::index_sequence<1, 3, 5, 7>());
  } else {
#pragma GCC unroll 4
    for (std::size_t j = 0; j < kRadix; ++j) x[j] = values[j];
    Butterfly<V, kRadix>(x);
    store(x, std::make_index_sequence<kRadix>());
  }
}

// The transform of kLength values; their squared magnitudes go where `bins` says.
template <class V, std::size_t kLength, std::size_t kWhole = kLength>
inline void ComplexTransform(const FftTables& tables, Complexes<V>* values, const std::uint16_t* bins,
                             typename V::Value* squares) {
  constexpr std::size_t kRadix = RadixOf(kLength), kStride = kLength / kRadix;
  if constexpr (kStride == 1) {
    LastButterfly<V, kWhole, kRadix>(values, squares, *bins);
  } else {
    const double* factors = &tables.Complex[4 * kLength];
    for (std::size_t i = 0; i < kStride; ++i) {
      Complexes<V> x[kRadix];
#pragma GCC unroll 8
      for (std::size_t j = 0; j < kRadix; ++j) x[j] = values[i + j * kStride];
      Butterfly<V, kRadix>(x);
      values[i] = x[0];
#pragma GCC unroll 8
      for (std::size_t j = 1; j < kRadix; ++j, factors += 4) values[i + j * kStride] = Times<V>(x[j], factors);
    }
    for (std::size_t at = 0; at < kLength; at += kStride) {
      ComplexTransform<V, kStride, kWhole>(tables, values + at, bins + at, squares);
    }
  }
}

// Butterfly i of two steps of the splitting of kLength real values x; the real transform of a quarter of them is left
// in `Reals`. With n = kLength, the odd outputs of a real transform, X[4k+1], are the complex transform of
// W(n, i) ((x[i] - x[i+n/2]) - i (x[i+n/4] - x[i+3n/4])), and X[4k+3] their conjugates; the even ones are the real
// transform of x[i] + x[i+n/2]. `x`: the values i + j n / 8, j from 0 to 7.
template <class V, std::size_t kLength>
[[gnu::always_inline]] inline void SplitButterfly(const FftTables& tables, std::size_t i, const typename V::Value* x,
                                                  FftBuffers<V>& buffers) {
  constexpr std::size_t kEighth = kLength / 8;
  const double* const factors = tables.Real[kEighth + i].data();
  Complexes<V>* const odd = &buffers.Odd[kLength / 4];
  odd[i] = Times<V>({x[0] - x[4], x[6] - x[2]}, factors);
  odd[i + kEighth] = Times<V>({x[1] - x[5], x[7] - x[3]}, factors + 4);
  const auto a = x[0] + x[4], b = x[1] + x[5], c = x[2] + x[6], d = x[3] + x[7];
  buffers.Odd[kEighth + i] = Times<V>({a - c, d - b}, factors + 8);
  buffers.Reals[i] = a + c;
  buffers.Reals[i + kEighth] = b + d;
}

// Stores the magnitudes of kBinsAtATime bins from `bin` on.
template <class V>
[[gnu::always_inline]] inline void StoreMagnitudes(const typename V::Value* squares, double* const* magnitudes,
                                                   std::size_t bin) {
  typename V::Value values[kBinsAtATime];
#pragma GCC unroll 8
  for (std::size_t i = 0; i < kBinsAtATime; ++i) {
    values[i] = HasRoot(i) ? squares[bin + i] : V::SquareRoot(squares[bin + i]);
  }
  V::Store(values, magnitudes, bin);
}

// The first pass. It stores what the group before has left, if there was one: memory takes that no faster.
template <class V>
inline void SplitSamples(const FftTables& tables, const double* const* samples, const TransformWindow& window,
                         double* const* magnitudesBefore, FftBuffers<V>& buffers) {
  constexpr std::size_t kEighth = kTransformLength / 8;
  static_assert(kEighth / kSamplesAtATime == kTransformBins / kBinsAtATime);
  for (std::size_t i = 0; i < kEighth; i += kSamplesAtATime) {
    if (magnitudesBefore) StoreMagnitudes<V>(buffers.Squares, magnitudesBefore, i * (kBinsAtATime / kSamplesAtATime));
    typename V::Value x[kSamplesAtATime][8];
#pragma GCC unroll 8
    for (std::size_t j = 0; j < 8; ++j) {
      typename V::Value windowed[kSamplesAtATime];
      V::LoadWindowed(samples, i + j * kEighth, window.FactorsOf(i, j), windowed);
#pragma GCC unroll 8
      for (std::size_t p = 0; p < kSamplesAtATime; ++p) x[p][j] = windowed[p];
    }
#pragma GCC unroll 8
    for (std::size_t p = 0; p < kSamplesAtATime; ++p) {
      SplitButterfly<V, kTransformLength>(tables, i + p, x[p], buffers);
    }
  }
}

template <class V, std::size_t kLength>
inline void SplitReals(const FftTables& tables, FftBuffers<V>& buffers) {
  for (std::size_t i = 0; i < kLength / 8; ++i) {
    typename V::Value x[8];
#pragma GCC unroll 8
    for (std::size_t j = 0; j < 8; ++j) x[j] = buffers.Reals[i + j * (kLength / 8)];
    SplitButterfly<V, kLength>(tables, i, x, buffers);
  }
  if constexpr (kLength > 8) SplitReals<V, kLength / 4>(tables, buffers);
}

template <class V, std::size_t kLength>
inline void ComplexTransforms(const FftTables& tables, FftBuffers<V>& buffers) {
  ComplexTransform<V, kLength>(tables, &buffers.Odd[kLength], &tables.Bins[kLength], buffers.Squares);
  if constexpr (kLength > 1) ComplexTransforms<V, kLength / 2>(tables, buffers);
}

template <class V>
void TransformBy(const double* const* samples, const TransformWindow& window, double* const* magnitudes,
                 std::size_t groups) {
  const FftTables& tables = TablesOfFft();
  FftBuffers<V> buffers;
  double* const* before = nullptr;
  for (; groups > 0; --groups, samples += V::kLanes, magnitudes += V::kLanes) {
    SplitSamples<V>(tables, samples, window, before, buffers);
    SplitReals<V, kTransformLength / 4>(tables, buffers);
    ComplexTransforms<V, kComplexLength>(tables, buffers);
    // Two real values are left, whose sum is X[0]; their difference is X[1024], which nobody keeps.
    const auto zero = buffers.Reals[0] + buffers.Reals[1];
    buffers.Squares[0] = zero * zero;
    before = magnitudes;
  }
  for (std::size_t bin = 0; bin < kTransformBins; bin += kBinsAtATime) {
    StoreMagnitudes<V>(buffers.Squares, before, bin);
  }
  V::EndStores();
}

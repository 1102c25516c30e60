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

// The transform of eight values is one of four sums, which gives the outputs 0, 2, 4 and 6, and one of four
// differences, which gives the others. The second is begun when the first is done, and reads the memory again: so few
// values are needed at a time that the registers hold them.

// The outputs 1, 3, 5 and 7 of the differences, in place.
template <class V>
[[gnu::always_inline]] inline void OddButterfly(Complexes<V>* x) {
  const auto root = V::Broadcast(FftTables::kRootOfHalf);
  // W(8, 1), W(8, 2), W(8, 3)
  const Complexes<V> b = x[1], c = x[2], d = x[3];
  x[1] = {(b.re + b.im) * root, (b.im - b.re) * root};
  x[2] = {c.im, -c.re};
  x[3] = {(d.im - d.re) * root, -(d.re + d.im) * root};
  Butterfly<V>(x[0], x[1], x[2], x[3]);
}

// Roots take their time in a unit of their own. Those of three bins in eight are taken beside the transforms, the
// others while the magnitudes are stored, so that none is waited for.
constexpr bool HasRoot(std::size_t bin) {
  return bin % 4 == 1 || bin % 8 == 6;
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

// The last pass, over kRadix values.
template <class V, std::size_t kWhole, std::size_t kRadix>
[[gnu::always_inline]] inline void LastButterfly(const Complexes<V>* values, typename V::Value* squares,
                                                 std::size_t bin) {
  const auto store = [&]<std::size_t... kOutputs>(const Complexes<V>* x, std::index_sequence<kOutputs...>)
                         __attribute__((always_inline)) {
    (StoreSquare<V, kWhole, kRadix, kOutputs>(*x++, squares, bin), ...);
  };
  Complexes<V> x[4];
  if constexpr (kRadix == 8) {
#pragma GCC unroll 4
    for (std::size_t j = 0; j < 4; ++j) x[j] = Plus<V>(values[j], values[j + 4]);
    Butterfly<V>(x[0], x[1], x[2], x[3]);
    store(x, std::index_sequence<0, 2, 4, 6>());
#pragma GCC unroll 4
    for (std::size_t j = 0; j < 4; ++j) x[j] = Minus<V>(values[j], values[j + 4]);
    OddButterfly<V>(x);
    store(x, std::index_sequence<1, 3, 5, 7>());
  } else if constexpr (kRadix == 2) {
    x[0] = Plus<V>(values[0], values[1]);
    x[1] = Minus<V>(values[0], values[1]);
    store(x, std::index_sequence<0, 1>());
  } else {
#pragma GCC unroll 4
    for (std::size_t j = 0; j < kRadix; ++j) x[j] = values[j];
    if constexpr (kRadix == 4) Butterfly<V>(x[0], x[1], x[2], x[3]);
    store(x, std::make_index_sequence<kRadix>());
  }
}

// Butterfly i of the first pass over values of a transform with kRadix branches, kStride apart: each branch but the
// first takes its factor.
template <class V, std::size_t kRadix, std::size_t kStride>
[[gnu::always_inline]] inline void FirstButterfly(Complexes<V>* values, const double* factors) {
  Complexes<V> x[4];
  const auto store = [&](std::size_t branch) __attribute__((always_inline)) {
#pragma GCC unroll 4
    for (std::size_t j = 0; j < 4; ++j) {
      Complexes<V>& to = values[(branch + j) * kStride];
      to = branch + j == 0 ? x[j] : Times<V>(x[j], factors + 4 * (branch + j - 1));
    }
  };
#pragma GCC unroll 4
  for (std::size_t j = 0; j < 4; ++j) {
    x[j] = values[j * kStride];
    if constexpr (kRadix == 8) {
      const Complexes<V> other = values[(j + 4) * kStride];
      values[(j + 4) * kStride] = Minus<V>(x[j], other);
      x[j] = Plus<V>(x[j], other);
    }
  }
  Butterfly<V>(x[0], x[1], x[2], x[3]);
  store(0);
  if constexpr (kRadix == 8) {
#pragma GCC unroll 4
    for (std::size_t j = 0; j < 4; ++j) x[j] = values[(j + 4) * kStride];
    OddButterfly<V>(x);
    store(4);
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
    for (std::size_t i = 0; i < kStride; ++i, factors += 4 * (kRadix - 1)) {
      FirstButterfly<V, kRadix, kStride>(values + i, factors);
    }
    for (std::size_t at = 0; at < kLength; at += kStride) {
      ComplexTransform<V, kStride, kWhole>(tables, values + at, bins + at, squares);
    }
  }
}

// Butterflies i to i + kCount - 1 of two steps of the splitting of kLength real values x; the real transform of a
// quarter of them is left in `Reals`. With n = kLength, the odd outputs of a real transform, X[4k+1], are the complex
// transform of W(n, i) ((x[i] - x[i+n/2]) - i (x[i+n/4] - x[i+3n/4])), and X[4k+3] their conjugates; the even ones are
// the real transform of x[i] + x[i+n/2]. `load` takes j from 0 to 7 and an array, into which it puts the kCount values
// from i + j n / 8 on; few are asked for at a time, so that the registers hold them.
template <class V, std::size_t kLength, std::size_t kCount, class Load>
[[gnu::always_inline]] inline void SplitButterflies(const FftTables& tables, std::size_t i, const Load& load,
                                                    FftBuffers<V>& buffers) {
  using Values = typename V::Value[kCount];
  constexpr std::size_t kEighth = kLength / 8;
  const auto* const factors = &tables.Real[kEighth + i];
  Complexes<V>* const odd = &buffers.Odd[kLength / 4];
  Values x, y, real, sum, difference;
#pragma GCC unroll 2
  for (std::size_t j = 0; j < 2; ++j) {
    load(j, x);
    load(j + 4, y);
#pragma GCC unroll 8
    for (std::size_t p = 0; p < kCount; ++p) real[p] = x[p] - y[p], sum[p] = x[p] + y[p];
    load(j + 6, x);
    load(j + 2, y);
#pragma GCC unroll 8
    for (std::size_t p = 0; p < kCount; ++p) {
      const std::size_t at = i + p + j * kEighth;
      odd[at] = Times<V>({real[p], x[p] - y[p]}, factors[p].data() + 4 * j);
      const auto other = x[p] + y[p];
      buffers.Reals[at] = sum[p] + other;
      if (j == 0) difference[p] = sum[p] - other;
      if (j == 1) buffers.Odd[at] = Times<V>({difference[p], other - sum[p]}, factors[p].data() + 8);
    }
  }
}

// The pointers of a group's frames, copied to where the compiler sees that no store changes them.
template <class V, class Number>
[[gnu::always_inline]] inline std::array<Number*, V::kLanes> PointersOf(Number* const* group) {
  std::array<Number*, V::kLanes> pointers;
#pragma GCC unroll 4
  for (std::size_t frame = 0; frame < V::kLanes; ++frame) pointers[frame] = group[frame];
  return pointers;
}

// Stores the magnitudes of kBinsAtATime bins from `bin` on.
template <class V>
[[gnu::always_inline]] inline void StoreMagnitudes(const typename V::Value* squares, double* const* magnitudes,
                                                   std::size_t bin) {
  const auto to = PointersOf<V>(magnitudes);
#pragma GCC unroll 8
  for (std::size_t first = 0; first < kBinsAtATime; first += V::kLanes) {
    typename V::Value values[V::kLanes];
#pragma GCC unroll 4
    for (std::size_t i = 0; i < V::kLanes; ++i) {
      const auto square = squares[bin + first + i];
      values[i] = HasRoot(first + i) ? square : V::SquareRoot(square);
    }
    V::Store(values, to.data(), bin + first);
  }
}

// The first pass. It stores what the group before has left, if there was one: memory takes that no faster.
template <class V>
inline void SplitSamples(const FftTables& tables, const double* const* samples, const TransformWindow& window,
                         double* const* magnitudesBefore, FftBuffers<V>& buffers) {
  constexpr std::size_t kEighth = kTransformLength / 8;
  static_assert(kEighth / kSamplesAtATime == kTransformBins / kBinsAtATime);
  const auto frames = PointersOf<V>(samples);
  for (std::size_t i = 0; i < kEighth; i += kSamplesAtATime) {
    if (magnitudesBefore) StoreMagnitudes<V>(buffers.Squares, magnitudesBefore, i * (kBinsAtATime / kSamplesAtATime));
    const auto load = [&](std::size_t j, typename V::Value* values) __attribute__((always_inline)) {
      V::LoadWindowed(frames.data(), i + j * kEighth, window.FactorsOf(i, j), values);
    };
    SplitButterflies<V, kTransformLength, kSamplesAtATime>(tables, i, load, buffers);
  }
}

template <class V, std::size_t kLength>
inline void SplitReals(const FftTables& tables, FftBuffers<V>& buffers) {
  for (std::size_t i = 0; i < kLength / 8; ++i) {
    const auto load = [&](std::size_t j, typename V::Value* value) __attribute__((always_inline)) {
      *value = buffers.Reals[i + j * (kLength / 8)];
    };
    SplitButterflies<V, kLength, 1>(tables, i, load, buffers);
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
  V::Begin();
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

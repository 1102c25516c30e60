// The transform of the spectrum: 2,048 samples to 1,024 magnitudes, in double precision.
//
// A real input of twice 1,024 values is transformed as 1,024 complex ones, even samples as real and odd ones as
// imaginary parts, and split afterwards (the identity of Cooley, Lewis and Welch, 1970). The complex transform is a
// radix-4 autosort one (Stockham; in the form of Swarztrauber, 1982), which needs no bit reversal. Window and
// conversion are done while the first pass loads, the magnitudes while the split runs, so that no pass of its own goes
// over the memory.
#pragma once

#include <cstddef>

inline constexpr std::size_t kTransformLength = 2048;  // real values
inline constexpr std::size_t kTransformBins = kTransformLength / 2;

// The same passes for one, two or four numbers at a time.
enum class FftPath { Scalar, Sse2, Avx2 };

// The window as the first pass wants it: factors of the even samples apart from those of the odd ones.
struct TransformWindow {
  alignas(64) double even[kTransformBins];
  alignas(64) double odd[kTransformBins];

  // `window`: 2,048 factors in the order of the samples.
  explicit TransformWindow(const double* window);
};

// Writes |X[k]| for k from 0 to 1,023, X being the forward transform, without a normalisation, of the real values
// samples[i] * window[i] * gain, multiplied in this order.
// `samples`: 2,048 signed 16-bit values, little-endian, at any address.
using MagnitudeTransform = void (*)(const void* samples, const TransformWindow& window, double gain,
                                    double* magnitudes);

// Null where this build or this machine has no such path.
MagnitudeTransform TransformOf(FftPath path);

// The widest path that this machine runs.
FftPath FastestFft();

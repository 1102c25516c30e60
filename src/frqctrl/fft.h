// The transform of the spectrum: 2,048 samples to 1,024 magnitudes, in double precision.
//
// A vector holds the same sample of neighbouring frames, one a lane: no pass has to bring values of one frame together,
// and what a frame comes to does not depend on those beside it. The transform is the split-radix one for real values
// (Sorensen, Jones, Heideman and Burrus, 1987), decimated in frequency: the even half of the outputs of a real
// transform is a real transform of half the length, the odd half a complex one of a quarter of it. The window is
// applied while the first pass loads. The order that the passes leave is put right by where the last of them write, so
// that no pass of its own goes over the memory.
#pragma once

#include <cstddef>

inline constexpr std::size_t kTransformLength = 2048;  // real values
inline constexpr std::size_t kTransformBins = kTransformLength / 2;

// Neighbouring samples of a frame that the first pass takes together.
inline constexpr std::size_t kSamplesAtATime = 2;

// The same passes for one, two or four frames at a time.
enum class FftPath { Scalar, Sse2, Avx2 };

// The window as the first pass wants it, with the gain in it.
struct TransformWindow {
  // The first pass takes every 256th sample together.
  static constexpr std::size_t kStride = kTransformLength / 8;
  alignas(64) double Factors[kTransformLength];

  // `window`: 2,048 factors in the order of the samples.
  TransformWindow(const double* window, double gain);

  // The factors of the samples i + j * kStride and, as far as they are taken together with it, of the next ones.
  const double* FactorsOf(std::size_t i, std::size_t j) const { return Factors + PlaceOf(i, j); }

 private:
  static std::size_t PlaceOf(std::size_t i, std::size_t j) {
    return (i / kSamplesAtATime * 8 + j) * kSamplesAtATime + i % kSamplesAtATime;
  }
};

// Writes |X[k]| for k from 0 to 1,023 of each frame of `groups` groups (at least 1) of `frames` frames, X being the
// forward transform, without a normalisation, of the real values samples[i] * window[i] * gain.
struct MagnitudeTransform {
  // `samples`: for each frame 2,048 values, which may be in part those of another one. `magnitudes`: for each frame the
  // place of its own, aligned to 64 bytes; frames of the same samples may have the same place.
  using Function = void (*)(const double* const* samples, const TransformWindow& window, double* const* magnitudes,
                            std::size_t groups);

  static constexpr std::size_t kMostFrames = 4;

  Function Run = nullptr;
  std::size_t Frames = 0;

  explicit operator bool() const { return Run != nullptr; }
};

// None where this build or this machine has no such path.
MagnitudeTransform TransformOf(FftPath path);

// The widest path that this machine runs.
FftPath FastestFft();

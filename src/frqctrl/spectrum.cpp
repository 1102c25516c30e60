#include "frqctrl/spectrum.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <iterator>
#include <numbers>
#include <system_error>
#include <thread>

namespace {

constexpr std::size_t kSampleSize = 2;
constexpr double kToFullScale = 1.0 / 32768.0 / 2048.0;

// Fewer frames than these are not worth a thread: they take as long as starting one.
constexpr std::size_t kFramesWorthAThread = 512;
// Frames that a thread takes at a time.
constexpr std::size_t kFramesAtATime = 32;

// The places where the frames of a wave begin.
struct FrameSource {
  const std::uint8_t* Raw;     // the wave's data as they are
  const std::uint8_t* Middle;  // frames away from the ends begin in this
  std::size_t Samples;         // per channel

  // The frames at both ends read the raw data, which are interleaved in a stereo wave, and those at its end lie in the
  // middle of its data then. The picture has always been like that, and the ends of a map are judged by it.
  const std::uint8_t* FrameAround(std::size_t center) const {
    constexpr std::size_t kHalf = SpectrumFrameLength / 2;
    if (center < kHalf) return Raw;
    if (center > Samples - kHalf) return Raw + (Samples - SpectrumFrameLength) * kSampleSize;
    return Middle + (center - kHalf) * kSampleSize;
  }
};

// Samples of neighbouring frames as numbers, each once.
class Stretch {
 public:
  // The samples of a frame that begins at `frame`, which is in the order of the wave behind those asked for before.
  const double* SamplesOf(const std::uint8_t* frame) {
    if (last_ && frame == last_ + SpectrumHop * kSampleSize) {
      Append(last_ + SpectrumFrameLength * kSampleSize, SpectrumHop);
    } else if (frame != last_) {
      Append(frame, SpectrumFrameLength);
    }
    last_ = frame;
    return samples_ + count_ - SpectrumFrameLength;
  }

 private:
  // Frames follow each other but for two places: behind those at the beginning, and before those at the end.
  static constexpr std::size_t kRoom = 3 * SpectrumFrameLength + kFramesAtATime * SpectrumHop;

  void Append(const std::uint8_t* __restrict from, std::size_t count) {
    constexpr std::size_t kVector = 8;  // samples that one instruction takes
    double* __restrict const to = samples_ + count_;
    for (std::size_t i = 0; i < count; i += kVector, from += kVector * kSampleSize) {
      std::int16_t samples[kVector];
      std::memcpy(samples, from, sizeof(samples));
      for (std::size_t k = 0; k < kVector; ++k) to[i + k] = samples[k];
    }
    count_ += count;
  }

  double samples_[kRoom];
  std::size_t count_ = 0;
  const std::uint8_t* last_ = nullptr;
};

// Computes entries `first` to `end` - 1, at most kFramesAtATime.
void AnalyzeFrames(SpectrumTable& table, const FrameSource& source, const TransformWindow& window,
                   const MagnitudeTransform& transform, std::size_t first, std::size_t end) {
  Stretch stretch;
  const double* samples[kFramesAtATime + MagnitudeTransform::kMostFrames];
  double* magnitudes[std::size(samples)];
  std::size_t count = 0;
  for (std::size_t j = first; j < end; ++j, ++count) {
    samples[count] = stretch.SamplesOf(source.FrameAround(j * SpectrumHop));
    magnitudes[count] = table[j];
  }
  // The last group is filled up with its last frame.
  for (; count % transform.Frames != 0; ++count) {
    samples[count] = samples[count - 1];
    magnitudes[count] = magnitudes[count - 1];
  }
  transform.Run(samples, window, magnitudes, count / transform.Frames);
}

std::vector<std::uint8_t> LeftChannel(const std::uint8_t* pairs, std::size_t count) {
  std::vector<std::uint8_t> left(count * kSampleSize);
  for (std::size_t i = 0; i < count; ++i) {
    std::memcpy(&left[i * kSampleSize], pairs + 2 * i * kSampleSize, kSampleSize);
  }
  return left;
}

unsigned ThreadsFor(std::size_t frames, unsigned wanted) {
  if (wanted == 0) wanted = std::max(1u, std::thread::hardware_concurrency());
  return static_cast<unsigned>(std::clamp<std::size_t>(frames / kFramesWorthAThread, 1, wanted));
}

// Runs `work` on this thread and on threads - 1 others, or fewer if the system gives no more.
template <typename Work>
void RunOnThreads(unsigned threads, const Work& work) {
  std::vector<std::jthread> others;
  others.reserve(threads - 1);
  try {
    while (others.size() + 1 < threads) others.emplace_back(work);
  } catch (const std::system_error&) {
    // The work is shared out as it goes: those that run do all of it.
  }
  work();
}

}  // namespace

void SpectrumTable::Extend(std::size_t count) {
  try {
    while (pieces_.size() * kPiece < size_ + count) {
      pieces_.push_back(std::make_unique_for_overwrite<Piece>());
    }
  } catch (...) {
    Free();
    throw;
  }
  size_ += count;
}

void SpectrumTable::Free() {
  size_ = 0;
  pieces_.clear();
  pieces_.shrink_to_fit();
}

int AnalyzeWave(SpectrumTable& table, const SpectrumWave& wave, const SpectrumMeans& means) {
  table.Clear();
  if (wave.BitsPerSample != 16) return -1;
  const std::size_t samples = wave.Channels ? wave.Data.size() / (kSampleSize * wave.Channels) : 0;
  if (samples < SpectrumMinSamples) return 0;
  try {
    std::vector<std::uint8_t> left;
    if (wave.Channels == 2) left = LeftChannel(wave.Data.data(), samples);
    const FrameSource source{wave.Data.data(), left.empty() ? wave.Data.data() : left.data(), samples};
    double gain = 0.0;
    const std::vector<double> factors = MakeAnalysisWindow(gain);
    const TransformWindow window(factors.data(), gain * kToFullScale);
    const MagnitudeTransform transform = TransformOf(means.Path);

    const std::size_t frames = (samples + SpectrumHop - 1) / SpectrumHop;
    table.Extend(frames);
    std::atomic<std::size_t> next = 0;
    RunOnThreads(ThreadsFor(frames, means.Threads), [&] {
      for (std::size_t first; (first = next.fetch_add(kFramesAtATime)) < frames;) {
        AnalyzeFrames(table, source, window, transform, first, std::min(first + kFramesAtATime, frames));
      }
    });
  } catch (const std::bad_alloc&) {
    table.Free();
    throw;
  }
  return 0;
}

std::vector<double> MakeAnalysisWindow(double& gain) {
  gain = SpectrumWindowGain;
  std::vector<double> window(SpectrumFrameLength);
  for (std::size_t i = 0; i < window.size(); ++i) {
    window[i] = 0.54 - 0.46 * std::cos(2.0 * std::numbers::pi * static_cast<double>(i) / 2048.0);
  }
  return window;
}

void AnalyzeFrame(SpectrumTable& table, const std::int16_t* samples, const double* window, double gain) {
  table.Extend(1);
  Stretch stretch;
  const double* values[MagnitudeTransform::kMostFrames];
  double* magnitudes[MagnitudeTransform::kMostFrames];
  std::fill(std::begin(values), std::end(values), stretch.SamplesOf(reinterpret_cast<const std::uint8_t*>(samples)));
  std::fill(std::begin(magnitudes), std::end(magnitudes), table[table.size() - 1]);
  TransformOf(FastestFft()).Run(values, TransformWindow(window, gain * kToFullScale), magnitudes, 1);
}

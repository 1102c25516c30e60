#include "frqctrl/spectrum.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
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

// Where the frames of a wave begin.
struct FrameSource {
  const std::uint8_t* raw;     // the wave's data as they are
  const std::uint8_t* middle;  // what frames away from the ends are taken from
  std::size_t samples;         // per channel

  // The frames at both ends read the raw data, which are interleaved in a stereo wave, and those at its end lie in the
  // middle of its data then. The picture has always been like that, and the ends of a map are judged by it.
  const std::uint8_t* FrameAround(std::size_t center) const {
    constexpr std::size_t kHalf = SpectrumFrameLength / 2;
    if (center < kHalf) return raw;
    if (center > samples - kHalf) return raw + (samples - SpectrumFrameLength) * kSampleSize;
    return middle + (center - kHalf) * kSampleSize;
  }
};

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
      pieces_.push_back(std::make_unique_for_overwrite<double[]>(kPiece * SpectrumBins));
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
  if (wave.bitsPerSample != 16) return -1;
  const std::size_t samples = wave.channels ? wave.data.size() / (kSampleSize * wave.channels) : 0;
  if (samples < SpectrumMinSamples) return 0;
  try {
    std::vector<std::uint8_t> left;
    if (wave.channels == 2) left = LeftChannel(wave.data.data(), samples);
    const FrameSource source{wave.data.data(), left.empty() ? wave.data.data() : left.data(), samples};
    double gain = 0.0;
    const TransformWindow window(MakeAnalysisWindow(gain).data());
    const MagnitudeTransform transform = TransformOf(means.path);

    const std::size_t frames = (samples + SpectrumHop - 1) / SpectrumHop;
    table.Extend(frames);
    std::atomic<std::size_t> next = 0;
    RunOnThreads(ThreadsFor(frames, means.threads), [&] {
      for (std::size_t first; (first = next.fetch_add(kFramesAtATime)) < frames;) {
        for (std::size_t j = first; j < std::min(first + kFramesAtATime, frames); ++j) {
          transform(source.FrameAround(j * SpectrumHop), window, gain * kToFullScale, table[j]);
        }
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
  TransformOf(FastestFft())(samples, TransformWindow(window), gain * kToFullScale, table[table.size() - 1]);
}

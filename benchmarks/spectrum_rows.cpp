// The spectrum of a minute: against the same job with FFTW, all cores against one, and the 32-bit program's against
// that of the native build.
#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <thread>

#include "rows.h"
#include "spectrumwave.h"

namespace {

// Window, FFTW's real transform and magnitudes, as one writes it with that library. The loops around the transform
// become vector instructions too: the compiler is told that nothing overlaps, and that nobody asks for errors of a
// root.
class FftwJob {
 public:
  FftwJob() { Require(plan_ != nullptr, "FFTW makes no plan"); }
  ~FftwJob() {
    fftw_destroy_plan(plan_);
    fftw_free(out_);
    fftw_free(in_);
  }
  FftwJob(const FftwJob&) = delete;
  FftwJob& operator=(const FftwJob&) = delete;

  void Frame(const std::int16_t* __restrict samples, double* __restrict magnitudes) {
    const double* __restrict const window = window_.data();
    double* __restrict const in = in_;
    const double gain = gain_;
    for (std::size_t i = 0; i < SpectrumFrameLength; ++i) in[i] = samples[i] * window[i] * gain;
    fftw_execute(plan_);
    const fftw_complex* __restrict const out = out_;
    for (std::size_t k = 0; k < SpectrumBins; ++k) {
      magnitudes[k] = std::sqrt(out[k][0] * out[k][0] + out[k][1] * out[k][1]);
    }
  }

 private:
  double gain_ = 0.0;
  std::vector<double> window_ = [this] {
    std::vector<double> window = MakeAnalysisWindow(gain_);
    gain_ /= 32768.0 * 2048.0;
    return window;
  }();
  double* const in_ = fftw_alloc_real(SpectrumFrameLength);
  fftw_complex* const out_ = fftw_alloc_complex(SpectrumBins + 1);
  const fftw_plan plan_ = fftw_plan_dft_r2c_1d(SpectrumFrameLength, in_, out_, FFTW_MEASURE);
};

class AgainstFftw : public Work {
 public:
  explicit AgainstFftw(FftPath path) : path_(path) {}

  double Measured() override { return minute_.Milliseconds(path_, 1); }
  double Yardstick() override {
    SpectrumTable& table = minute_.Table();
    return MillisecondsOf([&] {
      const std::vector<std::int16_t>& samples = minute_.Samples();
      for (std::size_t j = 0; j < table.size(); ++j) {
        const std::size_t start = std::max<std::size_t>(j * SpectrumHop, 1024) - 1024;
        job_.Frame(&samples[std::min(start, samples.size() - SpectrumFrameLength)], table[j]);
      }
    });
  }

 private:
  FftPath path_;
  SpectrumOfAMinute minute_;
  FftwJob job_;
};

class AllCores : public Work {
 public:
  double Measured() override { return minute_.Milliseconds(FastestFft(), 0); }
  double Yardstick() override { return minute_.Milliseconds(FastestFft(), 1); }

 private:
  SpectrumOfAMinute minute_;
};

// The 32-bit program of the same job is run, and prints its own time, so that its start does not count.
class In32Bits : public Work {
 public:
  In32Bits(const std::string& command, FftPath path)
      : command_(command + " " + std::to_string(static_cast<int>(path))), path_(path) {}

  double Measured() override {
    std::FILE* const output = popen(command_.c_str(), "r");
    double ms = 0.0;
    Require(output && std::fscanf(output, "%lf", &ms) == 1, "the 32-bit program does not run");
    pclose(output);
    return ms;
  }
  double Yardstick() override {
    double least = minute_.Milliseconds(path_, 1);
    for (int i = 1; i < kSpectrumRepeats; ++i) least = std::min(least, minute_.Milliseconds(path_, 1));
    return least;
  }

 private:
  std::string command_;
  FftPath path_;
  SpectrumOfAMinute minute_;
};

}  // namespace

std::vector<Row> SpectrumRows(const std::string& command32) {
  std::vector<Row> rows;
  const struct {
    const char *name, *name32;
    FftPath path;
    double aim;
  } kPaths[] = {{"spectrum_sse2", "spectrum32_sse2", FftPath::Sse2, 0.95},
                {"spectrum_avx2", "spectrum32_avx2", FftPath::Avx2, 0.6}};
  for (const auto& it : kPaths) {
    const FftPath path = it.path;
    if (!TransformOf(path)) continue;
    rows.push_back({it.name, "ms", it.aim, [path] { return std::make_unique<AgainstFftw>(path); }, Taken::Least});
    rows.push_back({it.name32, "ms", 1.15, [=] { return std::make_unique<In32Bits>(command32, path); }});
  }
  // A tenth is for threads that start and cores that share their memory.
  const double cores = std::max(1u, std::thread::hardware_concurrency());
  rows.push_back(RowOf<AllCores>("spectrum_cores", "ms", 0.1 + 1.0 / cores, Taken::Least));
  return rows;
}

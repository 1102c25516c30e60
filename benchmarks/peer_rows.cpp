// The analysis of a minute's pitch against those of others, each on one core, in the same range and at the same step.
#include <sched.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "base/bytes.h"
#include "companions/resampler/render.h"
#include "longvoice.h"
#include "measuring.h"
#include "pitch/pitchanalysis.h"
#include "rows.h"

namespace {

namespace fs = std::filesystem;

constexpr int kSeconds = 60;
constexpr char kSptk[] = "/usr/libexec/sptk/bin/pitch";

// Holds this thread, and what it starts, to one core: some of the others would take all.
class OnOneCore {
 public:
  OnOneCore() {
    sched_getaffinity(0, sizeof before_, &before_);
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(sched_getcpu(), &one);
    Require(sched_setaffinity(0, sizeof one, &one) == 0, "no core for one thread");
  }
  ~OnOneCore() { sched_setaffinity(0, sizeof before_, &before_); }
  OnOneCore(const OnOneCore&) = delete;
  OnOneCore& operator=(const OnOneCore&) = delete;

 private:
  cpu_set_t before_;
};

class Scratch {
 public:
  Scratch() { fs::create_directory(path_); }
  ~Scratch() {
    std::error_code error;
    fs::remove_all(path_, error);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  std::string PathOf(const char* name) const { return (path_ / name).string(); }

 private:
  const fs::path path_ = fs::temp_directory_path() / ("marlit_peer_" + std::to_string(getpid()));
};

void Write(const std::string& path, const void* data, std::size_t bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(static_cast<const char*>(data), static_cast<std::streamsize>(bytes));
  Require(static_cast<bool>(file.flush()), "a wave cannot be written");
}

class AgainstPeer : public Work {
 public:
  double Measured() override {
    const OnOneCore core;
    return MillisecondsOf([this] {
      Require(!AnalysePitch(samples_, kVoiceRate, voices::kHop).empty(), "a wave has no pitch");
    });
  }

 protected:
  const std::vector<float> samples_ = VoicesOf(kSeconds);
  const Scratch folder_;
};

// Praat times itself.
class AgainstPraat : public AgainstPeer {
 public:
  AgainstPraat() {
    const Bytes wave = EncodeWaveFile(To16Bits(samples_), kVoiceRate);
    Write(folder_.PathOf("a.wav"), wave.data(), wave.size());
  }
  double Yardstick() override {
    const OnOneCore core;
    const std::string step = std::to_string(static_cast<double>(voices::kHop) / kVoiceRate);
    const std::string line = "praat --run benchmarks/pitch.praat '" + folder_.PathOf("a.wav") + "' " + step + " " +
                             std::to_string(kLowestVoiceHz) + " " + std::to_string(kHighestVoiceHz);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> told(popen(line.c_str(), "r"), &pclose);
    double seconds = 0.0;
    Require(told && std::fscanf(told.get(), "%lf", &seconds) == 1 && seconds > 0.0, "Praat finds no pitch");
    return 1000.0 * seconds;
  }
};

// A process, less what the same one takes for a moment of the same wave.
class AgainstSptk : public AgainstPeer {
 public:
  explicit AgainstSptk(int algorithm)
      : command_(kSptk + (" -a " + std::to_string(algorithm)) + " -s " + std::to_string(kVoiceRate / 1000.0) + " -p " +
                 std::to_string(voices::kHop) + " -L " + std::to_string(kLowestVoiceHz) + " -H " +
                 std::to_string(kHighestVoiceHz) + " -o 1 ") {
    Write(folder_.PathOf("whole"), samples_.data(), samples_.size() * sizeof(float));
    Write(folder_.PathOf("moment"), samples_.data(), kMomentSamples * sizeof(float));
  }
  double Yardstick() override {
    const OnOneCore core;
    return Run("whole", kSeconds * kVoiceRate) - Run("moment", kMomentSamples);
  }

 private:
  static constexpr std::size_t kMomentSamples = kVoiceRate / 10;

  double Run(const char* name, std::size_t samples) const {
    const std::string pitch = folder_.PathOf("pitch");
    const std::string line = command_ + "'" + folder_.PathOf(name) + "' >'" + pitch + "'";
    const double ms = MillisecondsOf([&] { Require(std::system(line.c_str()) == 0, "SPTK finds no pitch"); });
    Require(fs::file_size(pitch) >= samples / voices::kHop * sizeof(float), "SPTK has left out a part");
    return ms;
  }

  const std::string command_;
};

}  // namespace

std::vector<Row> PeerRows() {
  std::vector<Row> rows;
  if (std::system("praat --version >/dev/null 2>&1") == 0) {
    rows.push_back(RowOf<AgainstPraat>("pitch_praat", "ms", 1.0));
  } else {
    std::fputs("bench: without praat, which has a package of that name, our pitch has no peer in it\n", stderr);
  }
  if (access(kSptk, X_OK) == 0) {
    rows.push_back({"pitch_sptk_rapt", "ms", 1.0, [] { return std::make_unique<AgainstSptk>(0); }});
    rows.push_back({"pitch_sptk_swipe", "ms", 1.0, [] { return std::make_unique<AgainstSptk>(1); }});
  } else {
    std::fputs("bench: without sptk, which has a package of that name, our pitch has no peer in it\n", stderr);
  }
  return rows;
}

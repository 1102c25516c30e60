// marlit_growth_native JSONFILE BANKS [NAME]: how the analyses of a wave grow with its length, and the banks for the
// rows of the program, which marlit_growth measures behind it: made here, since through Wine each new file of a large
// folder costs a look at all the others. BANKS is a folder; the banks in it are made once.
#include <cmath>
#include <cstdio>
#include <fstream>

#include "frqctrl/spectrum.h"
#include "frqmap/freq0003.h"
#include "frqmap/levels.h"
#include "growth.h"
#include "longvoice.h"
#include "measuring.h"
#include "pitch/pitchanalysis.h"

namespace {

namespace fs = std::filesystem;

constexpr SampleCount kFrames = 100;

// A tone with a stretch an octave too high: a check finds one place in each map.
FrqMap MapWithAnError() {
  FrqMap map;
  map.Create(kFrames, FrqTypeFrq);
  for (SampleCount i = 0; i < kFrames; ++i) {
    const double hz = 220.0 + 5.0 * std::sin(i / 20.0);
    map.SetFrequency(map.PositionOf(i), i >= 40 && i < 55 ? 2.0 * hz : hz);
    map.Frames.Own()[static_cast<std::size_t>(i)].Amplitude = 2000.0;
  }
  return map;
}

void Write(const fs::path& path, const Bytes& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  Require(static_cast<bool>(file.flush()), "a bank cannot be written");
}

// Waves without samples, with maps, in folders of a hundred. A bank that is not whole has another name.
void MakeBank(const fs::path& bank, int syllables) {
  if (fs::exists(bank)) return;
  const fs::path unfinished = bank.string() + ".new";
  const Bytes map = EncodeFreq0003(MapWithAnError(), FrqTypeFrq);
  for (int i = 0; i < syllables; ++i) {
    const fs::path folder = unfinished / std::to_string(1000 + i / 100);
    if (i % 100 == 0) fs::create_directories(folder);
    const std::string name = std::to_string(100000 + i);
    Write(folder / (name + ".wav"), {});
    Write(folder / (name + "_wav.frq"), map);
  }
  fs::rename(unfinished, bank);
}

class OfSamples : public GrowingWork {
 public:
  explicit OfSamples(int seconds) {
    for (const float sample : VoicesOf(seconds)) samples_.push_back(static_cast<std::int16_t>(sample));
  }

 protected:
  ByteSpan Samples() const {
    return {reinterpret_cast<const std::uint8_t*>(samples_.data()), samples_.size() * sizeof(std::int16_t)};
  }

 private:
  std::vector<std::int16_t> samples_;
};

// The spectrum on one thread, into memory that is there from the first go on.
class SpectrumOfWave : public OfSamples {
 public:
  using OfSamples::OfSamples;
  double Milliseconds() override {
    return MillisecondsOf([this] {
      Require(AnalyzeWave(table_, {1, 16, Samples()}, {FastestFft(), 1}) == 0, "a wave is not analysed");
    });
  }

 private:
  SpectrumTable table_;
};

class LevelsOfWave : public OfSamples {
 public:
  using OfSamples::OfSamples;
  double Milliseconds() override {
    return MillisecondsOf([this] { Require(!LevelsOfSamples(Samples(), 1, 256).empty(), "a wave has no levels"); });
  }
};

class PitchOfWave : public GrowingWork {
 public:
  explicit PitchOfWave(int seconds) : samples_(VoicesOf(seconds)) {}
  double Milliseconds() override {
    return MillisecondsOf([this] { Require(!AnalysePitch(samples_, kVoiceRate, 256).empty(), "a wave has no pitch"); });
  }

 private:
  const std::vector<float> samples_;
};

template <typename T>
GrowthRow RowOfWave(const char* name) {
  return {name, "seconds", kGrowingSeconds, [](int seconds) { return std::make_unique<T>(seconds); }};
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) {
    std::fprintf(stderr, "usage: marlit_growth_native JSONFILE BANKS [NAME]\n");
    return 2;
  }
  for (const int syllables : kGrowingSyllables) MakeBank(fs::path(arguments[2]) / std::to_string(syllables), syllables);
  return MeasureGrowth({RowOfWave<SpectrumOfWave>("growth_spectrum"), RowOfWave<PitchOfWave>("growth_pitch"),
                        RowOfWave<LevelsOfWave>("growth_levels")},
                       count > 3 ? arguments[3] : "", arguments[1]);
}

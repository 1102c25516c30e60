// The sample voicebank is what a newcomer opens first and what other tests lean on: its maps must be right where they
// claim to be, and wrong where an error was planted.
#include "samplebank/bank.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "frqmap/freq0003.h"
#include "native/wavebytes.h"

namespace {

// The first channel of a wave, opened as the program opens it.
std::vector<double> Samples(const Bytes& file) {
  WaveBytes source(file);
  const DecodedWave wave = DecodeWav(source, false).value();
  std::vector<double> samples;
  for (ByteReader reader(wave.samples); samples.size() < wave.dataSize / wave.format.blockAlign;) {
    samples.push_back(reader.Read<std::int16_t>());
    if (wave.format.channels == 2) reader.Read<std::int16_t>();
  }
  return samples;
}

// How well a wave repeats itself around a sample in the period of a pitch: 1 is perfectly.
double Repeats(const std::vector<double>& samples, std::ptrdiff_t centre, double hz) {
  constexpr std::ptrdiff_t kWindow = 700;
  const std::ptrdiff_t lag = std::lround(FrqSampleRate / hz);
  const double* const start = samples.data() + centre - (kWindow + lag) / 2;
  double cross = 0.0, here = 1.0, there = 1.0;
  for (const double* x = start; x < start + kWindow; ++x) {
    cross += x[0] * x[lag];
    here += x[0] * x[0];
    there += x[lag] * x[lag];
  }
  return cross / std::sqrt(here * there);
}

// In the octave below its pitch a wave repeats itself too.
bool IsPitchOf(const std::vector<double>& samples, std::ptrdiff_t centre, double hz) {
  const double fit = Repeats(samples, centre, hz);
  return fit > 0.9 && Repeats(samples, centre, 2.0 * hz) < 0.95 * fit;
}

// Audible, and without a change from consonant to vowel inside the window of a comparison, which would blur it.
bool IsSteady(const FrqMap& map, std::ptrdiff_t frame) {
  if (frame < 4 || frame + 4 >= map.FrameCount) return false;
  const auto around = std::span(map.Frames).subspan(frame - 4, 9);
  const auto [low, high] = std::ranges::minmax(around, {}, &FrqFrame::Amplitude);
  return low.Amplitude > 100.0 && high.Amplitude < 2.0 * low.Amplitude;
}

TEST(SampleBank, MapsAgreeWithTheirWavesExceptForThePlantedErrors) {
  constexpr std::u8string_view kEnding = u8"_wav.frq";
  std::map<std::u8string, Bytes> bank;
  for (BankFile& file : MakeSampleBank()) bank[file.path] = std::move(file.bytes);
  int maps = 0;
  for (const auto& [path, bytes] : bank) {
    if (!path.ends_with(kEnding)) continue;
    const std::u8string stem = path.substr(0, path.size() - kEnding.size());
    SCOPED_TRACE("map " + std::to_string(maps++));
    const FrqMap map = DecodeFreq0003(bytes).value();
    const std::vector<double> samples = Samples(bank.at(stem + u8".wav"));
    ASSERT_EQ(map.Hop, 256);
    ASSERT_EQ(map.FrameCount, (std::ssize(samples) + 255) / 256);
    EXPECT_FALSE(map.Frames.front().Voiced || map.Frames.back().Voiced);
    EXPECT_NEAR(map.Average, map.ComputeAverage(-1), map.Average * 0.15);
    const double peak = *std::ranges::max_element(samples);
    EXPECT_TRUE(peak > 10000.0 && peak < 32000.0) << "neither silent nor clipped " << peak;

    int right = 0, octaveUp = 0, octaveDown = 0, wrong = 0;
    for (std::ptrdiff_t i = 0; i < map.FrameCount; ++i) {
      if (!map.Frames[i].Voiced || !IsSteady(map, i)) continue;
      const auto fits = [&](double factor) { return IsPitchOf(samples, i * 256, map.Frames[i].Frequency * factor); };
      ++(fits(1.0) ? right : fits(0.5) ? octaveUp : fits(2.0) ? octaveDown : wrong);
    }
    EXPECT_EQ(octaveUp, stem == u8"か" ? 12 : 0);
    EXPECT_EQ(octaveDown, stem == u8"ら" ? 20 : 0);
    EXPECT_TRUE(stem == u8"さ" ? wrong > 6 : wrong == 0) << wrong << " frames, where only the hiss has a false pitch";
    EXPECT_GE(right, 100);
  }
  EXPECT_EQ(maps, 11) << "three of the fourteen waves wait for their maps to be created";
}

}  // namespace

// The sample voicebank is what a newcomer opens first and what other tests lean on: its maps must be right where they
// claim to be, and wrong where an error was planted.
#include "samplebank/bank.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frqmap/freq0003.h"

namespace {

using Files = std::map<std::u8string, Bytes>;

Files MakeFiles() {
  Files files;
  for (BankFile& file : MakeSampleBank()) files[file.path] = std::move(file.bytes);
  return files;
}

// Made once: the synthesis takes a second under a sanitizer.
const Files& Bank() {
  static const Files files = MakeFiles();
  return files;
}

std::string Text(const std::u8string& path) {
  return std::string(Bank().at(path).begin(), Bank().at(path).end());
}

template <typename Number>
Number NumberAt(const Bytes& bytes, std::size_t offset) {
  return ByteReader(ByteSpan(bytes).subspan(offset)).Read<Number>();
}

// The first channel of a wave.
std::vector<double> Samples(const Bytes& wave) {
  std::vector<double> samples;
  const auto bytesPerFrame = NumberAt<std::uint16_t>(wave, 32);
  for (std::size_t at = 44; at < wave.size(); at += bytesPerFrame) samples.push_back(NumberAt<std::int16_t>(wave, at));
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

TEST(SampleBank, IsTheSameOnEveryRun) {
  EXPECT_TRUE(Bank() == MakeFiles());
}

TEST(SampleBank, WavesOpenAndAreNeitherSilentNorClipped) {
  int waves = 0;
  for (const auto& [path, bytes] : Bank()) {
    if (!path.ends_with(u8".wav")) continue;
    const std::string text = Text(path);
    EXPECT_EQ(text.substr(0, 4) + text.substr(8, 8) + text.substr(36, 4), "RIFFWAVEfmt data");
    const int size = static_cast<int>(bytes.size());
    const int channels = path == u8"ま.wav" ? 2 : 1;
    const std::pair<std::size_t, int> numbers[] = {{4, size - 8},
                                                   {16, 16},
                                                   {20, 1 | channels << 16},
                                                   {24, 44100},
                                                   {28, 88200 * channels},
                                                   {32, 2 * channels | 16 << 16},
                                                   {40, size - 44}};
    for (const auto& [offset, number] : numbers) EXPECT_EQ(NumberAt<std::int32_t>(bytes, offset), number) << offset;
    const auto [low, high] = std::ranges::minmax(Samples(bytes));
    const double peak = std::max(-low, high);
    EXPECT_TRUE(peak > 10000.0 && peak < 32000.0) << peak;
    ++waves;
  }
  EXPECT_EQ(waves, 14);
}

TEST(SampleBank, MapsAgreeWithTheirWavesExceptForThePlantedErrors) {
  constexpr std::u8string_view kEnding = u8"_wav.frq";
  int maps = 0;
  for (const auto& [path, bytes] : Bank()) {
    if (!path.ends_with(kEnding)) continue;
    const std::u8string stem = path.substr(0, path.size() - kEnding.size());
    SCOPED_TRACE("map " + std::to_string(maps++));
    const FrqMap map = DecodeFreq0003(bytes).value();
    const std::vector<double> samples = Samples(Bank().at(stem + u8".wav"));
    ASSERT_EQ(map.Hop, 256);
    ASSERT_EQ(map.FrameCount, (std::ssize(samples) + 255) / 256);
    EXPECT_EQ(std::ssize(bytes), 40 + 16 * map.FrameCount);
    EXPECT_FALSE(map.Frames.front().Voiced || map.Frames.back().Voiced);
    EXPECT_NEAR(map.Average, map.ComputeAverage(-1), map.Average * 0.15);
    const std::ptrdiff_t middle = map.FrameCount / 2;
    double squares = 0.0;
    for (const double sample : std::span(samples).subspan(middle * 256, 256)) squares += sample * sample;
    EXPECT_NEAR(map.Frames[middle].Amplitude, std::sqrt(squares / 256.0), 1e-6);

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

TEST(SampleBank, NotesFindTheirWavesByAliasesInCodePage932) {
  const std::string main = Text(u8"oto.ini"), strong = Text(u8"強/oto.ini");
  EXPECT_EQ(std::ranges::count(main, '\n'), 12);
  EXPECT_EQ(std::ranges::count(main, ','), 12 * 5);
  EXPECT_TRUE(main.starts_with("\x82\xA0.wav=\x82\xA0,")) << "a";
  EXPECT_NE(strong.find("\n\x82\xA2.wav=\x82\xA2\x8B\xAD,"), std::string::npos) << "i, strongly";
  EXPECT_EQ((main + strong).find('?'), std::string::npos) << "a character has no bytes";
}

}  // namespace

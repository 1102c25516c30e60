// Sounds to listen to: the curve as a tone, and parts of waves.

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>

#include "native/family.h"
#include "native/tone.h"
#include "native/wavebytes.h"
#include "pitch/pitchanalysis.h"
#include "resampler/curvetone.h"
#include "voicebank/wavecut.h"

namespace {

constexpr SampleCount kHop = 256;

FrqMap MapOf(const std::vector<double>& frequencies, double level, SampleCount hop = kHop) {
  return ::MapOf(frequencies, hop, std::vector<double>(frequencies.size(), level));
}

std::vector<float> ToneOf(const FrqMap& map, double rate = 44100.0) {
  return CurveTone(map, {0, static_cast<SampleCount>(map.Frames.size())}, rate);
}

// The largest step from one sample to the next, of all samples between two.
float LargestStep(std::span<const float> samples, std::size_t from, std::size_t to) {
  float largest = 0.0f;
  for (std::size_t i = std::max<std::size_t>(from, 1); i < std::min(to, samples.size()); ++i) {
    largest = std::max(largest, std::abs(samples[i] - samples[i - 1]));
  }
  return largest;
}

TEST(Tone, HasThePitchAndTheLevelOfTheCurve) {
  std::vector<double> scale;
  for (int i = 0; i < 200; ++i) scale.push_back(220.0 * std::exp2(i / 100.0) * (1.0 + 0.01 * std::sin(i / 5.0)));
  for (const double level : {500.0, 6000.0}) {
    const std::vector<float> tone = ToneOf(MapOf(scale, level));
    ASSERT_EQ(tone.size(), scale.size() * kHop);
    const std::vector<double> heard = AnalysePitch(tone, 44100.0, kHop);
    for (std::size_t i = 4; i + 4 < scale.size(); ++i) {
      EXPECT_NEAR(1200.0 * std::log2(heard[i] / scale[i]), 0.0, 5.0) << "frame " << i;
    }
    EXPECT_NEAR(LevelOf(tone), level, 0.02 * level);
  }
}

TEST(Tone, FollowsLevelsButNeverBeyondWhatAWaveHolds) {
  FrqMap map = MapOf(std::vector<double>(100, 300.0), 0.0);
  EXPECT_GT(LevelOf(ToneOf(map)), 1000.0) << "a map without levels is heard too";
  for (std::size_t i = 0; i < 50; ++i) map.Frames.Own()[i].Amplitude = 2000.0;
  const std::vector<float> half = ToneOf(map);
  EXPECT_NEAR(LevelOf({half.data() + 10 * kHop, 30 * kHop}), 2000.0, 50.0);
  EXPECT_EQ(LevelOf({half.data() + 60 * kHop, 30 * kHop}), 0.0);
  map.Frames.Own()[10].Amplitude = 1e300;
  map.Frames.Own()[20].Amplitude = std::numeric_limits<double>::quiet_NaN();
  const std::vector<float> loud = ToneOf(map);
  EXPECT_GT(std::ranges::max(loud), 20000.0f);
  EXPECT_TRUE(std::ranges::all_of(loud, [](float sample) { return std::abs(sample) <= 32767.0f; }));
}

// A click is a step that is larger than those of a steady tone as loud and as high.
TEST(Tone, DoesNotClick) {
  constexpr SampleCount hop = 64;  // shorter than the ramps
  std::vector<double> frequencies(400, FrqNoPitch);
  std::fill_n(frequencies.begin() + 50, 250, 200.0);
  frequencies[320] = 200.0;
  std::fill_n(frequencies.begin() + 340, 30, 400.0);
  std::fill_n(frequencies.begin() + 350, 10, 200.0);
  FrqMap map = MapOf(frequencies, 3000.0, hop);
  for (std::size_t i = 130; i < 150; ++i) map.Frames.Own()[i].Amplitude = i % 2 ? 2000.0 : 500.0;
  // Gaps, behind which the voice is another time as loud, or as soft.
  for (std::size_t i = 200; i < 300; ++i) {
    if (i % 7 == 0) map.Frames.Own()[i].Frequency = FrqNoPitch;
    map.Frames.Own()[i].Amplitude = i / 7 % 2 ? 9000.0 : 500.0;
  }
  const std::vector<float> tone = ToneOf(map), high = ToneOf(MapOf(std::vector<double>(100, 400.0), 3000.0, hop));
  const float calm = LargestStep(tone, 80 * hop, 120 * hop);
  EXPECT_GT(calm, 0.0f);
  EXPECT_LE(LargestStep(tone, 0, 200 * hop), 1.02f * calm);
  EXPECT_LE(LargestStep(tone, 200 * hop, 310 * hop), 3.06f * calm);
  EXPECT_LE(LargestStep(tone, 310 * hop, 330 * hop), 1.02f * calm);
  EXPECT_LE(LargestStep(tone, 330 * hop, tone.size()), 1.02f * LargestStep(high, 10 * hop, 90 * hop));
  // It begins and ends in silence, wherever it is cut.
  const std::vector<float> part = CurveTone(map, {100, 20}, 44100.0);
  ASSERT_EQ(part.size(), 20u * hop);
  EXPECT_LT(std::abs(part.front()), 0.01f * calm);
  EXPECT_LT(std::abs(part.back()), 0.01f * calm);
  EXPECT_LE(LargestStep(part, 0, part.size()), 1.02f * calm);
}

TEST(Tone, IsMadeOfAnyNumbers) {
  const double infinite = std::numeric_limits<double>::infinity();
  FrqMap map = MapOf({1e9, 30000.0, -5.0, infinite, std::nan(""), 7900.0}, 3000.0, 4096);
  // Above what the rate can hold it would come out as some other, lower pitch.
  for (const double rate : {44100.0, 8000.0}) {
    const std::vector<float> tone = ToneOf(map, rate);
    ASSERT_EQ(tone.size(), 6u * 4096);
    EXPECT_TRUE(std::ranges::all_of(tone, [](float sample) { return std::abs(sample) < 20000.0f; }));
    // A sine of 0.4 of the rate, which has room for no harmonic.
    for (std::size_t i = 1000; i < 1100; ++i) {
      EXPECT_NEAR(tone[i + 1] + tone[i - 1], 2.0 * std::cos(0.8 * std::numbers::pi) * tone[i], 1.0) << i;
    }
  }
  EXPECT_TRUE(ToneOf(MapOf({55.0, 0.0, std::nan("")}, 3000.0)).empty());
  EXPECT_TRUE(ToneOf(MapOf({}, 3000.0)).empty());
  for (const SampleCount hop : {0, -256}) EXPECT_TRUE(ToneOf(MapOf({220.0}, 3000.0, hop)).empty());
  EXPECT_EQ(ToneOf(MapOf({220.0, 220.0}, 3000.0, std::numeric_limits<SampleCount>::max()), 1000.0).size(),
            600u * 1000u);
  EXPECT_EQ(CurveTone(MapOf({220.0, 220.0}, 3000.0), {1, 1000}, 44100.0).size(), std::size_t{kHop});
}

DecodedWave WaveOf(int tag, int channels, int bits) {
  DecodedWave wave;
  wave.format = PlainFormat(channels, 22050);
  wave.format.formatTag = static_cast<std::uint16_t>(tag);
  wave.format.bitsPerSample = static_cast<std::uint16_t>(bits);
  wave.format.blockAlign = static_cast<std::uint16_t>(channels * bits / 8);
  wave.samples.resize(static_cast<std::size_t>(100 * std::max<int>(wave.format.blockAlign, 1)));
  std::iota(wave.samples.begin(), wave.samples.end(), std::uint8_t{0});
  return wave;
}

TEST(PartsOfWaves, AreCutAtTheirSamplesAndKeepTheirFormat) {
  const Bytes extension = {24, 0, 4, 0, 0, 0, 1, 0, 0, 0, 0, 0, 16, 0, 128, 0, 0, 170, 0, 56, 155, 113};
  // Tag, channels, bits, what its format has behind the fields.
  const std::tuple<int, int, int, Bytes> cases[] = {{1, 1, 8, {}},  {1, 1, 16, {}}, {1, 2, 16, {}},
                                                    {1, 1, 24, {}}, {3, 2, 32, {}}, {0xFFFE, 1, 24, extension}};
  for (const auto& [tag, channels, bits, behind] : cases) {
    SCOPED_TRACE(testing::Message() << tag << " " << channels << " " << bits);
    const std::int64_t stride = channels * bits / 8;
    DecodedWave wave = WaveOf(tag, channels, bits);
    wave.extension = behind;
    const auto part = CutWave(wave, 10, 17);
    ASSERT_TRUE(part);
    const Bytes bytes = EncodeWave(part->format, part->extension, part->samples);
    WaveBytes source(bytes);
    const auto read = DecodeWav(source, false);
    ASSERT_TRUE(read);
    const Bytes expected(wave.samples.begin() + 10 * stride, wave.samples.begin() + 17 * stride);
    EXPECT_EQ(read->samples, expected);
    EXPECT_EQ(read->extension, behind);
    EXPECT_EQ(std::tuple(read->format.formatTag, read->format.samplesPerSec, read->format.bitsPerSample),
              std::tuple(tag, 22050u, bits));
    EXPECT_EQ(CutWave(wave, 90, 1000)->samples.size(), static_cast<std::size_t>(10 * stride));
    EXPECT_EQ(CutWave(wave, -5, 1)->samples.size(), static_cast<std::size_t>(stride));
    EXPECT_TRUE(CutWave(wave, 100, 200)->samples.empty());
    EXPECT_TRUE(CutWave(wave, 50, 40)->samples.empty());
  }
  for (const auto& [tag, channels, bits] : {std::tuple(2, 1, 4), {1, 0, 16}, {1, 1, 12}}) {
    EXPECT_FALSE(CutWave(WaveOf(tag, channels, bits), 0, 10)) << tag;
  }
}

}  // namespace

// The spectrum: the transform by all its paths, waves of all shapes, and the way from magnitudes to colours.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <complex>
#include <numbers>
#include <random>

#include "frqctrl/spectrum.h"
#include "frqctrl/spectrumbands.h"
#include "frqctrl/spectrumcolor.h"
#include "native/family.h"
#include "native/wavebytes.h"

namespace {

using testdata::Json;

std::vector<FftPath> PathsOfThisMachine() {
  std::vector<FftPath> paths;
  for (const FftPath path : {FftPath::Scalar, FftPath::Sse2, FftPath::Avx2}) {
    if (TransformOf(path)) paths.push_back(path);
  }
  return paths;
}

std::vector<std::int16_t> Noise(std::size_t count) {
  std::mt19937 random(1);
  std::vector<std::int16_t> noise(count);
  for (std::int16_t& sample : noise) sample = static_cast<std::int16_t>(random());
  return noise;
}

ByteSpan BytesOf(const std::vector<std::int16_t>& values) {
  return {reinterpret_cast<const std::uint8_t*>(values.data()), values.size() * 2};
}

// Straight from the definition.
std::vector<double> DirectMagnitudes(const std::int16_t* samples) {
  std::vector<double> magnitudes(SpectrumBins);
  std::vector<std::complex<double>> circle(SpectrumFrameLength);
  for (std::size_t i = 0; i < circle.size(); ++i) {
    circle[i] = std::polar(1.0, -2.0 * std::numbers::pi * static_cast<double>(i) / 2048.0);
  }
  for (std::size_t k = 0; k < magnitudes.size(); ++k) {
    std::complex<double> sum = 0.0;
    for (std::size_t i = 0; i < circle.size(); ++i) {
      sum += samples[i] * (0.54 - 0.46 * circle[i].real()) / 0.46 / 32768.0 / 2048.0 * circle[i * k % circle.size()];
    }
    magnitudes[k] = std::abs(sum);
  }
  return magnitudes;
}

void ExpectFrame(const double* got, const std::vector<double>& wanted, const std::string& what) {
  const double allowed = 1e-12 * std::ranges::max(wanted);
  for (std::size_t k = 0; k < SpectrumBins; ++k) ASSERT_NEAR(got[k], wanted[k], allowed) << what << ", bin " << k;
}

bool SameFrame(const double* one, const double* other) {
  return std::equal(one, one + SpectrumBins, other);
}

TEST(Spectrum, EveryPathGivesTheMagnitudesOfTheDefinition) {
  std::vector<std::vector<std::int16_t>> frames = {Noise(SpectrumFrameLength)};
  frames.emplace_back(SpectrumFrameLength, std::int16_t{-32768});              // bin 0
  frames.emplace_back(SpectrumFrameLength)[777] = 32767;                       // all bins alike
  std::vector<std::int16_t>& sine = frames.emplace_back(SpectrumFrameLength);  // bins around the top
  for (std::size_t i = 0; i < sine.size(); ++i) sine[i] = static_cast<std::int16_t>(i % 2 ? -30000 : 30000);
  for (const auto& samples : frames) {
    const std::vector<double> wanted = DirectMagnitudes(samples.data());
    for (const FftPath path : PathsOfThisMachine()) {
      SpectrumTable table;
      ASSERT_EQ(AnalyzeWave(table, {1, 16, BytesOf(samples)}, {path, 1}), 0);
      ExpectFrame(table[1], wanted, "path " + std::to_string(static_cast<int>(path)));
    }
    double gain = 0.0;
    const std::vector<double> window = MakeAnalysisWindow(gain);
    SpectrumTable table;
    AnalyzeFrame(table, samples.data(), window.data(), gain);
    ExpectFrame(table[0], wanted, "a frame by itself");
  }
}

TEST(vectors, BinsLevelsAndIntensitiesOfWaves) {
  Family family("spectrum");
  for (const Json& test : family.Entries()) {
    const Bytes file = Family::File(test["file"]);
    WaveBytes source(file);
    const auto wave = DecodeWav(source, false);
    SpectrumTable table;
    family.Expect(AnalyzeWave(table, {wave->format.channels, wave->format.bitsPerSample, wave->samples}),
                  test["result"]);
    ASSERT_EQ(table.size(), test["entries"]) << test["case"];

    SpectrumSteps steps(table, wave->format.samplesPerSec);
    const auto near = [&](double got, const Json& wanted) {
      EXPECT_NEAR(got, wanted.get<double>(), wanted.get<double>() * 1e-9 + 1e-15) << test["case"];
    };
    for (const Json& frame : test["frames"]) {
      const std::size_t entry = frame["entry"];
      for (const Json& bin : frame["bins"]) near(table[entry][bin[0].get<std::size_t>()], bin[1]);
      std::vector<NoteBand> bands;
      BuildNoteBands(24, 119, wave->format.samplesPerSec, bands);
      for (std::size_t i = 0; i < bands.size(); ++i) near(BandLevel(bands[i], table[entry]), frame["band_levels"][i]);
      for (const auto& [brightness, intensities] : frame["intensities"].items()) {
        const IntensityTable intensity(std::stoi(brightness));
        for (int i = 0; i < 96; ++i) {
          family.Expect(intensity.OfStep(steps.Of(entry)[steps.IndexOf(24 + i)]), intensities[i]);
        }
      }
    }
  }
}

TEST(Spectrum, WavesOfEveryShapeHaveTheEntriesThatTheirSamplesAllow) {
  const struct {
    unsigned channels, bits;
    std::size_t bytes;
    int result;
    std::size_t entries;
  } kCases[] = {{1, 16, 4096, 0, 4},  {1, 16, 4097, 0, 4},    {1, 16, 4095, 0, 0}, {1, 16, 4098, 0, 5},
                {1, 16, 0, 0, 0},     {2, 16, 8192, 0, 4},    {2, 16, 8191, 0, 0}, {2, 16, 10243, 0, 5},
                {3, 16, 12288, 0, 4}, {3, 16, 12293, 0, 4},   {0, 16, 8192, 0, 0}, {1, 8, 9999, -1, 0},
                {1, 24, 9999, -1, 0}, {65535, 16, 9999, 0, 0}};
  for (const auto& test : kCases) {
    const Bytes data(test.bytes, 0);  // of just that size, so that the sanitizer sees what reads beyond
    SpectrumTable table;
    table.Extend(3);
    EXPECT_EQ(AnalyzeWave(table, {test.channels, test.bits, data}), test.result) << test.channels << " " << test.bytes;
    ASSERT_EQ(table.size(), test.entries) << test.channels << " " << test.bytes;
    for (std::size_t j = 0; j < table.size(); ++j) EXPECT_EQ(table[j][j], 0.0) << "silence";
  }
}

TEST(Spectrum, FramesAtTheEndsAreRawAndThoseBetweenAreTheLeftChannel) {
  constexpr std::size_t kSamples = 5000;
  for (const unsigned channels : {1u, 2u, 3u}) {
    const std::vector<std::int16_t> data = Noise(kSamples * channels);
    std::vector<std::int16_t> middle(data.begin(), data.begin() + kSamples);
    for (std::size_t i = 0; channels == 2 && i < kSamples; ++i) middle[i] = data[2 * i];
    SpectrumTable table, first, last, between;
    ASSERT_EQ(AnalyzeWave(table, {channels, 16, BytesOf(data)}), 0);
    ASSERT_EQ(table.size(), 10u);
    double gain = 0.0;
    const std::vector<double> window = MakeAnalysisWindow(gain);
    AnalyzeFrame(first, data.data(), window.data(), gain);
    AnalyzeFrame(last, data.data() + kSamples - 2048, window.data(), gain);
    for (std::size_t j = 2; j < 8; ++j) AnalyzeFrame(between, &middle[j * 512 - 1024], window.data(), gain);
    for (std::size_t j = 0; j < 10; ++j) {
      const double* wanted = j < 2 ? first[0] : j > 7 ? last[0] : between[j - 2];
      EXPECT_TRUE(SameFrame(table[j], wanted)) << channels << " channels, entry " << j;
    }
  }
}

TEST(Spectrum, ManyThreadsGiveWhatOneGives) {
  const std::vector<std::int16_t> data = Noise(512 * 2100 + 7);
  SpectrumTable alone, together;
  AnalyzeWave(alone, {1, 16, BytesOf(data)}, {FastestFft(), 1});
  AnalyzeWave(together, {1, 16, BytesOf(data)}, {FastestFft(), 4});
  ASSERT_EQ(together.size(), 2101u);
  for (std::size_t j = 0; j < alone.size(); ++j) ASSERT_TRUE(SameFrame(alone[j], together[j])) << "entry " << j;
}

TEST(vectors, BandsAtTheLimit) {
  Family family("bands_at_the_limit");
  for (const Json& test : family.Entries()) {
    std::vector<NoteBand> bands;
    BuildNoteBands(test["low"], test["high"], test["sample_rate"], bands);
    Json edges;
    for (const NoteBand& band : bands) edges.push_back({band.LowBin, band.HighBin});
    family.Expect(edges, test["edges"], 1e-9);
  }
}

TEST(vectors, BandLevels) {
  Family family("band_level");
  const std::vector<double> magnitudes = testdata::Numbers(family.Entries()["magnitudes"]);
  for (const Json& test : family.Entries()["cases"]) {
    family.Expect(BandLevel({test["band"][0], test["band"][1]}, magnitudes.data()), test["level"], 1e-9);
  }
  const double top = magnitudes[1023];
  EXPECT_DOUBLE_EQ(BandLevel({1023.5, 1023.75}, magnitudes.data()), (0.5 * 0.5 * top + 0.75 * 0.25 * top) / 0.25);
  EXPECT_EQ(BandLevel({1023.5, 1023.0}, magnitudes.data()), 0.0) << "limited to below its lower edge";
}

TEST(vectors, Intensities) {
  Family family("level_to_intensity");
  for (const Json& test : family.Entries()) {
    for (const auto& [brightness, wanted] : test["intensity"].items()) {
      family.Expect(LevelToIntensity(test["level"], std::stoi(brightness)), wanted);
    }
  }
  for (const double odd : {-0.1, -std::numeric_limits<double>::infinity(), std::nan("")}) {
    EXPECT_EQ(LevelToIntensity(odd, -6), 128);
    EXPECT_EQ(LevelToStep(odd), 0);
  }
  EXPECT_EQ(LevelToIntensity(std::numeric_limits<double>::infinity(), 3), 255);
}

TEST(Intensities, TheShortWayGivesThemToTheLastDigitOfALevel) {
  std::vector<double> levels = {0.0, 5e-324, 1.0, 1e300, std::numeric_limits<double>::infinity()};
  std::mt19937_64 random(2);
  for (int i = 0; i < 20000; ++i) levels.push_back(std::pow(10.0, -static_cast<double>(random() % 9000) / 1000.0));
  for (int step = 1; step < 256; ++step) {
    const auto bits = std::bit_cast<std::uint64_t>(std::pow(step / 512.0, 2.5));
    for (std::uint64_t i = 0; i < 64; ++i) levels.push_back(std::bit_cast<double>(bits - 32 + i));
  }
  for (int brightness = -6; brightness <= 4; ++brightness) {
    const IntensityTable intensity(brightness);
    for (const double level : levels) {
      ASSERT_EQ(intensity(level), LevelToIntensity(level, brightness)) << std::hexfloat << level << " " << brightness;
    }
  }
}

TEST(Intensities, TheCacheHoldsEveryNoteAtEveryRate) {
  const std::vector<std::int16_t> data = Noise(4096);
  SpectrumTable table;
  AnalyzeWave(table, {1, 16, BytesOf(data)});
  for (const std::uint32_t rate : {0u, 1u, 8000u, 44100u, 192000u, 0xFFFFFFFFu}) {
    SpectrumSteps steps(table, rate);
    std::vector<NoteBand> bands;
    BuildNoteBands(18, 400, rate, bands);
    for (const std::size_t entry : {7u, 0u, 7u}) {
      for (int note = 18; note <= 400; ++note) {
        const double level = BandLevel(bands[static_cast<std::size_t>(note - 18)], table[entry]);
        ASSERT_EQ(steps.Of(entry)[steps.IndexOf(note)], LevelToStep(level)) << rate << " " << note;
      }
    }
  }
}

TEST(vectors, SpectrumColors) {
  Family family("spectrum_color");
  for (const Json& test : family.Entries()) {
    const SpectrumPalette colors = SpectrumColors(test["table"], test["high_contrast"]);
    Json shown;
    for (const Json& level : Family::Everything()["spectrum_color_levels"]) {
      shown.push_back(colors[level.get<std::size_t>()]);
    }
    family.Expect(shown, test["colors"]);
  }
}

TEST(vectors, EntriesOfColumns) {
  Family family("column_entry");
  for (const Json& test : family.Entries()) {
    std::vector<std::int64_t> entries;
    for (std::size_t c = 0; c < test["entries"].size(); ++c) {
      entries.push_back(SpectrumEntryOfColumn(static_cast<std::int64_t>(c), test["hop"], 1000));
    }
    family.Expect(entries, test["entries"]);
  }
  EXPECT_EQ(SpectrumEntryOfColumn(7, 256.0, 4), -1) << "behind the last";
  EXPECT_EQ(SpectrumEntryOfColumn(6, 256.0, 4), 3);
  EXPECT_EQ(SpectrumEntryOfColumn(100, -256.0, 4), -1);
  EXPECT_EQ(SpectrumEntryOfColumn(1, std::nan(""), 4), -1);
}

}  // namespace

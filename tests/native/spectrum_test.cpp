// The spectrum: the transform by all its paths, waves of all shapes, and the way from magnitudes to colours.

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

std::vector<std::int16_t> Noise(std::size_t count) {
  std::mt19937 random(1);
  std::vector<std::int16_t> noise(count);
  for (std::int16_t& sample : noise) sample = static_cast<std::int16_t>(random());
  return noise;
}

ByteSpan BytesOf(const std::vector<std::int16_t>& values) {
  return {reinterpret_cast<const std::uint8_t*>(values.data()), values.size() * 2};
}

// The expected values below hold for the fastest way of this machine.
TEST(Spectrum, EveryWayGivesTheSameMagnitudes) {
  const std::vector<std::int16_t> data = Noise(512 * 2100 + 7);
  SpectrumTable expected;
  ASSERT_EQ(AnalyzeWave(expected, {1, 16, BytesOf(data)}, {FastestFft(), 4}), 0);
  ASSERT_EQ(expected.size(), 2101u);
  for (const FftPath path : {FftPath::Scalar, FftPath::Sse2, FftPath::Avx2}) {
    if (!TransformOf(path)) continue;  // this machine has none of it
    const double allowed = path == FastestFft() ? 0.0 : 1e-13;  // the number of threads changes nothing
    const auto near = [=](double one, double other) { return std::abs(one - other) <= allowed; };
    SpectrumTable table;
    AnalyzeWave(table, {1, 16, BytesOf(data)}, {path, 1});
    ASSERT_EQ(table.size(), 2101u);
    for (std::size_t j = 0; j < table.size(); ++j) {
      ASSERT_TRUE(std::equal(table[j], table[j] + SpectrumBins, expected[j], near)) << int(path) << ", entry " << j;
    }
  }
}

// A direct sum over the samples, of one bin.
double DirectMagnitude(const std::int16_t* samples, std::size_t stride, std::size_t bin) {
  std::complex<double> sum;
  for (std::size_t i = 0; i < SpectrumFrameLength; ++i) {
    const double angle = 2.0 * std::numbers::pi * static_cast<double>(i) / SpectrumFrameLength;
    sum += samples[i * stride] * (0.54 - 0.46 * std::cos(angle)) *
           std::polar(1.0, -angle * static_cast<double>(bin));
  }
  return std::abs(sum) * SpectrumWindowGain / 32768.0 / 2048.0;
}

// Frames are transformed in groups, which neither the beginning nor the end of a wave nor the share of a thread keeps
// to: lengths from one group to some shares, by every path, each frame against the sum over its own samples.
TEST(Spectrum, EveryFrameHasTheMagnitudesOfItsOwnSamples) {
  const std::vector<std::int16_t> data = Noise(2 * 512 * 37);
  for (const std::size_t samples : {2048, 2049, 2560, 3 * 1024, 512 * 17 - 1, 512 * 18, 512 * 37}) {
    for (const unsigned channels : {1u, 2u}) {
      SpectrumTable tables[3];
      for (const FftPath path : {FftPath::Scalar, FftPath::Sse2, FftPath::Avx2}) {
        SpectrumTable& table = tables[static_cast<int>(path)];
        if (!TransformOf(path)) continue;  // this machine has none of it
        AnalyzeWave(table, {channels, 16, BytesOf(data).first(samples * channels * 2)}, {path, 1});
        ASSERT_EQ(table.size(), (samples + 511) / 512);
      }
      for (std::size_t j = 0; j < tables[0].size(); ++j) {
        const bool atEnd = j * 512 > samples - 1024, inMiddle = j >= 2 && !atEnd;
        const std::size_t start = atEnd ? samples - 2048 : inMiddle ? (j * 512 - 1024) * channels : 0;
        // One of its own for each frame, and one of each transform that the whole comes to.
        for (const std::size_t bin : {j * 27 + samples % 5, std::size_t{512} >> j % 10}) {
          const double expected = DirectMagnitude(&data[start], inMiddle ? channels : 1, bin);
          for (const SpectrumTable& table : tables) {
            if (table.empty()) continue;
            EXPECT_NEAR(table[j][bin], expected, 1e-13) << &table - tables << ", " << samples << ", entry " << j;
          }
        }
      }
    }
  }
}

TEST(Spectrum, AFrameAloneIsThatOfAWave) {
  const std::vector<std::int16_t> data = Noise(SpectrumFrameLength);
  SpectrumTable wave, frames;
  AnalyzeWave(wave, {1, 16, BytesOf(data)});
  double gain = 0.0;
  const std::vector<double> window = MakeAnalysisWindow(gain);
  for (int i = 0; i < 2; ++i) AnalyzeFrame(frames, data.data(), window.data(), gain);
  ASSERT_EQ(frames.size(), 2u);
  for (std::size_t j = 0; j < 2; ++j) EXPECT_TRUE(std::equal(frames[j], frames[j] + SpectrumBins, wave[j])) << j;
}

TEST(vectors, BinsLevelsAndIntensitiesOfWaves) {
  Family::Each("spectrum", [](Family& family, const Json& test) {
    const Bytes file = Family::File(test["file"]);
    WaveBytes source(file);
    const auto wave = DecodeWav(source, false);
    SpectrumTable table;
    family.Expect(AnalyzeWave(table, {wave->format.channels, wave->format.bitsPerSample, wave->samples}),
                  test["result"]);
    ASSERT_EQ(table.size(), test["entries"]);

    SpectrumSteps steps(table, wave->format.samplesPerSec);
    const auto near = [&](double got, const Json& wanted) {
      EXPECT_NEAR(got, wanted.get<double>(), wanted.get<double>() * 1e-9 + 1e-15);
    };
    for (const Json& frame : test["frames"]) {
      const std::size_t entry = frame["entry"];
      for (const Json& bin : frame["bins"]) near(table[entry][bin[0].get<std::size_t>()], bin[1]);
      std::vector<NoteBand> bands;
      BuildNoteBands(24, 119, wave->format.samplesPerSec, bands);
      for (std::size_t i = 0; i < bands.size(); ++i) near(BandLevel(bands[i], table[entry]), frame["band_levels"][i]);
      std::vector<NoteBand> rows;  // up to above the last that has a step of its own
      BuildNoteBands(SpectrumSteps::LowestNote, 150, wave->format.samplesPerSec, rows);
      for (std::size_t i = 0; i < rows.size(); ++i) {
        const int shown = steps.IndexOf(SpectrumSteps::LowestNote + static_cast<int>(i));
        EXPECT_EQ(steps.Of(entry)[shown], LevelToStep(BandLevel(rows[i], table[entry]))) << i;
      }
      for (const auto& [brightness, intensities] : frame["intensities"].items()) {
        const IntensityTable intensity(std::stoi(brightness));
        for (int i = 0; i < 96; ++i) {
          family.Expect(intensity.OfStep(steps.Of(entry)[steps.IndexOf(24 + i)]), intensities[i]);
        }
      }
    }
  });
}

TEST(Spectrum, WavesOfEveryShapeHaveTheEntriesThatTheirSamplesAllow) {
  const std::tuple<unsigned, unsigned, std::size_t, int, std::size_t> cases[] = {
      {1, 16, 4097, 0, 4},  {1, 16, 4095, 0, 0},  {1, 16, 4098, 0, 5}, {1, 16, 0, 0, 0},     {2, 16, 8192, 0, 4},
      {2, 16, 10243, 0, 5}, {3, 16, 12293, 0, 4}, {0, 16, 8192, 0, 0}, {1, 24, 9999, -1, 0}, {65535, 16, 9999, 0, 0}};
  for (const auto& [channels, bits, bytes, result, entries] : cases) {
    const Bytes data(bytes, 0);  // of just that size, so that the sanitizer sees what reads beyond
    SpectrumTable table;
    table.Extend(3);
    EXPECT_EQ(AnalyzeWave(table, {channels, bits, data}), result) << channels << " " << bytes;
    ASSERT_EQ(table.size(), entries) << channels << " " << bytes;
    for (std::size_t j = 0; j < table.size(); ++j) EXPECT_EQ(table[j][j], 0.0) << "silence";
  }
}

TEST(vectors, BandsAtTheLimit) {
  Family::Each("bands_at_the_limit", [](Family& family, const Json& test) {
    std::vector<NoteBand> bands;
    BuildNoteBands(test["low"], test["high"], test["sample_rate"], bands);
    Json edges;
    for (const NoteBand& band : bands) edges.push_back({band.LowBin, band.HighBin});
    family.Expect(edges, test["edges"], 1e-9);
  });
}

TEST(vectors, BandLevels) {
  Family family("band_level");
  const std::vector<double> magnitudes = testdata::Numbers(family.Entries()["magnitudes"]);
  for (const Json& test : family.Entries()["cases"]) {
    family.Expect(BandLevel({test["band"][0], test["band"][1]}, magnitudes.data()), test["level"], 1e-9);
  }
}

TEST(vectors, Intensities) {
  Family family("level_to_intensity");
  for (const Json& test : family.Entries()) {
    for (const auto& [brightness, wanted] : test["intensity"].items()) {
      family.Expect(IntensityTable(std::stoi(brightness)).OfStep(LevelToStep(test["level"])), wanted);
    }
  }
  for (int brightness = -5; brightness <= 3; ++brightness) {
    const IntensityTable table(brightness);
    for (double level = 1e-7; level < 1.0; level *= 1.02) {
      EXPECT_EQ(table.OfStep(LevelToStep(level)), LevelToIntensity(level, brightness)) << level;
    }
  }
  for (const double odd : {-0.1, -std::numeric_limits<double>::infinity(), std::nan("")}) {
    EXPECT_EQ(LevelToStep(odd), 0);
  }
  EXPECT_EQ(LevelToStep(std::numeric_limits<double>::infinity()), 255);
  EXPECT_EQ(IntensityTable(-6).OfStep(0), 128) << "at a brightness that there is not";
}

TEST(vectors, SpectrumColors) {
  Family::Each("spectrum_color", [](Family& family, const Json& test) {
    const SpectrumPalette colors = SpectrumColors(test["table"], test["high_contrast"]);
    Json shown;
    for (const Json& level : Family::Everything()["spectrum_color_levels"]) {
      shown.push_back(colors[level.get<std::size_t>()]);
    }
    family.Expect(shown, test["colors"]);
  });
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
  EXPECT_EQ(SpectrumEntryOfColumn(100, -256.0, 4), -1);
  EXPECT_EQ(SpectrumEntryOfColumn(1, std::nan(""), 4), -1);
}

}  // namespace

// The sample voicebank is what a newcomer opens first and what other tests lean on: its maps must be right where they
// claim to be, and wrong where an error was planted.
#include "samplebank/bank.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"

namespace {

constexpr int kRate = 44100;
constexpr double kNoPitch = 55.0;

struct Wave {
  std::int32_t riffSize = 0, rate = 0, bytesPerSecond = 0, dataSize = 0;
  std::int16_t channels = 0, bytesPerFrame = 0, bits = 0;
  std::vector<double> samples;  // first channel
};

struct Map {
  std::int32_t hop = 0;
  double average = 0.0;
  std::vector<double> pitch, levels;
};

Wave ReadWave(const Bytes& bytes) {
  Wave wave;
  ByteReader reader(bytes);
  reader.Read<std::int32_t>();
  wave.riffSize = reader.Read<std::int32_t>();
  reader.Read<std::array<char, 14>>();
  wave.channels = reader.Read<std::int16_t>();
  wave.rate = reader.Read<std::int32_t>();
  wave.bytesPerSecond = reader.Read<std::int32_t>();
  wave.bytesPerFrame = reader.Read<std::int16_t>();
  wave.bits = reader.Read<std::int16_t>();
  reader.Read<std::int32_t>();
  wave.dataSize = reader.Read<std::int32_t>();
  while (reader.Left() > 0) {
    wave.samples.push_back(reader.Read<std::int16_t>());
    if (wave.channels == 2) reader.Read<std::int16_t>();
  }
  EXPECT_FALSE(reader.Failed());
  return wave;
}

Map ReadMap(const Bytes& bytes) {
  Map map;
  ByteReader reader(bytes);
  EXPECT_EQ(reader.Read<std::uint64_t>(), 0x3330303051455246u) << "no FREQ0003";
  map.hop = reader.Read<std::int32_t>();
  map.average = reader.Read<double>();
  reader.Read<std::array<char, 16>>();
  const auto count = reader.Read<std::int32_t>();
  for (std::int32_t i = 0; i < count; ++i) {
    map.pitch.push_back(reader.Read<double>());
    map.levels.push_back(reader.Read<double>());
  }
  EXPECT_TRUE(!reader.Failed() && reader.Left() == 0) << "the frame count is not that of the file";
  return map;
}

// Pitch by plain normalised autocorrelation around a sample: the shortest lag that matches nearly as well as the best.
// None where no lag matches, as in noise.
std::optional<double> MeasurePitch(const std::vector<double>& samples, std::ptrdiff_t centre) {
  constexpr int kShortest = kRate / 800, kLongest = kRate / 90, kWindow = 700;
  const std::ptrdiff_t first = centre - (kWindow + kLongest) / 2;
  if (first < 0 || first + kWindow + kLongest + 1 >= std::ssize(samples)) return std::nullopt;
  const double* start = samples.data() + first;
  std::array<double, kLongest + 2> match{};
  for (int lag = kShortest - 1; lag <= kLongest + 1; ++lag) {
    double cross = 0.0, here = 1.0, there = 1.0;
    for (const double* x = start; x < start + kWindow; x += 2) {
      cross += x[0] * x[lag];
      here += x[0] * x[0];
      there += x[lag] * x[lag];
    }
    match[lag] = cross / std::sqrt(here * there);
  }
  const double best = *std::max_element(match.begin() + kShortest, match.end() - 1);
  if (best < 0.7) return std::nullopt;
  for (int lag = kShortest; lag <= kLongest; ++lag) {
    const bool peak = match[lag] >= match[lag - 1] && match[lag] >= match[lag + 1];
    if (peak && match[lag] > 0.95 * best) return static_cast<double>(kRate) / lag;
  }
  return std::nullopt;
}

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

const char* Printable(const std::u8string& text) {
  return reinterpret_cast<const char*>(text.c_str());
}

// Each map with its wave, by the name that both share.
template <typename Check>
void ForEachMap(Check check) {
  constexpr std::u8string_view kEnding = u8"_wav.frq";
  int maps = 0;
  for (const auto& [path, bytes] : Bank()) {
    if (!path.ends_with(kEnding)) continue;
    const std::u8string stem = path.substr(0, path.size() - kEnding.size());
    SCOPED_TRACE(Printable(stem));
    ASSERT_TRUE(Bank().contains(stem + u8".wav"));
    check(stem, ReadMap(bytes), ReadWave(Bank().at(stem + u8".wav")));
    ++maps;
  }
  EXPECT_EQ(maps, 11) << "three of the fourteen waves wait for their maps to be created";
}

TEST(SampleBank, IsTheSameOnEveryRun) {
  EXPECT_TRUE(Bank() == MakeFiles());
}

TEST(SampleBank, WavesOpenAndAreNeitherSilentNorClipped) {
  int waves = 0, stereo = 0;
  for (const auto& [path, bytes] : Bank()) {
    if (!path.ends_with(u8".wav")) continue;
    SCOPED_TRACE(Printable(path));
    const std::string head(bytes.begin(), bytes.begin() + 44);
    EXPECT_EQ(head.substr(0, 4) + head.substr(8, 8) + head.substr(36, 4), "RIFFWAVEfmt data");
    const Wave wave = ReadWave(bytes);
    EXPECT_EQ(wave.riffSize, std::ssize(bytes) - 8);
    EXPECT_EQ(wave.dataSize, std::ssize(bytes) - 44);
    EXPECT_EQ(wave.rate, kRate);
    EXPECT_EQ(wave.bits, 16);
    EXPECT_EQ(wave.bytesPerFrame, wave.channels * 2);
    EXPECT_EQ(wave.bytesPerSecond, wave.rate * wave.bytesPerFrame);
    const auto [low, high] = std::ranges::minmax(wave.samples);
    const double peak = std::max(-low, high);
    EXPECT_TRUE(peak > 10000.0 && peak < 32000.0) << peak;
    ++waves;
    stereo += wave.channels == 2;
  }
  EXPECT_EQ(waves, 14);
  EXPECT_EQ(stereo, 1);
}

TEST(SampleBank, MapsCoverTheirWavesWithTheLevelsHeardThere) {
  ForEachMap([](const std::u8string&, const Map& map, const Wave& wave) {
    ASSERT_EQ(map.hop, 256);
    ASSERT_EQ(std::ssize(map.pitch), (std::ssize(wave.samples) + 255) / 256);
    const std::size_t middle = map.pitch.size() / 2;
    double squares = 0.0;
    for (std::size_t i = middle * 256; i < middle * 256 + 256; ++i) squares += wave.samples[i] * wave.samples[i];
    EXPECT_NEAR(map.levels[middle], std::sqrt(squares / 256.0), 1e-6);
    EXPECT_EQ(map.pitch.front(), kNoPitch);
    EXPECT_EQ(map.pitch.back(), kNoPitch);
    const auto [low, high] = std::ranges::minmax(map.pitch);
    EXPECT_TRUE(map.average > low && map.average < high);
  });
}

// Audible, and without a change from consonant to vowel inside the window of the measurement, which would blur it.
bool IsSteady(const std::vector<double>& levels, std::size_t frame) {
  if (frame < 2 || frame + 2 >= levels.size()) return false;
  const auto [low, high] = std::ranges::minmax(std::span(levels).subspan(frame - 2, 5));
  return low > 100.0 && high < 2.0 * low;
}

// What a comparison of every fourth frame with the wave says of a map.
struct Findings {
  int octaveUp = 0, octaveDown = 0, inNoise = 0, otherwiseWrong = 0, right = 0;
};

Findings Compare(const Map& map, const Wave& wave) {
  Findings found;
  for (std::size_t i = 0; i < map.pitch.size(); i += 4) {
    if (map.pitch[i] <= kNoPitch || !IsSteady(map.levels, i)) continue;
    const std::optional<double> measured = MeasurePitch(wave.samples, static_cast<std::ptrdiff_t>(i) * map.hop);
    const double ratio = map.pitch[i] / measured.value_or(map.pitch[i]);
    const auto isNear = [&](double factor) { return std::abs(ratio / factor - 1.0) < 0.03; };
    int& kind = !measured     ? found.inNoise
                : isNear(1.0) ? found.right
                : isNear(2.0) ? found.octaveUp
                : isNear(0.5) ? found.octaveDown
                              : found.otherwiseWrong;
    ++kind;
  }
  return found;
}

TEST(SampleBank, MapsAgreeWithTheVoiceExceptForThePlantedErrors) {
  ForEachMap([](const std::u8string& stem, const Map& map, const Wave& wave) {
    const Findings found = Compare(map, wave);
    EXPECT_EQ(found.octaveUp, stem == u8"か" ? 3 : 0);
    EXPECT_EQ(found.octaveDown, stem == u8"ら" ? 5 : 0);
    EXPECT_TRUE(stem == u8"さ" ? found.inNoise >= 3 : found.inNoise == 0) << found.inNoise;
    EXPECT_EQ(found.otherwiseWrong, 0);
    EXPECT_GE(found.right, 25);
  });
}

TEST(SampleBank, NotesFindTheirWavesByAliasesInCodePage932) {
  const auto text = [](const std::u8string& path) {
    return std::string(Bank().at(path).begin(), Bank().at(path).end());
  };
  const std::string main = text(u8"oto.ini"), strong = text(u8"強/oto.ini");
  EXPECT_EQ(std::ranges::count(main, '\n'), 12);
  EXPECT_EQ(std::ranges::count(main, ','), 12 * 5);
  EXPECT_TRUE(main.starts_with("\x82\xA0.wav=\x82\xA0,")) << "a";
  EXPECT_NE(main.find("\n\x82\xE7.wav=\x82\xE7,"), std::string::npos) << "ra";
  EXPECT_NE(main.find("\nna_2.wav=na_2,"), std::string::npos);
  EXPECT_NE(strong.find("\n\x82\xA2.wav=\x82\xA2\x8B\xAD,"), std::string::npos) << "i, strongly";
  EXPECT_EQ((main + strong).find('?'), std::string::npos) << "a character has no bytes";
}

}  // namespace

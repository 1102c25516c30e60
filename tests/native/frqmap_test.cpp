// The map in memory: averages, ranges, selection, edits and copies.
#include "frqmap/frqmap.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "frqmap/freq0003.h"
#include "native/vectors.h"

namespace {

using testing::NanSensitiveDoubleNear;
using vectors::Json;
using vectors::Number;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

FrqMap MapOf(const std::vector<double>& frequencies, SampleCount hop = 256) {
  FrqMap map;
  map.Create(static_cast<SampleCount>(frequencies.size()), FrqTypeFrq);
  for (std::size_t i = 0; i < frequencies.size(); ++i) map.Frames[i].Frequency = frequencies[i];
  map.Hop = hop;
  map.Loaded = true;
  return map;
}

std::string Selection(const FrqMap& map) {
  std::string selected;
  for (const FrqFrame& frame : map.Frames) selected += frame.Selected ? '1' : '0';
  return selected;
}

TEST(FrqMap, AveragesAndRangesOfRealMapsAreRight) {
  for (const Json& test : vectors::Expected("maps")) {
    if (!test.contains("map")) continue;
    SCOPED_TRACE(test["case"]);
    FrqMap map = *DecodeFreq0003(vectors::FileBytes(test["file"]));
    map.UpdateFrequencyRange();
    EXPECT_EQ(map.MinFrequency, Number(test["map"]["min_frequency"]));
    EXPECT_EQ(map.MaxFrequency, Number(test["map"]["max_frequency"]));
    const Json& averages = test["averages"];
    if (averages.contains("unspecified")) continue;
    EXPECT_THAT(map.ComputeAverage(-1), NanSensitiveDoubleNear(Number(averages["minus1"]), 1e-9));
    EXPECT_THAT(map.ComputeAverage(2), NanSensitiveDoubleNear(Number(averages["two"]), 1e-9));
    EXPECT_THAT(map.ShownAverage(), NanSensitiveDoubleNear(Number(averages["shown"]), 1e-9));
  }
}

TEST(FrqMap, UnusualMapsHaveAnAverageToo) {
  const double middleC = 261.6255653005986;
  const struct {
    const char* what;
    std::vector<double> frequencies;
    int window;
    double average;
  } tests[] = {
      {"whole cents only", {440.0, 440.1}, -1, 440.0},
      {"an octave error outside the window", {440.0, 440.0, 440.0, 440.0, 440.0, 440.0, 440.0, 880.0}, 2, 440.0},
      {"no frame near the mean", {110.0, 1760.0}, 2, middleC},
      {"a frame on the edge of the window is outside", {440.0, 440.0 * std::pow(2.0, 4.0000001 / 12.0)}, 2, middleC},
      {"a sum beyond 32 bits", std::vector<double>(400000, 440.0), 2, 440.0},
      {"an infinite pitch outweighs all", {kInfinity, 440.0}, -1, kInfinity},
  };
  for (const auto& test : tests) {
    EXPECT_DOUBLE_EQ(MapOf(test.frequencies).ComputeAverage(test.window), test.average) << test.what;
  }
  FrqMap derived = MapOf({110.0, 1760.0});
  derived.DerivedAverage = true;
  EXPECT_DOUBLE_EQ(derived.ShownAverage(), middleC);
}

TEST(FrqMap, SelectionFollowsTheMouse) {
  for (const Json& test : vectors::Expected("selection")) {
    FrqMap map = MapOf(std::vector<double>(test["frames"].get<std::size_t>()), test["hop"]);
    for (const Json& step : test["steps"]) {
      map.SelectRange(step["a"], step["b"], step["clear_others"]);
      EXPECT_EQ(Selection(map), step["selected"]) << step;
    }
  }
  FrqMap map = MapOf({100.0, 100.0, 100.0}, 10);
  map.SelectRange(-10, 25, true);
  EXPECT_EQ(Selection(map), "100") << "a range from before the map";
  map.Hop = 0;
  map.SelectRange(0, 25, true);
  EXPECT_EQ(Selection(map), "100") << "a map without a time axis";
  FrqMap().SelectRange(0, 25, true);
}

TEST(FrqMap, AnEditReachesItsFrameAndNoOther) {
  const struct {
    SampleCount hop, position;
    double hz, first, second;
  } tests[] = {
      {10, 19, 300.0, 100.0, 300.0}, {10, 10, 55.0, 100.0, 55.0},   {10, 9, kNan, 55.0, 200.0},
      {10, 20, 300.0, 100.0, 200.0}, {10, -1, 300.0, 100.0, 200.0}, {0, 0, 300.0, 100.0, 200.0},
      {-1, 0, 300.0, 100.0, 200.0},
  };
  for (const auto& test : tests) {
    SCOPED_TRACE(testing::Message() << test.hop << " " << test.position << " " << test.hz);
    FrqMap map = MapOf({100.0, 200.0}, test.hop);
    map.SetFrequency(test.position, test.hz);
    EXPECT_EQ(map.Frames[0].Frequency, test.first);
    EXPECT_EQ(map.Frames[1].Frequency, test.second);
    EXPECT_EQ(map.Frames[1].Voiced, test.second == 300.0);
    EXPECT_EQ(map.Modified, test.first != 100.0 || test.second != 200.0);
    EXPECT_EQ(map.FrequencyAt(test.position), map.Modified && test.hz > 55.0 ? test.hz : 55.0);
  }
}

TEST(FrqMap, AnyDifferenceThatWouldBeSavedIsSeen) {
  const FrqMap map = MapOf({100.0, 200.0});
  EXPECT_TRUE(map.Equals(map));
  const auto differs = [&](auto change) {
    FrqMap other = map;
    change(other);
    return !map.Equals(other) && !other.Equals(map);
  };
  EXPECT_TRUE(differs([](FrqMap& m) { m.Loaded = false; }));
  EXPECT_TRUE(differs([](FrqMap& m) { m.Average = 1.0; }));
  EXPECT_TRUE(differs([](FrqMap& m) { m.Hop = 255; }));
  EXPECT_TRUE(differs([](FrqMap& m) { m.Frames[1].Frequency = 200.5; }));
  EXPECT_TRUE(differs([](FrqMap& m) { m.Frames[1].Amplitude = 0.5; }));
  EXPECT_TRUE(differs([](FrqMap& m) { m = MapOf({100.0}); }));
  EXPECT_FALSE(differs([](FrqMap& m) { m.Frames[1].Selected = true; }));
  const FrqMap noNumber = MapOf({kNan});
  EXPECT_FALSE(noNumber.Equals(noNumber));
}

TEST(FrqMap, ACopyStandsForItselfWithItsOwnRange) {
  FrqMap copy = MapOf({100.0});
  FrqMap map = MapOf({150.0, 55.0, 300.0});
  EXPECT_EQ(map.CopyTo(copy), 0);
  EXPECT_TRUE(copy.Equals(map));
  EXPECT_EQ(copy.MinFrequency, 150.0);
  EXPECT_EQ(copy.MaxFrequency, 300.0);
  copy.SetFrequency(0, 400.0);
  EXPECT_EQ(map.FrequencyAt(0), 150.0);
  EXPECT_EQ(FrqMap().CopyTo(copy), 0);
  EXPECT_EQ(copy.FrameCount, 0);
  EXPECT_EQ(copy.MinFrequency, 999999.0);
  EXPECT_EQ(copy.MaxFrequency, 55.0);
}

}  // namespace

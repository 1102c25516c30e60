// The map in memory: what no vector holds, edits and copies.
#include "frqmap/frqmap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "native/family.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(FrqMap, UnusualMapsHaveAnAverageToo) {
  const double middleC = 261.6255653005986;
  const struct {
    const char* what;
    std::vector<double> frequencies;
    double average;
  } tests[] = {
      {"a frame on the edge of the window is outside", {440.0, 440.0 * std::pow(2.0, 4.0000001 / 12.0)}, middleC},
      {"a sum beyond 32 bits", std::vector<double>(400000, 440.0), 440.0},
      {"an infinite pitch overflows nothing", {kInfinity, kInfinity}, kInfinity},
  };
  for (const auto& test : tests) {
    FrqMap map = MapOf(test.frequencies);
    map.DerivedAverage = true;
    EXPECT_DOUBLE_EQ(map.ShownAverage(), test.average) << test.what;
  }
}

TEST(FrqMap, ASelectionFromOutsideTheMapEndsAtItsBorder) {
  FrqMap map = MapOf({100.0, 100.0, 100.0}, 10);
  map.SelectRange(-10, 25, true);
  EXPECT_EQ(Flags(map, &FrqFrame::Selected), "100") << "a range from before the map";
  map.Hop = 0;
  map.SelectRange(0, 25, true);
  EXPECT_EQ(Flags(map, &FrqFrame::Selected), "100") << "a map without a time axis";
  FrqMap().SelectRange(0, 25, true);
}

TEST(FrqMap, AnEditReachesItsFrameAndNoOther) {
  const struct {
    SampleCount hop, position;
    double hz;
    std::vector<double> frequencies;
  } tests[] = {{10, 19, 300.0, {100.0, 300.0}}, {10, 10, 55.0, {100.0, 55.0}},   {10, 9, kNan, {55.0, 200.0}},
               {10, 20, 300.0, {100.0, 200.0}}, {10, -1, 300.0, {100.0, 200.0}}, {0, 0, 300.0, {100.0, 200.0}}};
  for (const auto& test : tests) {
    SCOPED_TRACE(testing::Message() << test.hop << " " << test.position << " " << test.hz);
    FrqMap map = MapOf({100.0, 200.0}, test.hop);
    map.SetFrequency(test.position, test.hz);
    EXPECT_TRUE(std::ranges::equal(map.Frames, test.frequencies, {}, &FrqFrame::Frequency));
    EXPECT_EQ(map.Frames[1].Voiced, test.frequencies[1] == 300.0);
    EXPECT_EQ(map.Modified, test.frequencies != std::vector({100.0, 200.0}));
    EXPECT_EQ(map.FrequencyAt(test.position), map.Modified && test.hz > 55.0 ? test.hz : 55.0);
  }
}

TEST(FrqMap, AnyDifferenceThatWouldBeSavedIsSeen) {
  const FrqMap map = MapOf({100.0, 200.0});
  const struct {
    bool differs;
    void (*change)(FrqMap&);
  } tests[] = {{false, [](FrqMap& m) { m.Frames[1].Selected = true; }},
               {true, [](FrqMap& m) { m.Loaded = false; }},
               {true, [](FrqMap& m) { m.Average = 1.0; }},
               {true, [](FrqMap& m) { m.Hop = 255; }},
               {true, [](FrqMap& m) { m.Frames[1].Frequency = 200.5; }},
               {true, [](FrqMap& m) { m.Frames[1].Amplitude = 0.5; }},
               {true, [](FrqMap& m) { m.Frames[1].Frequency = kNan; }},
               {true, [](FrqMap& m) { m.Frames.pop_back(); }}};
  for (const auto& test : tests) {
    FrqMap other = map;
    test.change(other);
    EXPECT_TRUE(map.Equals(other) != test.differs && other.Equals(map) != test.differs) << &test - tests;
  }
}

TEST(FrqMap, ACopyStandsForItselfWithItsOwnRange) {
  FrqMap copy = MapOf({100.0});
  FrqMap map = MapOf({150.0, 55.0, 300.0});
  map.CopyTo(copy);
  EXPECT_TRUE(copy.Equals(map) && copy.MinFrequency == 150.0 && copy.MaxFrequency == 300.0);
  copy.SetFrequency(0, 400.0);
  EXPECT_EQ(map.FrequencyAt(0), 150.0);
  FrqMap().CopyTo(copy);
  EXPECT_TRUE(copy.FrameCount == 0 && copy.MinFrequency == 999999.0 && copy.MaxFrequency == 55.0);
}

}  // namespace

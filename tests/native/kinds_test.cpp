// .dio and .pmk maps: real, foreign and damaged ones are read as they should be, with the levels of their waves. The
// regions that sound are those of maps of every kind.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "frqmap/dio.h"
#include "frqmap/freq0003.h"
#include "frqmap/levels.h"
#include "frqmap/pmk.h"
#include "native/vectors.h"

namespace {

using vectors::FileBytes;
using vectors::Json;

constexpr SampleCount kMost = std::numeric_limits<SampleCount>::max();

std::optional<FrqMap> Decode(const std::string& name, ByteSpan file) {
  if (name.ends_with(".dio")) return DecodeDio(file);
  return name.ends_with(".pmk") ? DecodePmk(file) : DecodeFreq0003(file);
}

std::optional<FrqMap> Read(const Json& test) {
  std::optional<FrqMap> map = Decode(test["file"], FileBytes(test["file"]));
  const Json& wave = test["wave"];
  if (!map || wave.is_null()) return map;
  const Bytes file = FileBytes(wave["file"]);
  SetLevels(*map, LevelsOfSamples(ByteSpan(file).subspan(wave["offset"], wave["size"]), wave["channels"], map->Hop));
  return map;
}

// As text, in which a number that is none is "null".
std::string Describe(FrqMap map) {
  Json all = {{"hop", map.Hop}, {"average", map.Average}, {"derived_average", map.DerivedAverage}};
  all["regions"] = map.ComputeSoundRegions();
  all["frames"] = Json::array();
  for (const FrqFrame& f : map.Frames) all["frames"].push_back({f.Frequency, f.Amplitude, f.Voiced, f.Sounding});
  return all.dump();
}

FrqMap MapOf(SampleCount frameCount, double hz, SampleCount hop) {
  FrqMap map;
  map.Create(frameCount, FrqTypeDio);
  map.Hop = hop;
  for (FrqFrame& frame : map.Frames) frame.Frequency = hz;
  return map;
}

TEST(MapKinds, ReadsEveryMapThatIsWholeAndRefusesTheOthers) {
  const Json kinds = Json::parse(vectors::OpenData("kinds.json"));
  for (const Json& test : kinds["maps"]) {
    const std::optional<FrqMap> map = Read(test);
    EXPECT_EQ(map ? Describe(*map) : "null", test["map"].dump()) << test["case"];
  }
}

TEST(MapKinds, AMapCutOffAnywhereIsRefused) {
  for (const char* name : {"bad/dio-nan-and-negative.dio", "bad/pmk-unordered_wav.pmk"}) {
    const Bytes whole = FileBytes(name);
    for (std::size_t size = 0; size < whole.size(); ++size) {
      EXPECT_FALSE(Decode(name, Bytes(whole.data(), whole.data() + size))) << name << size;
    }
  }
}

TEST(MapKinds, AMapThatItsKindCannotHoldIsNotWritten) {
  for (const auto& [map, dio] : {std::pair(MapOf(1, 440.0, 0), false),
                                 {MapOf(1, 440.0, -1), false},
                                 {MapOf(1, 440.0, 1 << 30), false},
                                 {MapOf(9, 440.0, 1 << 29), true},
                                 {MapOf(1, 44100.0, kMost), true}}) {
    EXPECT_FALSE(EncodePmk(map)) << map.Hop;
    EXPECT_EQ(EncodeDio(map, 0).has_value(), dio) << map.Hop;
  }
  EXPECT_EQ(EncodePmk(MapOf(2, HUGE_VAL, 256)), EncodePmk(MapOf(2, 55.0, 256))) << "too high for any period";
}

TEST(MapKinds, LevelsOfAnOddWaveComeFromWholeSamplesOnly) {
  const Bytes samples = {3, 0, 4, 0, 252, 255, 0, 128, 9};
  EXPECT_EQ(LevelsOfSamples(samples, 1, 3), (std::vector{std::sqrt(41.0 / 3.0), 32768.0}));
  EXPECT_EQ(LevelsOfSamples(samples, 2, kMost), std::vector{std::sqrt(12.5)});
  for (const auto& [channels, hop] : {std::pair(0, 1), std::pair(5, 1), std::pair(1, 0), std::pair(1, -1)}) {
    EXPECT_TRUE(LevelsOfSamples(samples, channels, hop).empty()) << channels << hop;
  }
}

}  // namespace

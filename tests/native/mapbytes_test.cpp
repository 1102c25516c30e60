// The bytes of map files that no voicebank should hold: cut short, out of range, or nonsense.

#include <array>
#include <limits>

#include "frqmap/levels.h"
#include "native/family.h"

namespace {

using testdata::FileBytes;

constexpr SampleCount kMost = std::numeric_limits<SampleCount>::max();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

FrqMap EvenMap(std::size_t frameCount, double hz, SampleCount hop) {
  return MapOf(std::vector<double>(frameCount, hz), hop);
}

// The periods of a .pmk: position of the end, and length.
std::optional<FrqMap> PmkOf(const std::vector<std::array<SampleCount, 2>>& records, std::int64_t waveBytes = 0,
                            SampleCount* framesWithRecord = nullptr) {
  ByteWriter file;
  file.Write(std::array<std::uint8_t, 10>{0x13});
  file.Write(static_cast<std::int32_t>(records.size()));
  for (const auto& record : records) file.Write(record);
  return DecodePmk(file.Take(), waveBytes, framesWithRecord);
}

TEST(MapBytes, AMapCutOffAnywhereIsRefused) {
  for (const char* name :
       {"bad/frq-amplitude-nan_wav.frq", "bad/dio-nan-and-negative.dio", "bad/pmk-unordered_wav.pmk"}) {
    const Bytes whole = FileBytes(name);
    for (std::size_t size = 0; size < whole.size(); ++size) {
      // A block of exactly this size, so that a read past the end does not go unseen.
      EXPECT_FALSE(Decode(name, Bytes(whole.data(), whole.data() + size))) << name << size;
    }
  }
}

TEST(MapBytes, NumbersBeyondReasonAreRefusedOrReadAsTheyStand) {
  const std::pair<const char*, SampleCount> tests[] = {{"bad/pmk-negative-frames_wav.pmk", -1},
                                                       {"bad/pmk-end-overflows_wav.pmk", -1},
                                                       {"bad/pmk-last-position_wav.pmk", -1},
                                                       {"bad/pmk-hours-in-a-record_wav.pmk", -1},
                                                       {"bad/pmk-forty-frames-in-a-record_wav.pmk", 40},
                                                       {"bad/dio-rate-wraps.dio", 1}};
  for (const auto& [name, frameCount] : tests) {
    const std::optional<FrqMap> map = Decode(name, FileBytes(name));
    EXPECT_EQ(map ? map->FrameCount : -1, frameCount) << name;
  }
}

// Thousands of maps of a bank are in memory at once.
TEST(MapBytes, NoMapTakesMoreMemoryThanItsFileAndAMomentAreWorth) {
  const auto taken = [](auto map) { return map ? map->Frames.Own().capacity() * sizeof(FrqFrame) : 0; };
  for (const auto& file : std::filesystem::directory_iterator(MARLIT_TEST_DATA "/bad")) {
    const std::string name = file.path().filename().string();
    const Bytes bytes = FileBytes("bad/" + name);
    const std::size_t most = 64 * bytes.size() + 16384;
    EXPECT_LE(taken(DecodeFreq0003(bytes)), most) << name;
    EXPECT_LE(taken(DecodeDio(bytes)), most) << name;
    EXPECT_LE(taken(DecodePmk(bytes, 0)), most) << name;
  }
  constexpr SampleCount kMinute = 60 * 44100, kMinuteFrames = kMinute / 256 + 1;
  EXPECT_FALSE(PmkOf({{kMinute, 1}})) << "a minute from a single record";
  EXPECT_FALSE(PmkOf({{kMinute, 1}}, 44)) << "beside a wave without sound";
  EXPECT_FALSE(PmkOf({{kMost - 255, 0}}, std::int64_t{1} << 40)) << "hours beside a wave that is larger than any";
  EXPECT_EQ(PmkOf({{100, 100}, {kMinute, 1}}, kMinute)->FrameCount, kMinuteFrames) << "silence between two records";
  std::vector<std::array<SampleCount, 2>> low;
  for (SampleCount end = 0; end < kMinute; end += 2000) low.push_back({end, 2000});
  low.push_back({kMinute, 1});
  EXPECT_EQ(PmkOf(low)->FrameCount, kMinuteFrames) << "the lowest of periods throughout, without a wave";
}

TEST(MapBytes, FramesBehindTheLastPeriodHaveNoLevel) {
  // One period of 600 samples that ends at sample 100: three frames, of which it reaches the first.
  SampleCount reached = 0;
  const std::optional<FrqMap> map = PmkOf({{100, 600}}, 0, &reached);
  ASSERT_TRUE(map && map->FrameCount == 3);
  EXPECT_EQ(reached, 1);
  ASSERT_TRUE(DecodePmk(*EncodePmk(EvenMap(10, 441.0, 256)), 0, &reached));
  EXPECT_EQ(reached, 11) << "a round trip grows";
}

TEST(MapBytes, LevelsThatAreNoNumbersDoNotSound) {
  const FrqMap map = MapOf(std::vector<double>(6, 55.0), 256, {kNan, kNan, 3000.0, kNan, kNan, kNan});
  EXPECT_EQ(TextOfFlags(map.ComputeSoundRegions()), "001100");
}

TEST(MapBytes, AMapThatItsKindCannotHoldIsNotWritten) {
  for (const auto& [map, dio] : {std::pair(EvenMap(1, 440.0, 0), false),
                                 {EvenMap(1, 440.0, -1), false},
                                 {EvenMap(1, 440.0, 1 << 30), false},
                                 {EvenMap(9, 440.0, 1 << 29), true},
                                 {EvenMap(1, 44100.0, kMost), true}}) {
    EXPECT_FALSE(EncodePmk(map)) << map.Hop;
    EXPECT_EQ(EncodeDio(map, 0).has_value(), dio) << map.Hop;
  }
  EXPECT_EQ(EncodePmk(EvenMap(2, HUGE_VAL, 256)), EncodePmk(EvenMap(2, 55.0, 256))) << "too high for any period";
}

TEST(MapBytes, LevelsOfAnOddWaveComeFromWholeSamplesOnly) {
  const Bytes samples = {3, 0, 4, 0, 252, 255, 0, 128, 9};
  EXPECT_EQ(LevelsOfSamples(samples, 1, 3), (std::vector{std::sqrt(41.0 / 3.0), 32768.0}));
  EXPECT_EQ(LevelsOfSamples(samples, 2, kMost), std::vector{std::sqrt(12.5)});
  for (const auto& [channels, hop] : {std::pair(0, 1), std::pair(5, 1), std::pair(1, 0), std::pair(1, -1)}) {
    EXPECT_TRUE(LevelsOfSamples(samples, channels, hop).empty()) << channels << hop;
  }
}

}  // namespace

// What the check marks in maps with known errors and in clean ones, and what it makes of records that are none.
#include "check/checkrules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <map>
#include <numbers>
#include <random>

#include "base/note.h"
#include "frqmap/freq0003.h"
#include "samplebank/bank.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// 20 frames of silence around a tone of C4 with a slow vibrato.
FrqMap Tone(int frames = 120) {
  FrqMap map;
  map.Create(frames + 40, FrqTypeFrq);
  map.Hop = 256;
  for (int i = 0; i < map.FrameCount; ++i) {
    const bool sings = i >= 20 && i < frames + 20;
    if (sings) map.Frames[i].Frequency = NoteToHz(60.0 + 0.5 * std::sin(i * 2.0 * std::numbers::pi / 30.0));
    map.Frames[i].Amplitude = sings ? 5000.0 : 10.0;
  }
  return map;
}

struct Checked {
  explicit Checked(FrqMap map, CheckFrqSettings settings = {.LowNote = 60, .HighNote = 60})
      : frames(MakeCheckFrames(map, L"a_wav.frq")), regions(MakeCheckRegions(map)) {
    result = CheckMap(&settings, frames.get(), regions.get());
  }
  const CheckFrame& operator[](int i) const { return frames->Frames[i]; }

  CheckRecordPtr<CheckFrameRecord> frames;
  CheckRecordPtr<CheckRegionRecord> regions;
  int result;
};

TEST(CheckRules, MarkTheChangedFramesAloneAndSuggestWhatTheyWere) {
  const auto times = [](double factor) { return [=](FrqFrame& frame) { frame.Frequency *= factor; }; };
  const auto becomes = [](double hz) { return [=](FrqFrame& frame) { frame.Frequency = hz; }; };
  const auto sounds = [](double hz) {
    return [=](FrqFrame& frame) { frame.Frequency = hz, frame.Amplitude = 5000.0; };
  };
  struct Case {
    const char* name;
    int first, last;
    std::function<void(FrqFrame&)> change;
    CheckMark mark;
    double note;  // that is suggested, within a semitone
  };
  const double kNone = HzToNote(FrqNoPitch);
  const Case kCases[] = {
      {"an octave up", 60, 71, times(2.0), CheckMarkFactor, 60.0},
      {"an octave down to the end", 120, 139, times(0.5), CheckMarkFactor, 60.0},
      {"a twelfth up from the start", 20, 29, times(3.0), CheckMarkFactor, 60.0},
      {"a fifth up", 60, 75, times(1.5), CheckMarkFactor, 60.0},
      {"one frame an octave up", 60, 60, times(2.0), CheckMarkFactor, 60.0},
      {"the larger half", 20, 89, times(2.0), CheckMarkFactor, 60.0},
      {"all", 20, 139, times(0.5), CheckMarkFactor, 60.0},
      {"a spike", 60, 61, times(1.26), CheckMarkNoise, 60.0},
      {"a drop-out", 60, 62, becomes(FrqNoPitch), CheckMarkGap, 60.0},
      {"no number", 60, 60, becomes(kNaN), CheckMarkNoise, 60.0},
      {"pitch in silence", 5, 12, becomes(NoteToHz(61.0)), CheckMarkNoise, kNone},
      {"two frames just ahead of the tone", 15, 16, becomes(NoteToHz(60.5)), CheckMarkNoise, kNone},
      {"a loud moment off the tone", 2, 9, sounds(NoteToHz(66.0)), CheckMarkNoise, kNone},
  };
  for (const auto& test : kCases) {
    SCOPED_TRACE(test.name);
    FrqMap map = Tone();
    for (int i = test.first; i <= test.last; ++i) test.change(map.Frames[i]);
    const Checked checked(map);
    EXPECT_EQ(checked.result, test.last - test.first + 1);
    for (int i = test.first; i <= test.last; ++i) {
      EXPECT_EQ(checked[i].Mark, test.mark) << i;
      EXPECT_NEAR(HzToNote(checked[i].SuggestedFrequency), test.note, 1.0) << i;
    }
  }
}

TEST(CheckRules, ABoxTakesBackTheMarksOfItsTransition) {
  // A slide up 14 semitones within a long tone, to it from below, and away from it at its end.
  const std::tuple<int, double, std::int32_t CheckFrqSettings::*> cases[] = {
      {180, 0.0, &CheckFrqSettings::HasPitchTransition},
      {20, -14.0, &CheckFrqSettings::LargeTransitionAtBeginning},
      {235, 0.0, &CheckFrqSettings::LargeTransitionAtEnd}};
  for (const auto& [first, start, box] : cases) {
    FrqMap map = Tone(240);
    for (int i = 20; i < 260; ++i) {
      map.Frames[i].Frequency *= std::exp2((start + 14.0 * std::clamp((i - first) / 25.0, 0.0, 1.0)) / 12.0);
    }
    CheckFrqSettings settings{.LowNote = 60, .HighNote = 60};
    EXPECT_GT(Checked(map, settings).result, 3) << first;
    settings.*box = 1;
    EXPECT_EQ(Checked(map, settings).result, 0) << first;
  }
}

TEST(CheckRules, EveryPlantedErrorOfTheSampleVoicebankIsFoundAndNothingElse) {
  std::map<std::u8string, int> planted = {{u8"か_wav.frq", 12}, {u8"ら_wav.frq", 20}, {u8"さ_wav.frq", 21}};
  for (const BankFile& file : MakeSampleBank()) {
    if (!file.path.ends_with(u8".frq")) continue;
    SCOPED_TRACE(std::string(file.path.begin(), file.path.end()));
    const FrqMap map = DecodeFreq0003(file.bytes).value();
    EXPECT_EQ(Checked(map).result, planted[file.path]);
    EXPECT_EQ(Checked(map, {}).result, planted[file.path]) << "also for one who tells no note";
  }
}

TEST(CheckRules, OnlyTheOutFieldsAreWrittenAndOldMarksGo) {
  FrqMap map = Tone();
  for (int i = 60; i < 70; ++i) map.Frames[i].Frequency *= 2.0;
  const Checked first(map);
  const auto bytes = [&] {
    const auto* const start = reinterpret_cast<const std::uint8_t*>(first.frames.get());
    return Bytes(start, start + 544 + 40 * map.FrameCount);
  };
  const Bytes before = bytes();
  first.frames->Frames[3].Mark = 77;
  const CheckFrqSettings settings{.LowNote = 60, .HighNote = 60};
  EXPECT_EQ(CheckMap(&settings, first.frames.get(), nullptr), 10) << "without regions as with them";
  EXPECT_EQ(bytes(), before);
}

TEST(CheckRules, RecordsThatAreNoneAreRefusedAndStayAsTheyWere) {
  const CheckFrqSettings good{.LowNote = 60, .HighNote = 60};
  const auto spoil = [&](auto change) {
    FrqMap map = Tone();
    map.Frames[60].Frequency *= 2.0;
    auto frames = MakeCheckFrames(map, L"");
    auto regions = MakeCheckRegions(map);
    CheckFrqSettings settings = good;
    change(settings, *frames, *regions);
    frames->Frames[60].Mark = 77;
    EXPECT_LT(CheckMap(&settings, frames.get(), regions.get()), 0);
    EXPECT_EQ(frames->Frames[60].Mark, 77);
  };
  spoil([](auto& settings, auto&, auto&) { settings.Size = 20; });
  spoil([](auto&, auto& frames, auto&) { frames.FrameCount = -1; });
  spoil([](auto&, auto&, auto& regions) { regions.RegionCount = 0xFFFFFFFF; });
  spoil([](auto&, auto&, auto& regions) { regions.Regions[0].First = -1; });
  spoil([](auto&, auto& frames, auto& regions) { regions.Regions[0].Last = frames.FrameCount; });
  EXPECT_LT(CheckMap(nullptr, MakeCheckFrames(Tone(), L"").get(), nullptr), 0);
  EXPECT_LT(CheckMap(&good, nullptr, nullptr), 0);
}

TEST(CheckRules, MapsOfAnySizeAndContentAreBorne) {
  constexpr double kOdd[] = {kNaN, kInfinity, -kInfinity, -1.0, 0.0, FrqNoPitch, 1e-300, 261.6, 1e308};
  const CheckFrqSettings settings{.LowNote = std::numeric_limits<std::int32_t>::max(),
                                  .HighNote = std::numeric_limits<std::int32_t>::min()};
  std::minstd_rand chance;
  for (const int size : {0, 1, 2, 3, 50, 100'000}) {
    for (int round = 0; round < (size > 50 ? 2 : 300); ++round) {
      FrqMap map;
      map.Create(size, FrqTypeFrq);
      map.Hop = std::array{1, 256, 1 << 30, 0}[chance() % 4];
      const bool isMixed = chance() % 2 == 0;
      const double hz = kOdd[chance() % 9];
      for (FrqFrame& frame : map.Frames) {
        frame.Frequency = isMixed ? kOdd[chance() % 9] : hz;
        frame.Amplitude = kOdd[chance() % 9];
      }
      const int marks = Checked(map, settings).result;
      EXPECT_TRUE(marks >= 0 && marks <= size) << size << " of " << hz;
      EXPECT_TRUE(marks == 0 || isMixed || !(hz <= FrqNoPitch)) << "a map without pitch has no wrong one";
    }
  }
}

TEST(CheckRecords, TheResultsReplaceTheMarksOfTheMap) {
  FrqMap map = Tone(1);
  map.Frames[2].Mark = 5;
  map.HasMarks = true;
  const auto record = MakeCheckFrames(map, std::wstring(300, L'x'));
  EXPECT_EQ(std::u16string(record->MapPath).size(), 259u) << "a long path is cut, and ends";
  record->Frames[0].SuggestedFrequency = 100.0;
  EXPECT_EQ(TakeCheckResults(*record, map), 0);
  EXPECT_FALSE(map.HasMarks);
  EXPECT_EQ(map.Frames[2].Mark, 0u);
  EXPECT_EQ(map.Frames[0].SuggestedFrequency, 100.0) << "as it stands, also without a mark";
  record->Frames[1].Mark = -1;
  EXPECT_EQ(TakeCheckResults(*record, map), 1);
  EXPECT_TRUE(map.HasMarks);
}

}  // namespace

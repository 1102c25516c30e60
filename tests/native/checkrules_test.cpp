// What the check marks in the sample voicebank, and what it makes of records that are none. ./bench measures how well
// it finds every kind of error.
#include "check/checkrules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <numbers>
#include <random>
#include <set>

#include "base/note.h"
#include "check/soundrules.h"
#include "companions/resampler/sound.h"
#include "frqmap/freq0003.h"
#include "native/tone.h"
#include "native/wavebytes.h"
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

std::optional<Sound> SoundOfFile(const Bytes& file) {
  WaveBytes source(file);
  const auto wave = DecodeWav(source, false);
  return wave ? SoundOfWave(wave->format, wave->samples) : std::nullopt;
}

TEST(CheckByEar, FindsInTheSampleVoicebankWhatWasPlantedAndNothingElse) {
  const std::vector<BankFile> bank = MakeSampleBank();
  std::set<std::u8string> marked;
  for (const BankFile& file : bank) {
    if (!file.path.ends_with(u8"_wav.frq")) continue;
    const std::u8string wavePath = file.path.substr(0, file.path.size() - 8) + u8".wav";
    const auto wave = std::ranges::find(bank, wavePath, &BankFile::path);
    const Sound sound = SoundOfFile(wave->bytes).value();
    Checked checked(DecodeFreq0003(file.bytes).value());
    const CheckFrqSettings settings;
    if (CheckMapBySound(&settings, checked.frames.get(), nullptr, sound.samples, sound.rate) > 0)
      marked.insert(file.path);
  }
  EXPECT_EQ(marked, (std::set<std::u8string>{u8"か_wav.frq", u8"ら_wav.frq", u8"さ_wav.frq"}));
}

// A second with a voice from frame 35 to 137, which the contour alone would let pass in most of these.
TEST(CheckByEar, SaysWhatIsWrongWithAStretchAndWhatItShouldBe) {
  struct Case {
    const char* what;
    int first, end;
    double hz;
    std::int32_t mark;
    double suggestion;
  };
  const Case cases[] = {{"nothing", 60, 60, 0, CheckMarkNone, 0},
                        {"all an octave high", 35, 138, 440, CheckMarkFactor, 220},
                        {"all an octave low", 35, 138, 110, CheckMarkFactor, 220},
                        {"all a twelfth high", 35, 138, 660, CheckMarkFactor, 220},
                        {"one frame a twelfth low", 60, 61, 220.0 / 3, CheckMarkFactor, 220},
                        {"a third high", 60, 80, 277, CheckMarkFar, 220},
                        {"no number", 60, 62, kInfinity, CheckMarkFar, 220},
                        {"a wandering pitch in silence", 5, 20, 310, CheckMarkNoise, FrqNoPitch},
                        {"a gap of one frame", 60, 61, FrqNoPitch, CheckMarkGap, 220},
                        {"no pitch at all", 35, 138, FrqNoPitch, CheckMarkGap, 220}};
  const std::vector<float> sound = SecondOfTone([](double) { return 220.0; }, 0.2, 0.8);
  for (const auto& [what, first, end, hz, mark, suggestion] : cases) {
    SCOPED_TRACE(what);
    FrqMap map;
    map.Create(173, FrqTypeFrq);
    map.Hop = 256;
    for (int i = 35; i < 138; ++i) map.Frames[i].Frequency = 220.0;
    for (int i = first; i < end; ++i) map.Frames[i].Frequency = hz;
    auto frames = MakeCheckFrames(map, L"");
    const CheckFrqSettings settings;
    EXPECT_NEAR(CheckMapBySound(&settings, frames.get(), nullptr, sound, 44100), end - first, 2);
    // A frame at the very edge of the voice may be either.
    for (int i = 0; i < map.FrameCount; ++i) {
      if (i == 34 || i == 35 || i == 137) continue;
      const CheckFrame& frame = frames->Frames[i];
      const bool isWrong = i >= first && i < end;
      EXPECT_EQ(frame.Mark, isWrong ? mark : CheckMarkNone) << i;
      EXPECT_NEAR(frame.SuggestedFrequency, isWrong ? suggestion : 0.0, 3.0) << i;
    }
    // The sound of another recording says nothing about this one.
    const std::span other = std::span(sound).first(20000);
    const std::int32_t byEar = CheckMapBySound(&settings, frames.get(), nullptr, other, 44100);
    EXPECT_EQ(byEar, CheckMap(&settings, frames.get(), nullptr));
  }
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
  EXPECT_LT(CheckMap(&good, nullptr, nullptr), 0);
}

TEST(CheckRecords, AResultIsTakenAsItStandsAndALongPathIsCut) {
  FrqMap map = Tone(1);
  const auto record = MakeCheckFrames(map, std::wstring(300, L'x'));
  EXPECT_EQ(std::u16string(record->MapPath).size(), 259u) << "and ends";
  record->Frames[0].SuggestedFrequency = 100.0;
  record->Frames[1].Mark = -1;
  EXPECT_EQ(TakeCheckResults(*record, map), 1);
  EXPECT_TRUE(map.HasMarks && map.Frames[0].SuggestedFrequency == 100.0) << "also without a mark";
}

TEST(CheckRules, MapsOfAnySizeAndContentAreBorne) {
  constexpr double kOdd[] = {kNaN, kInfinity, -kInfinity, -1.0, 0.0, FrqNoPitch, 1e-300, 261.6, 1e308};
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  const CheckFrqSettings settings{.LowNote = kMost, .HighNote = -kMost - 1};
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

}  // namespace

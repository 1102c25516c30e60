// Marks of the check, and why: a planted contour for each rule, on both sides of each of its figures, and the sample
// voicebank. ./bench measures how well it finds every kind of error.
#include "check/checkrules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <random>
#include <regex>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "base/note.h"
#include "check/markedruns.h"
#include "frqmap/freq0003.h"
#include "native/checkbysound.h"
#include "native/family.h"
#include "native/tone.h"
#include "native/wavebytes.h"
#include "pitch/pitchanalysis.h"
#include "samplebank/bank.h"
#include "voicebank/sound.h"

namespace {

constexpr std::int32_t kEither = -1;
constexpr CheckFrqSettings kAnyNote{.LowNote = 0, .HighNote = 127}, kMiddleC{.LowNote = 60, .HighNote = 60};
constexpr CheckFrqSettings kTransition{.LowNote = 0, .HighNote = 127, .HasPitchTransition = 1};
constexpr CheckFrqSettings kFreeBeginning{.LowNote = 0, .HighNote = 127, .LargeTransitionAtBeginning = 1};
constexpr CheckFrqSettings kFreeEnd{.LowNote = 0, .HighNote = 127, .LargeTransitionAtEnd = 1};

// Notes of a run: one for all of its frames, "60"; a line from "60:64", the notes just before and just behind the run;
// or two that take turns, "60/61". "-" is no pitch.
struct Notes {
  explicit Notes(std::string text) {
    const std::size_t at = text.find_first_of(":/");
    if (at != std::string::npos) kind = text[at];
    from = text == "-" ? 33.0 : std::stod(text);  // FrqNoPitch to the bit
    to = kind ? std::stod(text.substr(at + 1)) : from;
  }
  double HzAt(int i, int count) const {
    if (kind == '/') return NoteToHz(i % 2 == 0 ? from : to);
    return NoteToHz(std::lerp(from, to, (i + 1.0) / (count + 1.0)));
  }
  char kind = 0;
  double from, to;
};

// A map and, in its marks, what is expected of the check: runs "20x60", "20x60@0.1" at a level other than 1, and
// "20x60=N" with a mark. "=F60" is a factor and the suggestion, "=G60" a gap, "=N60" noise, "=N" noise without pitch,
// "=X" far,
// "=?" what it may.
FrqMap Planted(const std::string& text, int hop) {
  static const std::regex form("([0-9]+)x([^@=]+)(@([^=]+))?(=(.)(.*))?");
  static const std::map<std::string, std::int32_t> marks = {{"", CheckMarkNone},   {"F", CheckMarkFactor},
                                                            {"N", CheckMarkNoise}, {"G", CheckMarkGap},
                                                            {"X", CheckMarkFar},   {"?", kEither}};
  FrqMap map;
  map.Hop = hop;
  std::istringstream runs(text);
  for (std::string run; runs >> run;) {
    std::smatch parts;
    EXPECT_TRUE(std::regex_match(run, parts, form)) << run;
    const int count = std::stoi(parts[1]);
    const Notes notes(parts[2]), suggested(parts[7].length() > 0 ? parts[7].str() : "-");
    for (int i = 0; i < count; ++i) {
      FrqFrame& frame = map.Frames.Own().emplace_back();
      frame.Frequency = notes.HzAt(i, count);
      frame.Amplitude = 3000.0 * (parts[4].matched ? std::stod(parts[4]) : parts[2] == "-" ? 0.0 : 1.0);
      frame.Mark = static_cast<std::uint32_t>(marks.at(parts[6]));
      if (parts[7].length() > 0 || parts[6] == "N") frame.SuggestedFrequency = suggested.HzAt(i, count);
    }
  }
  map.FrameCount = static_cast<SampleCount>(map.Frames.size());
  return map;
}

// `check` returns what the library does.
void ExpectMarks(const std::string& text, int hop, double hertz, const auto& check) {
  SCOPED_TRACE(text);
  const FrqMap map = Planted(text, hop);
  const auto record = MakeCheckFrames(map, L"");
  const std::int32_t result = check(record.get());
  const std::span frames(record->Frames, map.Frames.size());
  EXPECT_EQ(result, std::ranges::count_if(frames, [](const CheckFrame& frame) { return frame.Mark != 0; }));
  for (std::size_t i = 0; i < frames.size(); ++i) {
    auto mark = static_cast<std::int32_t>(map.Frames[i].Mark);
    if (mark == CheckMarkFactor) mark = MarkOfFactor(map.Frames[i].Frequency / map.Frames[i].SuggestedFrequency);
    if (mark == kEither) continue;
    ASSERT_EQ(frames[i].Mark, mark) << "frame " << i;
    ASSERT_NEAR(frames[i].SuggestedFrequency, map.Frames[i].SuggestedFrequency, hertz) << "frame " << i;
  }
}

// The record of the regions as it lies in memory: how many, then the first and the last frame of each.
using RegionNumbers = std::vector<std::int32_t>;
const CheckRegionRecord* Record(const RegionNumbers& numbers) {
  return reinterpret_cast<const CheckRegionRecord*>(numbers.data());
}

// With a hop of 44 a frame lasts a millisecond, and a step of a semitone is free.
void ExpectMarks(std::initializer_list<const char*> contours, const CheckFrqSettings& settings = kAnyNote, int hop = 44,
                 const RegionNumbers& regions = {0}) {
  for (const char* const text : contours) {
    ExpectMarks(text, hop, 1e-3, [&](auto* frames) { return CheckMap(&settings, frames, Record(regions)); });
  }
}

TEST(CheckRules, AJumpIsNoiseWhereItIsDearerThanToLeaveItsFramesOut) {
  ExpectMarks({"99x60 1x61.95 99x60", "99x60 1x62.05=N60 99x60", "99x60 1x57.95=N60 99x60", "99x60 3x62.65 99x60",
               "99x60 3x62.75=N60 99x60", "99x60 1x61.55@0.09 99x60", "99x60 1x61.65@0.1 99x60",
               "99x60 1x61.65@0.099=N 99x60", "9x- 1x62.5 99x60", "1x62.5 99x60"});
  // A longer hop allows more, up to a limit,
  ExpectMarks({"99x60 1x62.95 99x60", "99x60 1x63.05=N60 99x60"}, kAnyNote, 441);
  ExpectMarks({"99x60 1x64.45 99x60", "99x60 1x64.55=N60 99x60"}, kAnyNote, 882);
  // so do the settings, in all of the map or in 200 ms and two fifths of each region,
  ExpectMarks({"99x60 1x62.95 99x60", "99x60 1x63.05=N60 99x60"}, kTransition);
  ExpectMarks({"99x60 1x63.45 499x60", "99x60 1x63.55=N60 499x60", "9x- 199x60 1x62.4 400x60",
               "9x- 200x60 1x62.4=N60 399x60", "39x60 1x62.4 60x60 9x-", "40x60 1x62.4=N60 61x60 9x-"},
              kFreeBeginning);
  ExpectMarks({"399x60 1x62.4 200x60 9x-", "398x60 1x62.4=N60 201x60 9x-"}, kFreeEnd);
  ExpectMarks({"149x60 1x62.4 60x60"}, kFreeBeginning, 44, {2, 0, 99, 110, 209});
  // and what goes on from the pitch beside it is no noise.
  ExpectMarks({"99x60 1x61 1x66=N58.98045 99x58.2", "99x58.2 1x66=N58.98045 1x61 99x60"});
}

TEST(CheckRules, ARunIsMovedByTheFactorThatCostsLeast) {
  ExpectMarks({"99x60 20x72=F60 99x60", "99x60 20x48=F60 99x60", "99x60 20x79=F59.98045 99x60",
               "99x60 20x41=F60.01955 99x60", "99x60 20x67=F59.98045 99x60", "99x60 20x53=F60.01955 99x60",
               "99x60 20x65.95=N58.93045 99x60", "99x60 20x66.05=F59.03045 99x60", "99x60 20x68.75=F61.73045 99x60",
               "99x60 20x68.87=F56.87 99x60"});
  // A long run at the end of the map is not moved, and noise if it is too far off.
  ExpectMarks({"99x60 49x72=F60", "99x60 51x72=N", "99x60 19x67=F59.98045", "99x60 21x67=N"});
  ExpectMarks({"499x60 249x72=F60", "499x60 251x72"}, kTransition);
  ExpectMarks({"200x67=F59.98045 300x60"}, kFreeBeginning);
  // Over silence the pitch may have gone farther, and not over noise.
  ExpectMarks({"99x60 10x- 16x68.9", "99x60 10x- 16x69.05=F57.05", "99x60 3x- 16x67.9=N", "99x60 3x- 16x68.05=F56.05",
               "99x60 10xnan=N 16x66.5", "99x60 10xnan=N60:59.68045 16x66.7=F59.68045"});
  // So is what the path calls noise beside a pitch, where an octave or a twelfth fits.
  ExpectMarks({"1x72=F60 99x60 1x72=F60", "1x60 1x72=F60 3xnan=N60 99x60", "99x60 2x48=F60 99x60",
               "99x60 1x79=F59.98045 1x41=F60.01955 99x60", "99x60 1x72.95=F60.95 99x60",
               "99x60 1x73.05=N61.05 99x60"});
}

TEST(CheckRules, AMapIsMovedTowardsTheNotesOfTheSettings) {
  ExpectMarks({"99x51.05", "99x50.95=F62.95", "99x68.95", "99x69.05=F57.05", "99x108.95=F89.93045", "99x109.05"},
              kMiddleC);
  ExpectMarks({"99x50.95=F62.95"}, {.LowNote = 72, .HighNote = 60});
}

TEST(CheckRules, FarFromTheMiddleOfTheMapIsMarkedWithoutASuggestion) {
  ExpectMarks({"99x60 12x60:70.95 20x70.95", "99x60 12x60:71.05 20x71.05=X", "99x60 12x60:48.95 20x48.95=X",
               "99x60 12x60:71.5 20x71.5=X 5x83.5=F71.5 20x71.5=X", "101x60 100x71.05=X", "100x60=X 101x71.05",
               "60x60 12x60:71.05 60x71.05=X 12x71.05:60 61x60"});
  for (const CheckFrqSettings& settings : {kTransition, kFreeEnd}) {
    ExpectMarks({"99x60 12x60:71.05 20x71.05"}, settings);
  }
  ExpectMarks({"99x60 12x60:71.05 20x71.05=X"}, kFreeBeginning);
}

TEST(CheckRules, AnIslandOfPitchIsNoiseWhereItIsShortSoftRoughOrStrays) {
  ExpectMarks({"9x- 15x60=N 9x-", "9x- 16x60 9x-", "9x- 20x44.9=N 9x-", "9x- 20x45.2 9x-", "9x- 20x60 12x- 20x60 9x-",
               "9x- 10x33 9x-", "9x- 10x33.1=N 9x-", "9x- 20x60/60.245 9x-", "9x- 20x60/60.257=N 9x-",
               "9x- 90x60/60.3=N 9x-", "9x- 91x60/60.3 9x-", "99x60 40x- 99x60@0.029=N", "99x60 40x- 99x60@0.03",
               "99x60 40x- 60x60@0.179=N", "99x60 40x- 60x60@0.18", "99x60 40x- 61x60@0.179"});
  ExpectMarks({"2x63.4=N 99x60"}, kAnyNote, 220);
  ExpectMarks({"99x60 3x- 4x66"}, kAnyNote, 441);
  ExpectMarks({"99x60 40x- 99x60@0.099=N", "99x60 40x- 99x60@0.1"}, kAnyNote, 44, {1, 0, 98});
  ExpectMarks({"99x60 40x- 99x60@0.099"}, kAnyNote, 44, {1, 0, 139});
  ExpectMarks({"99x60 40x- 99x60@0.099"}, kAnyNote, 44, {2, 0, 98, 237, 237});
  // By the nearer neighbour, and where it is not linked to that.
  ExpectMarks({"99x60 40x- 60x64.95", "99x60 40x- 60x65.05=N", "99x60 40x- 61x65.05", "99x60 40x- 40x66 40x- 99x70",
               "99x60 40x- 40x64:66", "99x60 40x- 40x66:64=N", "40x66:64 40x- 99x60", "99x60 30x- 40x66",
               "99x60 31x- 40x66=N", "99x60 3x- 40x65.9", "99x60 3x- 40x66.1=N"});
  // Steps so fine that no analysis makes them are those of a project, 5 ms.
  ExpectMarks({"9x- 2x60=N 9x- 3x60 9x-"}, kAnyNote, 1);
  ExpectMarks({"9x- 17x60/60.3=N 9x- 18x60/60.3 9x-"}, kAnyNote, 31);
  ExpectMarks({"9x- 20x60=N 9x-"}, kAnyNote, 32);
}

TEST(CheckRules, NoiseIsDrawnOverInsideAToneOnly) {
  ExpectMarks({"99x60 120xnan=N60 99x60", "99x60 121xnan=N 99x60", "10xnan=N 99x60 10xnan=N",
               "99x60 10xnan@0.29=N 99x60", "99x60 10xnan@0.3=N60 99x60", "99x60 10xnan@0.14=N 1x60@0.5 98x60",
               "98x60 1x60@0.5 10xnan@0.15=N60 99x60", "99x60 10xnan=N60:64.95 99x64.95", "99x60 10xnan=N 99x65.05",
               "99x60 1x66@inf=N 99x60"});
  // By a factor of the frame's own pitch, where one fits.
  ExpectMarks({"99x60 1x53=N60.01955 99x60", "99x60 1x68.45=N61.43045 99x60", "99x60 1x68.6=N60 99x60",
               "99x60 1x65.6=N58.58045 99x60", "99x60 1x65.4=N60 99x60"});
  // No voice is as high as half of the rate.
  ExpectMarks({"99x136.75", "99x136.78=N"}, {.LowNote = 0, .HighNote = 137});
}

TEST(CheckRules, AGapIsFilledWhereItsEndsAgreeAndItIsShortOrAsLoud) {
  ExpectMarks({"9x- 99x60 9x-=G60 99x60 9x-", "99x60 20x-@0.49 99x60", "99x60 20x-@0.5=G60 99x60",
               "99x60 20x-@0.24 1x60@0.5 98x60", "98x60 1x60@0.5 20x-@0.25=G60 99x60", "99x60 50x-@0.6=G60 99x60",
               "99x60 51x-@0.6 99x60", "99x60 99x60@0.2 20x-@0.145 99x60@0.2",
               "99x60 99x60@0.2 20x-@0.15=G60 99x60@0.2", "99x60@0 20x-=G60 99x60@0", "99x60@0 21x- 99x60@0",
               "99x60 3x-=G60:62.95 99x62.95", "99x60 3x- 99x63.05"});
  ExpectMarks({"99x60 10x- 99x60"}, kAnyNote, 43);
}

TEST(CheckRules, RecordsThatAreNoneAreRefusedAndStayAsTheyWere) {
  const auto isTaken = [](const RegionNumbers& regions, int frameCount = 3, CheckFrqSettings settings = kAnyNote) {
    const auto frames = MakeCheckFrames(Planted("3x60", 44), L"");
    frames->Frames[0].Mark = 77;
    frames->FrameCount = frameCount;
    const bool isRefused = CheckMap(&settings, frames.get(), Record(regions)) < 0;
    EXPECT_EQ(frames->Frames[0].Mark == 77, isRefused);
    return !isRefused;
  };
  EXPECT_TRUE(isTaken({0}) && isTaken({1, 0, 2}) && isTaken({2, 0, 0, 2, 2}));
  EXPECT_FALSE(isTaken({1, -1, 0}) || isTaken({1, 0, 3}) || isTaken({1, 2, 1}) || isTaken({2, 0, 1, 1, 2}));
  EXPECT_FALSE(isTaken({3, 0, 0, 1, 1, 2, 2}) || isTaken({-1})) << "more than can lie apart";
  EXPECT_FALSE(isTaken({0}, -1) || isTaken({0}, 3, {.Size = 20}));
  EXPECT_LT(CheckMap(&kAnyNote, nullptr, nullptr), 0);
}

TEST(CheckRecords, AResultIsTakenAsItStandsAndALongPathIsCut) {
  FrqMap map = Planted("41x60", 44);
  const auto record = MakeCheckFrames(map, std::wstring(300, L'x'));
  EXPECT_EQ(std::u16string(record->MapPath).size(), 259u) << "and ends";
  record->Frames[0].SuggestedFrequency = 100.0;
  record->Frames[1].Mark = -1;
  EXPECT_EQ(TakeCheckResults(*record, map), 1);
  EXPECT_TRUE(map.HasMarks && map.Frames[0].SuggestedFrequency == 100.0) << "also without a mark";
}

TEST(CheckRules, MapsOfAnySizeAndContentAreBorne) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  for (const int hop : {1, 44, 1 << 30}) {
    ExpectMarks({"", "1x-", "1xnan=N", "1x60=?", "2xinf@nan=N", "2x-inf@inf", "1x-@-1 1xinf@inf=N"},
                {.LowNote = kMost, .HighNote = -kMost - 1}, hop);
  }
  std::string mixed;
  for (int i = 0; i < 500; ++i) mixed += "2x60@nan=? 1xnan@-1=? 3x-@inf=? 7x60/90@1e300=? 1xinf@-inf=? 9x-inf@1=? ";
  ExpectMarks({mixed.c_str()});
}

TEST(CheckRules, EveryPlantedErrorOfTheSampleVoicebankIsFoundAndNothingElse) {
  std::map<std::u8string, int> planted = {{u8"か_wav.frq", 12}, {u8"ら_wav.frq", 20}, {u8"さ_wav.frq", 21}};
  const std::vector<BankFile> bank = MakeSampleBank();
  for (const BankFile& file : bank) {
    if (!file.path.ends_with(u8"_wav.frq")) continue;
    SCOPED_TRACE(std::string(file.path.begin(), file.path.end()));
    FrqMap map = DecodeFreq0003(file.bytes).value();
    const auto frames = MakeCheckFrames(map, L"");
    const auto regions = MakeCheckRegions(map);
    for (const CheckFrqSettings& settings : {kMiddleC, CheckFrqSettings{}}) {
      EXPECT_EQ(CheckMap(&settings, frames.get(), regions.get()), planted[file.path]);
    }
    const std::u8string wavePath = file.path.substr(0, file.path.size() - 8) + u8".wav";
    WaveBytes source(std::ranges::find(bank, wavePath, &BankFile::path)->bytes);
    const auto wave = DecodeWav(source, false);
    const Sound sound = SoundOfWave(wave->format, wave->samples).value();
    const int heard = CheckMapBySound(kAnyNote, *frames, nullptr, sound.samples, sound.rate);
    EXPECT_EQ(heard > 0, planted[file.path] > 0);
  }
}

using Samples = std::vector<float>;

// Noise over a voice of 220 Hz, from frame 60 to 86 or all of it.
Samples Noisy(double amount, double from = 0.35, double to = 0.5) {
  Samples samples = SecondOfTone([](double) { return 220.0; }, 0.2, 0.8);
  std::minstd_rand chance;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double noise = 60000.0 * chance() / std::minstd_rand::max() - 30000.0, t = static_cast<double>(i) / 44100;
    if (t > from && t < to) samples[i] += static_cast<float>(amount * noise);
  }
  return samples;
}

// A voice of 220 Hz by its harmonics.
Samples Harmonics(std::initializer_list<double> amounts) {
  Samples samples(44100);
  int k = 0;
  for (const double amount : amounts) {
    const double step = ++k * 220.0 * 2.0 * std::numbers::pi / 44100;
    for (int i = 8820; i < 35280; ++i) samples[i] += static_cast<float>(5000.0 * amount * std::sin(step * i));
  }
  return samples;
}

void ExpectHeard(std::initializer_list<std::string> contours, std::span<const float> samples, int hop = 256) {
  for (const std::string& text : contours) {
    ExpectMarks(text, hop, 6.5,
                [&](auto* frames) { return CheckMapBySound(kAnyNote, *frames, nullptr, samples, 44100); });
  }
}

// The contour alone would let pass most of these. At the edges of the voice a frame may be either.
TEST(CheckByEar, SaysWhatIsWrongWithAStretchAndWhatItShouldBe) {
  const Samples voice = Noisy(0.0);
  ExpectHeard({"34x- 1x-=? 1x57=? 101x57 1x57=? 35x-", "34x- 1x-=? 1x69=? 101x69=F57 1x69=? 35x-",
               "34x- 1x-=? 1x45=? 101x45=F57 1x45=? 35x-", "34x- 1x-=? 1x76=? 101x76=F57 1x76=? 35x-",
               "34x- 2x-=? 101x-=G57 1x-=? 35x-", "5x- 15x63=N 14x- 1x-=? 1x57=? 101x57 1x57=? 35x-"},
              voice);
  // An error begins 120 cents from what is heard, and is by a factor up to 120 cents from that.
  for (const char* const planted : {"1x37.98=F57", "9x61=X57", "2xinf=X57", "1x-=G57", "9x58.15", "9x58.25=X57",
                                    "9x70.15=F57", "9x70.25=X57", "9x43.85=F57", "9x43.75=X57", "9x77.17=F57",
                                    "9x77.27=X57", "9x65.17=F57", "9x65.27=X57", "9x48.83=F57", "9x48.73=X57"}) {
    ExpectHeard({std::string("44x57 ") + planted + " 44x57"}, std::span(voice).subspan(11025, 22050));
  }
}

// The same with a voice that is heard but for the frames 63 to 82, however well the sound bears out the map there.
void ExpectUnheard(const std::string& text, const Samples& samples) {
  Hearing hearing{256, 44100.0, std::ssize(samples), std::vector<HeardFrame>(173, {55.0f, 0.0f, 0})};
  for (std::size_t i = 35; i < 138; ++i) {
    if (i < 63 || i > 82) hearing.Frames[i] = {220.0f, 1.0f, 0};
  }
  const PitchSearch search(samples, 44100);
  ExpectMarks(text, 256, 6.5,
              [&](auto* frames) { return MarkBySound(*frames, hearing, [&] { return &search; }).value(); });
}

// How well the sound bears out a pitch, on both sides of each figure.
TEST(CheckByEar, MarksWhatTheSoundBearsOutByMoreThanTheMap) {
  ExpectHeard({"35x- 33x57 2x-=G57 68x57 35x-"}, Noisy(0.75, 0.397, 0.403));
  ExpectHeard({"35x- 33x57 2x- 68x57 35x-"}, Noisy(0.8, 0.397, 0.403));
  ExpectHeard({"35x- 33x57 2x61=X57 68x57 35x-"}, Noisy(0.95, 0.397, 0.403));
  ExpectHeard({"35x- 33x57 2x61 68x57 35x-"}, Noisy(1.05, 0.397, 0.403));
  ExpectHeard({"34x- 2x-=? 101x-=G57 1x-=? 35x-"}, Noisy(0.21, 0.2, 0.8));
  ExpectHeard({"173x-"}, Noisy(0.225, 0.2, 0.8));
  ExpectUnheard("35x- 28x57 20x45 55x57 35x-", Noisy(0.5));
  ExpectUnheard("35x- 28x57 20x45=N 55x57 35x-", Noisy(0.52));
  ExpectHeard({"35x- 28x57 20x58.29 55x57 35x-"}, Harmonics({1, 0.5, 0.5}));
  ExpectHeard({"35x- 28x57 20x58.29=X57 55x57 35x-"}, Harmonics({1, 0.54, 0.54}));
  ExpectHeard({"35x- 103x69 35x-"}, Harmonics({0.25, 1, 0.125, 0.5}));
  ExpectHeard({"34x- 1x-=? 1x69=? 101x69=F57 1x69=? 35x-"}, Harmonics({0.26, 1, 0.13, 0.5}));
}

// A hum bears out most pitches. An error before a voice ends where the map steps into it.
TEST(CheckByEar, TakesForAVoiceOnlyWhatIsLikelyToBeOne) {
  Samples hum = Noisy(0.0);
  for (std::size_t i = 0; i < hum.size(); ++i) {
    hum[i] += static_cast<float>(3000.0 * std::sin(100.0 * std::numbers::pi / 44100.0 * static_cast<double>(i)));
  }
  ExpectHeard({"5x- 12x71=N 17x- 2x-=? 101x57 2x-=? 34x-"}, hum);
  ExpectUnheard("35x- 28x57 8x63=N 4x57 8x63=N 55x57 35x-", Noisy(0.0));
}

// A map that leaves what is heard by a step needs little to be wrong; one that goes on without one may be right.
TEST(CheckByEar, AsksForLessWhereTheMapLeavesWhatIsHeardByAStep) {
  const Samples sine = Harmonics({1}), faint = Harmonics({0.2, 1, 0.1, 0.5});
  ExpectHeard({"35x- 28x57 20x58.45 55x57 35x-", "35x- 28x57 20x58.55=X57 55x57 35x-",
               "35x- 28x57 5x55.6 1x54.3 5x55.6 64x57 35x-", "35x- 28x57 5x55.6=X57 1x53.9=X57 5x55.6=X57 64x57 35x-",
               "35x- 28x57 5x55.6 5x-=G57 65x57 35x-", "35x- 28x57 5x-=G57 5x55.6 65x57 35x-"},
              sine);
  ExpectHeard(
      {"35x- 28x57 20x69=F57 55x57 35x-", "35x- 103x69 35x-", "34x- 2x-=? 20x69=F57 20x45=F57 60x-=G57 3x-=? 34x-",
       "34x- 2x-=? 27x57 4x-=G57 20x69=F57 50x-=G57 2x-=? 34x-", "34x- 2x-=? 49x-=G57 20x69=F57 4x-=G57 28x57 36x-"},
      faint);
  // A lone frame at the end of a tone is half a pause.
  ExpectHeard({"35x- 28x57 1x61 20x-=G57 54x57 35x-", "35x- 28x57 2x61=X57 20x-=G57 53x57 35x-",
               "35x- 28x57 20x-=G57 1x61 54x57 35x-", "35x- 28x57 20x-=G57 1x57 2x-=G57 52x57 35x-"},
              sine);
}

std::string Frames(std::ptrdiff_t count, const char* what) {
  return std::to_string(count) + what + " ";
}

// Two frames are given, and 40 ms more where the map holds on; 80 ms may be without a map. By frames of 2.5 ms.
TEST(CheckByEar, TakesNoFrameAtTheEdgeOfAVoiceForAnError) {
  const Samples voice = Noisy(1.0, 0.8, 1.0);
  const std::vector<double> heard = AnalysePitch(voice, 44100, 110);
  const auto isHeard = [](double hz) { return hz > FrqNoPitch; };
  const auto first = std::ranges::find_if(heard, isHeard) - heard.begin();
  const auto count = std::ranges::count_if(heard, isHeard);
  const auto rest = std::ssize(heard) - first - count;
  const std::string before = Frames(first, "x-"), whole = before + Frames(count + 2, "x57");
  ExpectHeard({whole + Frames(16, "x57") + Frames(rest - 18, "x-"), whole + "17x57=N " + Frames(rest - 19, "x-"),
               whole + "1x63 " + Frames(rest - 3, "x-"), whole + "2x63=N " + Frames(rest - 4, "x-"),
               before + "32x- " + Frames(count - 32, "x57") + Frames(rest, "x-"),
               before + "33x-=G57 " + Frames(count - 33, "x57") + Frames(rest, "x-")},
              voice, 110);
}

// Or between what is heard before and after, unless that jumps too far.
TEST(CheckByEar, AMapMayBeTwoFramesEarlyOrLate) {
  const Samples voice = SecondOfTone([](double t) { return t < 0.5 ? 220.0 : NoteToHz(61); }, 0.0, 1.0);
  const std::vector<double> heard = AnalysePitch(voice, 44100, 256);
  const auto step = std::ranges::find_if(heard, [](double hz) { return hz > 250; }) - heard.begin(), rest = 168 - step;
  const std::string from = "5x57=? ", to = "5x61=?";
  ExpectHeard({from + Frames(step - 5, "x57") + "1x59 " + Frames(rest - 1, "x61") + to,
               from + Frames(step - 7, "x57") + Frames(rest + 2, "x61") + to,
               from + Frames(step - 8, "x57") + "1x61=X57 " + Frames(rest + 2, "x61") + to,
               from + Frames(step - 3, "x57") + Frames(rest - 2, "x61") + to,
               from + Frames(step - 3, "x57") + "1x57=X61 " + Frames(rest - 3, "x61") + to},
              voice);
  const Samples fifth = SecondOfTone([](double t) { return t < 0.5 ? 220.0 : 330.0; }, 0.0, 1.0);
  ExpectHeard({from + Frames(step - 5, "x57") + "1x60.5=X64.02 " + Frames(rest - 1, "x64.02") + "5x64.02=?"}, fifth);
}

// A map that is not of the sound, and one too fine for it, are checked by the contour, which lets an octave pass.
TEST(CheckByEar, ListensToTheRecordingOfTheMapOnly) {
  const Samples voice = Noisy(0.0);
  const std::span whole(voice);
  ExpectHeard({"34x- 1x-=? 1x69=? 101x69=F57 1x69=? 35x-"}, whole.first(37736));
  ExpectHeard({"35x- 103x69 35x-"}, whole.first(37735));
  ExpectHeard({"34x- 1x-=? 1x69=? 101x69=F57 1x69=? 8x-", "35x- 103x69 7x-"}, whole);
  ExpectHeard({"286x- 817x69=F57 275x-"}, whole, 32);
  ExpectHeard({"285x- 843x69 295x-"}, whole, 31);
  EXPECT_EQ(HearingOf(PitchSearch(voice, 44100), voice.size(), 44100, 256).Frames.size(), 173u) << "of all of it";
}

TEST(CheckMarks, TellWhichFactorItIs) {
  const std::pair<double, CheckMark> cases[] = {
      {2.0, CheckMarkOctaveHigh}, {1.8, CheckMarkOctaveHigh}, {0.5, CheckMarkOctaveLow}, {3.0, CheckMarkTwelfth},
      {0.34, CheckMarkTwelfth},   {1.5, CheckMarkFactor},     {0.67, CheckMarkFactor},   {4.0, CheckMarkFactor}};
  for (const auto& [ratio, mark] : cases) EXPECT_EQ(MarkOfFactor(ratio), mark) << ratio;
}

TEST(CheckMarks, AreGatheredRunByRunWithWhatEachWouldBecome) {
  FrqMap map = MapOf({100.0, 100.0, FrqNoPitch, 100.0, 100.0, 100.0, 100.0, 100.0}), unmarked;
  const double suggestions[] = {0.0, 200.0, 800.0, 0.0, FrqNoPitch, 0.0, 0.0, 0.0};
  for (std::size_t i = 0; i < 8; ++i) {
    map.Frames.Own()[i].SuggestedFrequency = suggestions[i];
    map.Frames.Own()[i].Mark = i == 1 || i == 2 || i == 4 || i == 7 ? (i == 7 ? 9u : 3u) : 0u;
  }
  map.HasMarks = true;
  const FrqMap* const maps[] = {nullptr, &unmarked, &map};
  const std::vector<MarkedRun> runs = MarkedRunsOf(maps);
  ASSERT_EQ(runs.size(), 3u);
  const auto place = [](const MarkedRun& run) { return std::tuple(run.Index, run.First, run.Last, run.Mark); };
  EXPECT_EQ(place(runs[0]), std::tuple(2, 1, 2, 3));
  EXPECT_NEAR(runs[0].From, 100.0, 1e-9);
  EXPECT_NEAR(runs[0].To, 400.0, 1e-9);
  EXPECT_EQ(place(runs[1]), std::tuple(2, 4, 4, 3));
  EXPECT_TRUE(runs[1].Changes() && runs[1].To == FrqNoPitch) << "the pitch is to go";
  EXPECT_EQ(place(runs[2]), std::tuple(2, 7, 7, 9));
  EXPECT_FALSE(runs[2].Changes());
}

}  // namespace

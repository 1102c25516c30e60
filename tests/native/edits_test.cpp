// Texts that users type into the boxes, texts of unusual numbers, and what resamplers are called with then.
#include "frqmap/edits.h"

#include <cmath>
#include <limits>

#include "native/family.h"
#include "resampler/commandline.h"

namespace {

constexpr double kHighest = 7902.132820097988;

TEST(Edits, UnusualFrequenciesHaveATextToo) {
  EXPECT_EQ(FrequencyText(64.001953125), L"64.00195312") << "a tie goes to the even digit";
  EXPECT_EQ(FrequencyText(1e300).size(), 310u);
  EXPECT_EQ(FrequencyText(std::numeric_limits<double>::max()).size(), 318u);
  for (const double none : {55.0, 0.0, -100.0, std::nan("")}) {
    EXPECT_EQ(FrequencyText(none), L"");
    EXPECT_EQ(FrameRowText(none), L"----");
  }
}

TEST(Edits, LimitsHoldForEveryNumber) {
  const double none = std::nan(""), infinity = std::numeric_limits<double>::infinity();
  const std::tuple<double, FrqType, bool, double> tests[] = {
      {none, FrqTypeFrq, false, 55.0},      {infinity, FrqTypeFrq, false, kHighest},
      {-infinity, FrqTypeFrq, false, 55.0}, {kHighest, FrqTypeMrq, true, 7902.1328125},
      {55.0000001, FrqTypeMrq, true, 55.0}, {33.3, FrqTypePmk, false, 55.0}};
  for (const auto& [hz, kind, single, result] : tests) {
    EXPECT_EQ(ClampFrequency(hz, kind, single), result) << hz << " " << kind;
  }
}

TEST(Edits, TypedTextIsReadUpToTheFirstOddCharacter) {
  const std::pair<const wchar_t*, double> tests[] = {
      {L"", 0.0},           {L"  \t440", 440.0}, {L"+1.5", 1.5},    {L"-1.5", -1.5},
      {L".5", 0.5},         {L"5.", 5.0},        {L"1E+2x", 100.0}, {L"1e", 1.0},
      {L"1,5", 1.0},        {L"--5", 0.0},       {L".", 0.0},       {L"0x1F", 0.0},
      {L"inf", 0.0},        {L"-nan", 0.0},      {L"1e-999", 0.0},  {L"440\x3042", 440.0},
      {L"1e999", HUGE_VAL}, {L"\xFF15", 0.0}};
  for (const auto& [text, value] : tests) EXPECT_EQ(ParseFrequency(text), value) << text;
}

TEST(Edits, AReloadOfSomeRowsCountsTheOthersThatDifferEitherWay) {
  const FrqMap saved = MapOf(std::vector<double>(5, 200.0));
  FrqMap map = MapOf({100.0, 300.0, 200.0, 150.0, 150.0});
  EXPECT_EQ(RestoreFrames(map, saved, std::vector{3, 9}, 4), 2);
  EXPECT_EQ(Values(map, &FrqFrame::Frequency), testdata::Json({100.0, 300.0, 200.0, 200.0, 150.0}));
}

TEST(Edits, TellWhichRowsTheyHaveSet) {
  FrqMap map = MapOf({100.0, FrqNoPitch, 200.0, 150.0});
  EXPECT_EQ(ScaleFrames(map, std::vector{0, 1, 3}, 2.0, FrqTypeFrq), (std::vector{0, 3})) << "no pitch stays none";
  EXPECT_EQ(InterpolateFrames(map, std::vector{0, 3}, FrqTypeFrq), (std::vector{1, 2}));
}

TEST(CommandLine, TakesAnyModulationAndFlagsThatAUserTypes) {
  const std::pair<const wchar_t*, int> tests[] = {{L" ", 0},           {L"-", 0},
                                                  {L"12x", 12},        {L"x12", 0},
                                                  {L" 7", 7},          {L"2147483647", 200},
                                                  {L"99999999999", 0}, {L"-99999999999999999999999", 0},
                                                  {L"-200", -200}};
  for (const auto& [text, value] : tests) EXPECT_EQ(ModulationFromText(text), value) << text;
  EXPECT_EQ(WithoutQuotes(L"g-5\" \"calc.exe\""), L"g-5   calc.exe ");
}

TEST(CommandLine, HasAPlaceForANoteThatHasNoName) {
  const RenderSettings flags{.PitchShift = 12, .Modulation = 0, .Flags = std::wstring(300, L'g')};
  EXPECT_EQ(RenderCommandLine(L"a b.wav", L"o.wav", 7902.0, 1e6, flags),
            L"\"a b.wav\" \"o.wav\"  100 \"" + std::wstring(300, L'g') + L"\" 0 1e+06 0 0 100 0 !120 AA#1#");
  const double notes[] = {std::nan(""), -1.0, 55.0};
  for (const double hz : notes) EXPECT_EQ(NoteToRender(hz, 0), 33) << hz;
  EXPECT_GT(NoteToRender(std::numeric_limits<double>::infinity(), 0), 119);
}

TEST(CommandLine, TellsTheLengthOfAnyWave) {
  // Channels, bits, rate, bytes.
  const std::tuple<std::uint16_t, std::uint16_t, std::uint32_t, std::uint32_t, double> tests[] = {
      {2, 16, 44100, 88200, 500.0},
      {1, 24, 44100, 44100, 333.33334350585938},
      {1, 16, 44100, 0x20000002, 1.0 / 44.1},
      {0, 16, 44100, 8, 0.0},
      {1, 16, 0, 8, 0.0}};
  for (const auto& [channels, bits, rate, bytes, ms] : tests) {
    const WaveFormat format{.channels = channels, .samplesPerSec = rate, .bitsPerSample = bits};
    EXPECT_EQ(RenderLengthMs(format, bytes), static_cast<float>(ms)) << ms;
  }
}

}  // namespace

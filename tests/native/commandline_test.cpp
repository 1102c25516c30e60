// What resamplers are called with where users type oddly or recordings are odd, and the notes that a range is picked
// by.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "resampler/commandline.h"

namespace {

TEST(CommandLine, TakesAnyModulationAndFlagsThatAUserTypes) {
  const std::pair<const wchar_t*, int> tests[] = {
      {L" ", 0},           {L"-", 0},
      {L"12x", 12},        {L"x12", 0},
      {L" 7", 7},          {L"2147483647", 200},
      {L"99999999999", 0}, {L"-99999999999999999999999", 0},
      {L"-200", -200},
  };
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

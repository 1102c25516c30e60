// What may be typed into the boxes of the frame list, and texts of unusual numbers.
#include "frqmap/edits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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
      {55.0000001, FrqTypeMrq, true, 55.0}, {33.3, FrqTypePmk, false, 55.0},
  };
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
      {L"1e999", HUGE_VAL}, {L"\xFF15", 0.0},
  };
  for (const auto& [text, value] : tests) EXPECT_EQ(ParseFrequency(text), value) << text;
}

}  // namespace

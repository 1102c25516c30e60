// Curves that go out as text and come in again, from us and from elsewhere, into maps of another hop.
#include "frqmap/curvetext.h"

#include <cmath>
#include <numeric>

#include "frqmap/curvepasting.h"
#include "native/family.h"

namespace {

using testdata::Json;

constexpr double kNone = FrqNoPitch;

std::vector<int> AllOf(const FrqMap& map) {
  std::vector<int> frames(map.Frames.size());
  std::iota(frames.begin(), frames.end(), 0);
  return frames;
}

// Times and frequencies in one line, "none" for a text that is no curve.
std::string Parsed(std::wstring_view text, std::size_t most = 10) {
  const auto rows = ParseCurve(text, most);
  if (!rows) return "none";
  std::string shown;
  for (const CurveRow& row : *rows) {
    char buffer[64];
    snprintf(buffer, sizeof(buffer), "%g:%g ", row.Seconds, row.Hz > kNone ? row.Hz : 0.0);
    shown += buffer;
  }
  return shown;
}

TEST(CurveText, IsReadAsSpreadsheetsAndHandsWriteIt) {
  const std::pair<const wchar_t*, const char*> tests[] = {
      {L"0\t220\r\n0.01\t\r\n0.02\t440.5\r\n", "0:220 0.01:0 0.02:440.5 "},
      {L"Time (s)\tPitch (Hz)\n\n1,5\t220,25\n1.75\t0\n \t \n", "0:220.25 0.25:0 "},
      {L"0,220\n0.01,\n0.02,54.9", "0:220 0.01:0 0.02:0 "},
      {L"  0   220  \r 1e-2 440\r0.02", "0:220 0.01:440 0.02:0 "},
      {L"0.5\t300\n0.25\t200", "0:200 0.25:300 "},
      {L"-1 100\n-0.5 1e300", "0:100 0.5:1e+300 "},
      {L"", "none"},
      {L" \t\r\n", "none"},
      {L"hello", "none"},
      {L"time hertz", "none"},
      {L"time\thertz\nand\tmore\n0\t220", "none"},
      {L"12\n13\n14", "none"},
      {L"0\t220\n0.01\tx", "none"},
      {L"0\t220\n\t230", "none"},
      {L"0\t220\t1", "none"},
      {L"0,01,220,5", "none"},
      {L"0\t1.234,5", "none"},
      {L"0\tinf", "none"},
      {L"0\tnan", "none"},
      {L"1e999\t220", "none"},
      {L"0\t-220", "none"},
      {L"0\t220\n０\t２２０", "none"}};
  for (const auto& [text, rows] : tests) EXPECT_EQ(Parsed(text), rows) << testing::PrintToString(std::wstring(text));
  EXPECT_EQ(Parsed(L"0 100\n1 200\nno row", 2), "0:100 1:200 ") << "what a map cannot hold is not looked at";
  EXPECT_EQ(Parsed(L"0 100\n" + std::wstring(1 << 20, L'1')), "none");
}

TEST(CurveText, BringsACurveBackBitForBit) {
  for (const SampleCount hop : {1, 100, 256}) {
    std::vector<double> frequencies;
    for (int i = 0; i < 500; ++i) frequencies.push_back(i % 7 == 3 ? kNone : 220.0 * std::exp2(std::sin(i)));
    const FrqMap source = MapOf(frequencies, hop);
    FrqMap target = MapOf(std::vector<double>(500, 300.0), hop);
    const std::wstring text = CurveText(CurveOf(source, AllOf(source)));
    const auto rows = ParseCurve(text, MostCurveRows(target));
    ASSERT_TRUE(rows);
    EXPECT_EQ(PasteRows(target, AllOf(target), *rows, PasteAs::Curve, FrqTypeFrq), AllOf(target));
    EXPECT_EQ(Values(target, &FrqFrame::Frequency), Json(frequencies)) << hop;
  }
  const FrqMap map = MapOf({220.0, 330.5, kNone, 440.0}, 441);
  EXPECT_EQ(CurveText(CurveOf(map, std::vector{1, 2, 3})), L"0.000000\t330.5\r\n0.010000\t\r\n0.020000\t440\r\n");
}

TEST(CurveText, IsPastedByTimeBetweenHopsAndNoFurtherThanItGoes) {
  const std::vector<CurveRow> rows = {{0.0, 100.0}, {0.02, 400.0}, {0.04, kNone}, {0.06, 200.0}};
  const double none = kNone, old = 300.0;
  const std::tuple<SampleCount, std::vector<int>, std::vector<double>> tests[] = {
      // A hop of 441 samples is 10 ms.
      {441, {0, 1, 2, 3, 4, 5, 6, 7, 8}, {100, 200, 400, 400, none, none, 200, old, old}},
      {441, {3, 4, 5, 6, 7, 8}, {old, old, old, 100, 200, 400, 400, none, none}},
      {441, {1, 3}, {old, 100, old, 400, old, old, old, old, old}},
      {1323, {0, 1, 2, 3}, {100, 400, 200, old, old, old, old, old, old}},
      {0, {0, 1}, {old, old, old, old, old, old, old, old, old}}};
  for (const auto& [hop, frames, expected] : tests) {
    FrqMap map = MapOf(std::vector<double>(9, old), hop);
    const std::vector<int> set = PasteRows(map, frames, rows, PasteAs::Curve, FrqTypeFrq);
    for (std::size_t i = 0; i < 9; ++i) {
      EXPECT_NEAR(map.Frames[i].Frequency, expected[i], 1e-9) << hop << " " << i;
      const bool isSet = std::find(set.begin(), set.end(), i) != set.end();
      EXPECT_EQ(isSet, expected[i] != old) << hop << " " << i;
    }
  }
  FrqMap map = MapOf({old, old, old}, 441);
  const std::vector<CurveRow> extremes = {{0.0, 1e6}, {0.01, 60.0}, {0.02, 100.5}};
  PasteRows(map, AllOf(map), extremes, PasteAs::Curve, FrqTypePmk);
  EXPECT_EQ(Values(map, &FrqFrame::Frequency), Json({882.0, none, 100.5})) << "the kind at work has its limits";
}

TEST(CurveText, ShapeComesToTheKeyOrToWhatWasThere) {
  const std::vector<CurveRow> rows = {{0.0, 400.0}, {0.01, 800.0}, {0.02, kNone}, {0.03, 200.0}};
  const std::pair<double, double> keysAndTops[] = {{200.0, 400.0}, {0.0, 600.0}};
  for (const auto& [key, top] : keysAndTops) {
    FrqMap map = MapOf({300.0, kNone, 300.0, 300.0, 120.0}, 441);
    map.Average = key;
    PasteRows(map, AllOf(map), rows, PasteAs::Shape, FrqTypeFrq);
    const std::vector<double> expected = {top / 2, top, kNone, top / 4, 120.0};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_NEAR(map.Frames[i].Frequency, expected[i], 1e-9) << key << " " << i;
  }
  FrqMap map = MapOf({kNone, kNone}, 441);
  map.Average = 0.0;
  PasteRows(map, AllOf(map), std::vector<CurveRow>{{0.0, 100.0}, {0.01, 400.0}}, PasteAs::Shape, FrqTypeFrq);
  EXPECT_NEAR(map.Frames[1].Frequency, 400.0, 1e-9) << "without either it stays where it was";
}

}  // namespace

// Curves as CSV and as PitchTier: out and in again bit for bit, as others write them, and files that are none.
#include <cmath>

#include "batch/curvecsv.h"
#include "batch/pitchtier.h"
#include "native/family.h"

namespace {

using testdata::Json;

// With levels that fall.
FrqMap CurveOf(const std::vector<double>& frequencies, SampleCount hop, double level = 100.0) {
  Json levels;
  for (std::size_t i = 0; i < frequencies.size(); ++i) levels.push_back(level / (static_cast<double>(i) + 3.0));
  return MapOf(frequencies, hop, levels);
}

// With stretches of every length without pitch, at both ends too.
FrqMap Sung(SampleCount frames, SampleCount hop) {
  std::vector<double> frequencies;
  for (int i = 0; i < frames; ++i) {
    const bool isVoiced = i > 2 && i < frames - 2 && i % 29 != 3 && i % 31 > 1 && i % 67 > 5;
    frequencies.push_back(isVoiced ? 220.0 * std::exp2(std::sin(i) / 3.0) : FrqNoPitch);
  }
  return CurveOf(frequencies, hop);
}

constexpr auto kFrequency = &FrqFrame::Frequency, kLevel = &FrqFrame::Amplitude;

// "time:hertz:level" of each point, or the fault.
std::string Shown(const CurveReading& reading) {
  std::string shown = TextOf(reading.Fault);
  for (const CurvePoint& point : reading.Points) {
    char buffer[96];
    snprintf(buffer, sizeof(buffer), point.Level ? "%g:%g:%g " : "%g:%g ", point.Seconds, point.Hz,
             point.Level.value_or(0.0));
    shown += buffer;
  }
  return shown;
}

TEST(CurveFiles, BringACurveBackBitForBit) {
  for (const SampleCount hop : {1, 100, 256, 441}) {
    const FrqMap source = Sung(500, hop);
    const std::vector<CurvePoint> points = CurvePointsOf(source);
    const std::string tier = PitchTier(points, SecondsOf(source));
    for (const CurveReading& reading : {ReadCurveCsv(CurveCsv(points)), ReadPitchTier(tier)}) {
      ASSERT_EQ(reading.Fault, CurveFault());
      FrqMap target = CurveOf(std::vector<double>(500, 300.0), hop, 7.0);
      EXPECT_EQ(LostIn(target, reading.Points, FrqTypeFrq), LostValues());
      EXPECT_EQ(LayOver(target, reading.Points, FrqTypeFrq), 500U);
      EXPECT_EQ(Values(target, kFrequency), Values(source, kFrequency)) << hop;
      const bool hasLevels = reading.Points[0].Level.has_value();
      const FrqMap levels = hasLevels ? source : CurveOf(std::vector<double>(500, 1.0), hop, 7.0);
      EXPECT_EQ(Values(target, kLevel), Values(levels, kLevel));
    }
    EXPECT_EQ(ReadCurveCsv(CurveCsv(points)).Points, points);
  }
  EXPECT_EQ(CurveCsv(CurvePointsOf(CurveOf({220.5, FrqNoPitch}, 441, 30.0))),
            "time,hertz,level\r\n0,220.5,10\r\n0.01,,7.5\r\n");
  EXPECT_EQ(PitchTier(CurvePointsOf(CurveOf({FrqNoPitch, 220.5}, 441)), 0.02),
            "File type = \"ooTextFile\"\nObject class = \"PitchTier\"\n\nxmin = 0 \nxmax = 0.02 \npoints: size = 1 \n"
            "points [1]:\n    number = 0.01 \n    value = 220.5 \n");
}

TEST(CurveFiles, ReadTablesAsSpreadsheetsWriteThem) {
  const std::pair<std::string, const char*> tests[] = {
      {"\xEF\xBB\xBFtime;hertz;level\r\n0;220,5;1,5\r\n\r\n0,01;;\r\n", "0:220.5:1.5 0.01:0 "},
      {"sep=;\nTime;Hertz\n0,5;1e2", "0.5:100 "},
      {"level\tnote\thz\ttime\r3\tA3\t220\t0,25\r4\tA4\t440\t0.5\r", "0.25:220:3 0.5:440:4 "},
      {"\"time\",\"hertz\"\n\"0,5\",\"220,25\"\n", "0.5:220.25 "},
      {"2,200\n1,100,5\n3,0,\n", "1:100:5 2:200 3:0 "},
      {"time,hertz\n+1,2,\n", "1:2 "},
      {"", "there is no row"},
      {"\xEF\xBB\xBF\r\n \t\n", "there is no row"},
      {"time,hertz,level\r\n", "there is no row"},
      {std::string("t\0i\0", 4), "this is no text in UTF-8"},
      {"\xFF\xFEt", "this is no text in UTF-8"},
      {"\n\nname,hertz\n0,1\n", "line 3: the heading has no column named time"},
      {"time,level\n0,1\n", "line 1: the heading has no column named hertz"},
      {"time,hertz\n0,220\n\n1\n", "line 4: a time and a frequency were expected"},
      {"0,01,220,5\n", "line 1: there are more columns than the heading names"},
      {"time,hertz\r\n0,01,220,5\r\n", "line 2: there are more columns than the heading names"},
      {"0,nan\n", "line 1: a number was expected"},
      {"0,220\n0,220 Hz\n", "line 2: a number was expected"},
      {"0,220\n,220\n", "line 2: a number was expected"},
      {"0,1e999\n", "line 1: a number was expected"},
      {"0;1.234,5\n", "line 1: a number was expected"},
      {"nan,220\n", "line 1: a number was expected"},
      {"time,hertz\n-0.1,220\n", "line 2: a number of 0 or more was expected"},
      {"time,hertz\n0,-220\n", "line 2: a number of 0 or more was expected"},
      {"time,hertz,level\n0,220,-1\n", "line 2: a number of 0 or more was expected"}};
  for (const auto& [file, shown] : tests) EXPECT_EQ(Shown(ReadCurveCsv(file)), shown) << testing::PrintToString(file);
}

TEST(CurveFiles, ReadPitchTiersInBothFormsAndNothingElse) {
  const std::string head = "File type = \"ooTextFile\"\nObject class = \"PitchTier\"\n\n";
  const std::pair<std::string, const char*> tests[] = {
      // By hand: straight on at both ends.
      {head + "xmin = 0 \nxmax = 2 \npoints: size = 2 \npoints [1]:\n    number = 0.5 \n    value = 100 \n"
              "points [2]:\n    number = 1 \n    value = 200 \n",
       "0:100 0.5:100 1:200 1.99999:200 "},
      {head + "0\r\n1.5\r\n1\r\n! one\r\n0.5\r\n100\r\n", "0:100 0.5:100 1.49999:100 "},
      {"\"ooTextFile short\"\r\"PitchTier\"\r0 3 2 3 300 1 100", "0:100 1:100 3:300 "},
      // In even steps: what is left out has no pitch.
      {head + "0 1 5 0.2 100 0.3 110 0.4 120 0.7 150 0.8 160",
       "0:0 0.1:0 0.2:100 0.3:110 0.4:120 0.5:0 0.6:0 0.7:150 0.8:160 0.9:0 "},
      {"", "there is no row"},
      {"File type = \"ooTextFile\"\nObject class = \"TextGrid\"\n0 1 0", "this is no PitchTier"},
      {"ooBinaryFile\x09PitchTier", "this is no PitchTier"},
      {"\"ooTextFile", "this is no PitchTier"},
      {"\xFE\xFF", "this is no text in UTF-8"},
      {head, "line 4: the number of points does not agree with the file"},
      {head + "0\n1\n0\n", "line 6: there is no row"},
      {head + "0\n1\n2\n0.5\n100\n", "line 9: the number of points does not agree with the file"},
      {head + "0\n1\n1\n0.5\n100\n0.6\n", "line 9: the number of points does not agree with the file"},
      {head + "0\n1\n1.5\n0.5\n100\n", "line 6: the number of points does not agree with the file"},
      {head + "0\n1\n-1\n", "line 6: the number of points does not agree with the file"},
      {head + "0\n1\n1e18\n", "line 6: the file has more rows than any map has frames"},
      {head + "0\n1\n1\n0.5\nvalue = 1.2.3\n", "line 8: a number was expected"},
      {head + "0\n1\n1\n0.5\n--undefined--\n", "line 8: a number was expected"},
      {head + "0\n1\n1\n-0.5\n100\n", "line 8: a number of 0 or more was expected"}};
  for (const auto& [file, shown] : tests) EXPECT_EQ(Shown(ReadPitchTier(file)), shown) << testing::PrintToString(file);
}

// Cut anywhere a table is read or refused, and a tier is refused until its last number begins.
TEST(CurveFiles, CutShortOrLongAreReadOrRefused) {
  const std::vector<CurvePoint> points = CurvePointsOf(Sung(40, 256));
  const std::string csv = CurveCsv(points), tier = PitchTier(points, 1.0);
  for (std::size_t size = 0; size < csv.size(); ++size) {
    const std::string cut = csv.substr(0, size);
    EXPECT_LE(ReadCurveCsv(std::string_view(cut)).Points.size(), points.size());
  }
  for (std::size_t size = 0; size < tier.rfind('=') + 2; ++size) {
    const std::string cut = tier.substr(0, size);
    EXPECT_NE(ReadPitchTier(std::string_view(cut)).Fault.Why, CurveFault::None) << cut;
  }
  std::string many;
  for (int i = 200'000; i > 0; --i) many.append(std::to_string(i)).append(",220\n");
  const CurveReading reading = ReadCurveCsv(many);
  ASSERT_EQ(reading.Points.size(), 200'000U);
  EXPECT_EQ(reading.Points.front().Seconds, 1.0);
  EXPECT_FALSE(MapOfPoints(reading.Points, FrqTypeFrq)) << "two days are no syllable";
}

TEST(CurveFiles, TellWhatAKindCannotHold) {
  const std::vector<CurvePoint> points = {{0.0, 0.0, 1.0},    {0.01, 54.0, 2.0},   {0.02, 80.0, {}},
                                          {0.03, 900.0, 4.0}, {0.04, 9000.0, 5.0}, {0.05, 9000.0, 6.0}};
  const FrqMap before = CurveOf({1, 300, 300, 300, 300}, 441);
  const std::tuple<FrqType, LostValues, std::vector<double>> tests[] = {
      {FrqTypeFrq, {1, 1, 0, 1}, {FrqNoPitch, FrqNoPitch, 80.0, 900.0, MaxFrequencyOfKind(FrqTypeFrq)}},
      {FrqTypeDio, {1, 1, 4, 1}, {FrqNoPitch, FrqNoPitch, 80.0, 900.0, MaxFrequencyOfKind(FrqTypeFrq)}},
      {FrqTypePmk, {2, 2, 4, 1}, {FrqNoPitch, FrqNoPitch, FrqNoPitch, 882.0, 882.0}}};
  for (const auto& [kind, lost, frequencies] : tests) {
    FrqMap map = before;
    EXPECT_EQ(LostIn(map, points, kind), lost) << kind;
    LayOver(map, points, kind);
    EXPECT_EQ(Values(map, kFrequency), Json(frequencies)) << kind;
    const bool takesLevels = kind == FrqTypeFrq;
    EXPECT_EQ(Values(map, kLevel), takesLevels ? Json({1.0, 2.0, 3.0, 4.0, 5.0}) : Values(before, kLevel)) << kind;
  }
}

TEST(CurveFiles, LieWhereTheirTimesAre) {
  const std::vector<CurvePoint> points = {{0.015, 200.0, {}}, {0.035, 400.0, {}}};
  FrqMap map = CurveOf(std::vector<double>(6, 300.0), 441);
  EXPECT_EQ(LayOver(map, points, FrqTypeFrq), 2U);
  const std::vector<double> expected = {300.0, 300.0, 200.0 * std::exp2(0.25), 200.0 * std::exp2(0.75), 300.0, 300.0};
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(map.Frames[i].Frequency, expected[i], 1e-9) << i;
  const FrqMap source = Sung(100, 256);
  const std::optional<FrqMap> made = MapOfPoints(CurvePointsOf(source), FrqTypeFrq);
  ASSERT_TRUE(made);
  EXPECT_EQ(Values(*made, kFrequency), Values(source, kFrequency));
  EXPECT_EQ(made->Hop, 256);
  EXPECT_NEAR(made->Average, source.ComputeAverage(-1), 1e-9);
  EXPECT_EQ(MapOfPoints(points, FrqTypePmk, 30)->FrameCount, 30);
  FrqMap broken = CurveOf({300.0, 300.0}, 441);
  broken.Hop = 0;
  EXPECT_EQ(LayOver(broken, points, FrqTypeFrq), 0U);
  EXPECT_EQ(CurvePointsOf(broken).size(), 0U);
}

}  // namespace

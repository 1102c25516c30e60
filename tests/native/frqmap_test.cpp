// The map in memory: what no vector holds, edits and copies, odd projects, and names in code page 932.
#include "frqmap/frqmap.h"

#include <limits>

#include "frqmap/mapediting.h"
#include "frqmap/mapkind.h"
#include "frqmap/vsproject.h"
#include "native/family.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(FrqMap, UnusualMapsHaveAnAverageToo) {
  FrqMap map = MapOf(std::vector<double>(400000, 440.0));
  EXPECT_DOUBLE_EQ(map.ComputeAverage(2), 440.0) << "a sum beyond 32 bits";
  EXPECT_EQ(MapOf({kInfinity, kInfinity}).ComputeAverage(2), kInfinity) << "overflows nothing";
  map = MapOf({440.0, 440.0 * std::pow(2.0, 4.0000001 / 12.0)});
  EXPECT_DOUBLE_EQ(map.ComputeAverage(2), 261.6255653005986) << "a frame on the edge of the window is outside";
}

TEST(FrqMap, AFrequencyGoesIntoTheProjectThatItComesFrom) {
  FrqMap map = MapOf({100.0, 100.0}, 10);
  for (const int expected : {0, 6900}) {
    map.HasProject = expected > 0;
    map.Project.Items.resize(1);
    map.Project.ControlPoints = {std::vector<VsControlPoint>(2)};
    map.SetFrequency(10, 440.0);
    EXPECT_EQ(map.Project.ControlPoints[0][1].Pitch, expected);
  }
}

TEST(FrqMap, ASelectionFromOutsideTheMapEndsAtItsBorder) {
  FrqMap map = MapOf({100.0, 100.0, 100.0}, 10);
  map.SelectRange(-10, 25, true);
  EXPECT_EQ(Flags(map, &FrqFrame::Selected), "100") << "a range from before the map";
  map.Hop = 0;
  map.SelectRange(0, 25, true);
  EXPECT_EQ(Flags(map, &FrqFrame::Selected), "100") << "a map without a time axis";
  FrqMap().SelectRange(0, 25, true);
}

TEST(FrqMap, ATakenSuggestionSaysWhetherAFrameHasAPitch) {
  FrqMap map = MapOf({200.0, 55.0, 200.0});
  for (const auto& [i, suggestion] : {std::pair(0u, FrqNoPitch), {1u, 300.0}, {2u, 0.0}}) {
    FrqFrame& frame = map.Frames.Own()[i];
    frame.Mark = 1;
    frame.SuggestedFrequency = suggestion;
    frame.Voiced = frame.Frequency > FrqNoPitch;
  }
  map.ApplyMarks(-1, true);
  EXPECT_EQ(Values(map, &FrqFrame::Frequency), testdata::Json({55.0, 300.0, 200.0}));
  EXPECT_EQ(Flags(map, &FrqFrame::Voiced), "011");
  EXPECT_EQ(Flags(map, &FrqFrame::Mark), "001") << "nothing was suggested there";
}

TEST(FrqMap, AnyDifferenceThatWouldBeSavedIsSeen) {
  const FrqMap map = MapOf({100.0, 200.0});
  void (*const changes[])(FrqMap&) = {[](FrqMap& m) { m.Loaded = false; },
                                      [](FrqMap& m) { m.Average = 1.0; },
                                      [](FrqMap& m) { m.Hop = 255; },
                                      [](FrqMap& m) { m.Frames.Own()[1].Amplitude = 0.5; },
                                      [](FrqMap& m) { m.Frames.Own()[1].Frequency = kNan; },
                                      [](FrqMap& m) { m.Frames.Own().pop_back(); }};
  FrqMap other = map;
  other.Frames.Own()[1].Selected = true;
  EXPECT_TRUE(map.Equals(other)) << "which is not saved";
  for (const auto change : changes) {
    other = map;
    change(other);
    EXPECT_FALSE(map.Equals(other) || other.Equals(map));
  }
}

TEST(FrqMap, ACopyStandsForItselfWithItsOwnRange) {
  FrqMap copy = MapOf({100.0});
  FrqMap map = MapOf({150.0, 55.0, 300.0});
  map.CopyTo(copy);
  EXPECT_TRUE(copy.Equals(map) && copy.MinFrequency == 150.0 && copy.MaxFrequency == 300.0);
  copy.SetFrequency(0, 400.0);
  EXPECT_EQ(map.FrequencyAt(0), 150.0);
  FrqMap().CopyTo(copy);
  EXPECT_TRUE(copy.FrameCount == 0 && copy.MinFrequency == 999999.0 && copy.MaxFrequency == 55.0);
}

// As a table without a document writes.
TEST(DirectEditing, WritesIntoTheMapOfItsStrokeAlone) {
  FrqMap map = MapOf({100.0, 200.0, 300.0}), other = map;
  DirectEditing editing;
  const auto written = [&](FrqMap& in, double hz) { return editing.SetFrequency(in, 1, hz) + editing.SetKey(in, hz); };
  EXPECT_EQ(written(map, 500.0), 0);
  editing.BeginStroke(map, StrokeKind::Draw);
  EXPECT_EQ(std::pair(written(map, 400.0), written(other, 500.0)), std::pair(2, 0));
  editing.EndStroke();
  EXPECT_EQ(written(map, 500.0), 0);
  EXPECT_EQ(Values(map, &FrqFrame::Frequency), testdata::Json({100.0, 400.0, 300.0}));
  EXPECT_EQ(map.Average, 400.0);
  editing.Select(map, std::vector{-1, 2, 3});
  EXPECT_EQ(Flags(map, &FrqFrame::Selected), "001") << "there are no others";
  editing.SelectRange(map, 0, 1);
  EXPECT_EQ(Flags(map, &FrqFrame::Selected), "110");
  editing.Flatten(map, 150.0);
  EXPECT_EQ(Values(map, &FrqFrame::Frequency), testdata::Json({150.0, 150.0, 150.0}));
  EXPECT_EQ(std::pair(map.Average, Flags(map, &FrqFrame::Selected)), std::pair(150.0, std::string("000")));
}

TEST(MapKinds, StandInTheOrderInWhichUsersChoose) {
  int place = 0;
  for (const FrqType kind : {FrqTypeFrq, FrqTypeFrc, FrqTypeVs4ufrq, FrqTypePmk, FrqTypeDio, FrqTypeMrq}) {
    EXPECT_EQ(FindMapKind(kind)->Place, place++) << kind;
  }
}

TEST(VsProject, WhatALibraryMayTellHarmsNobody) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  VsProject refusedPoints = ProjectOf(44100, 200, {{6900, 1, 0.5}});
  refusedPoints.Items[0].PointCount = 300;
  VsProject emptyClaim = refusedPoints;
  emptyClaim.Items[0].PointCount = VsMostPoints;
  const std::tuple<const char*, VsProject, bool, bool, bool> tests[] = {
      {"no item", VsProject(), false, false, false},
      {"no rate", ProjectOf(0, 200, {{6900, 1, 0.5}}), true, false, false},
      {"no points per second", ProjectOf(44100, 0, {{6900, 1, 0.5}}), true, false, true},
      {"more frames than memory", ProjectOf(kMost, 1, {{0, 0, 0.5}}), true, false, true},
      {"periods of no length", ProjectOf(44100, 200, {{kMost, 1, 0.5}}), true, true, false},
      {"fewer points than counted", refusedPoints, true, true, true},
      {"next to none of many points", emptyClaim, false, false, true}};
  for (const auto& [what, odd, isMap, hasGrid, hasPeriods] : tests) {
    EXPECT_EQ(ResampledMap(odd, FrqTypeDio).has_value(), hasGrid) << what;
    EXPECT_EQ(PmkOfProject(odd).has_value(), hasPeriods) << what;
    EXPECT_EQ(MapOfProject(odd).has_value(), isMap) << what;
  }
  VsProject project = ProjectOf(44100, 200, {{6000, 1, 0.5}});
  FrqMap noHop = MapOf({FrqNoPitch}, 0);
  noHop.Average = 440.0;
  EXPECT_TRUE(SampleOntoProject(noHop, project)) << "no point has a frame, so that all take the average";
  EXPECT_EQ(project.ControlPoints[0][0].Pitch, 6900);
  EXPECT_EQ(project.ControlPoints[0][0].HasPitch, 0);
  EXPECT_EQ(VsProject().AverageCents(), 6000);
  for (const FrqType kind : {FrqTypeFrq, FrqTypeFrc, FrqTypeDio, FrqTypeMrq}) {
    EXPECT_EQ(ResampledMap(project, kind)->Hop, 256) << kind;
  }
}

}  // namespace

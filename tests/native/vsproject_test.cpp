// The data of a project as no sound library would tell them.
#include "frqmap/vsproject.h"

#include <limits>

#include "native/family.h"

namespace {

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
      {"next to none of many points", emptyClaim, false, false, true},
  };
  for (const auto& [what, odd, isMap, hasGrid, hasPeriods] : tests) {
    EXPECT_EQ(ResampledMap(odd, FrqTypeDio).has_value(), hasGrid) << what;
    EXPECT_EQ(PmkOfProject(odd).has_value(), hasPeriods) << what;
    EXPECT_EQ(MapOfProject(odd).has_value(), isMap) << what;
  }
  VsProject project = ProjectOf(44100, 200, {{6000, 1, 0.5}});
  FrqMap noHop;
  noHop.Create(1, FrqTypeFrq);
  noHop.Hop = 0;
  noHop.Average = 440.0;
  EXPECT_TRUE(SampleOntoProject(noHop, project)) << "no point has a frame, so that all take the average";
  EXPECT_EQ(project.ControlPoints[0][0].Pitch, 6900);
  EXPECT_EQ(project.ControlPoints[0][0].HasPitch, 0);
  EXPECT_EQ(VsProject().AverageCents(), 6000);
}

}  // namespace

// The data of a project as no sound library would tell them.
#include "frqmap/vsproject.h"

#include <gtest/gtest.h>

#include <limits>

#include "native/family.h"

namespace {

TEST(VsProject, WhatALibraryMayTellHarmsNobody) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  VsProject refusedPoints = ProjectOf(44100, 200, {{6900, 1, 0.5}});
  refusedPoints.Items[0].PointCount = 300;
  const struct {
    const char* what;
    VsProject project;
    bool isMap, hasGrid, hasPeriods;
  } tests[] = {
      {"no item", VsProject(), false, false, false},
      {"no rate", ProjectOf(0, 200, {{6900, 1, 0.5}}), true, false, false},
      {"no points per second", ProjectOf(44100, 0, {{6900, 1, 0.5}}), true, false, true},
      {"more frames than memory", ProjectOf(kMost, 1, {{0, 0, 0.5}}), true, false, true},
      {"periods of no length", ProjectOf(44100, 200, {{kMost, 1, 0.5}}), true, true, false},
      {"an endless period", ProjectOf(44100, 200, {{-kMost, 1, 0.5}}), true, true, true},
      {"fewer points than counted", refusedPoints, true, true, true},
  };
  for (const auto& test : tests) {
    EXPECT_EQ(ResampledMap(test.project, FrqTypeDio).has_value(), test.hasGrid) << test.what;
    EXPECT_EQ(PmkOfProject(test.project).has_value(), test.hasPeriods) << test.what;
    std::optional<FrqMap> map = MapOfProject(test.project);
    ASSERT_EQ(map.has_value(), test.isMap) << test.what;
    if (map) map->SetFrequency(map->FrameCount - 1, 440.0);
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

// The data of a project without its library: what becomes of it as a map, as periods, and under a map.
#include "frqmap/vsproject.h"

#include <gmock/gmock.h>

#include <limits>

#include "frqmap/frqmap.h"
#include "native/vectors.h"

namespace {

using testing::DoubleEq;
using testing::Pointwise;
using vectors::Json;

VsProject ProjectOf(std::int32_t rate, std::int32_t pointsPerSecond, const Json& points) {
  VsProject project;
  project.ProjectInfo.SampleRate = rate;
  project.Items.resize(1);
  project.Items[0].PointsPerSecond = pointsPerSecond;
  project.Items[0].PointCount = static_cast<std::int32_t>(points.size());
  project.ControlPoints.resize(1);
  for (const Json& values : points) {
    project.ControlPoints[0].push_back({.Dynamics = values[2], .Pitch = values[0], .HasPitch = values[1]});
  }
  return project;
}

void ExpectFrames(const FrqMap& map, const Json& expected) {
  std::vector<double> frequencies, amplitudes;
  for (const FrqFrame& frame : map.Frames) {
    frequencies.push_back(frame.Frequency);
    amplitudes.push_back(frame.Amplitude);
  }
  EXPECT_THAT(frequencies, Pointwise(DoubleEq(), vectors::Numbers(expected["frequency"])));
  EXPECT_THAT(amplitudes, Pointwise(DoubleEq(), vectors::Numbers(expected["amplitude"])));
}

void ExpectPeriods(ByteSpan file, const Json& expected) {
  ASSERT_EQ(file.size(), expected["size"]);
  if (!expected.contains("file")) return;
  const Bytes wanted = vectors::FileBytes(expected["file"]);
  const auto mean = [](ByteSpan bytes) { return ByteReader(bytes.subspan(2)).Read<double>(); };
  EXPECT_DOUBLE_EQ(mean(file), mean(wanted));
  EXPECT_TRUE(std::equal(file.begin() + 10, file.end(), wanted.begin() + 10));
}

void ExpectImport(VsProject project, const Json& import) {
  FrqMap map;
  map.Create(static_cast<SampleCount>(import["frequency"].size()), FrqTypeFrq);
  map.Hop = import["hop"];
  map.Average = import["average"];
  for (std::size_t i = 0; i < map.Frames.size(); ++i) {
    map.Frames[i].Frequency = import["frequency"][i];
    map.Frames[i].Amplitude = import["amplitude"][i];
  }
  ASSERT_TRUE(SampleOntoProject(map, project));
  for (std::size_t i = 0; i < project.ControlPoints[0].size(); ++i) {
    const VsControlPoint& point = project.ControlPoints[0][i];
    const Json& wanted = import["points"][i];
    EXPECT_TRUE(wanted[0].is_null() || wanted[0] == point.Pitch) << i;
    EXPECT_EQ(point.HasPitch, wanted[1]) << i;
    EXPECT_DOUBLE_EQ(point.Dynamics, wanted[2]) << i;
  }
}

TEST(VsProject, ProjectsBecomeMapsAndMapsProjects) {
  const Json cases = Json::parse(vectors::OpenData("vs.json"))["vs"];
  for (const Json& test : cases) {
    SCOPED_TRACE(test["case"]);
    const VsProject project = ProjectOf(test["rate"], test["points_per_second"], test["points"]);
    EXPECT_EQ(project.AverageCents(), test["average_cents"]);
    const FrqMap map = MapOfProject(project).value();
    ExpectFrames(map, test["load"]);
    std::string voiced;
    for (const FrqFrame& frame : map.Frames) voiced += frame.Voiced ? '1' : '0';
    EXPECT_EQ(voiced, test["load"]["voiced"]);
    const FrqMap resampled = ResampledMap(project, FrqTypeFrq).value();
    EXPECT_DOUBLE_EQ(resampled.Average, test["export_map"]["average"]);
    ExpectFrames(resampled, test["export_map"]);
    ExpectPeriods(PmkOfProject(project).value(), test["export_pmk"]);
    for (const Json& import : test["import_map"]) ExpectImport(project, import);
  }
}

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
    VsProject copy = test.project;
    FrqMap noTimeAxis;
    noTimeAxis.Hop = 0;
    EXPECT_FALSE(SampleOntoProject(noTimeAxis, copy)) << test.what;
  }
  EXPECT_EQ(VsProject().AverageCents(), 6000);
}

}  // namespace

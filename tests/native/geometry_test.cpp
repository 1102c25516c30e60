// The frequency table's mapping of pixels, frames and frequencies.
#include "frqctrl/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;

constexpr int kMost = std::numeric_limits<int>::max();

json Vectors(const char* key) {
  return json::parse(std::ifstream(MARLIT_TEST_DATA "/control.json")).at(key);
}

TableGeometry GeometryOf(const json& row) {
  const json& plot = row["plot"];
  return {.PlotRect = {plot[0], plot[1], plot[2], plot[3]},
          .Zoom = row["zoom"],
          .DpiScaleX = row["dpi_x"],
          .DpiScaleY = row["dpi_y"],
          .BottomNote = row["bottom_note"],
          .ScrollColumn = row["scroll"],
          .ThumbnailMode = row["thumbnail"]};
}

TEST(TableGeometryTest, MouseAndPictureAgreeWithTheKnownTables) {
  for (const json& row : Vectors("control")) {
    const TableGeometry table = GeometryOf(row);
    SCOPED_TRACE("zoom " + std::to_string(table.Zoom) + " dpi " + std::to_string(table.DpiScaleX));
    EXPECT_EQ(table.ColumnWidth(), row["column_width"]);
    EXPECT_EQ(table.RowHeight(), row["row_height"]);
    for (const json& point : row["frequency_to_y"]) {
      EXPECT_EQ(table.FrequencyToY(point["frequency"], table.PlotRect.bottom), point["y"]) << point;
    }
    const StrokeLimits limits{row["upper"], row["lower"]};
    for (const json& point : row["y_to_frequency"]) {
      const double hz = point["frequency"];
      EXPECT_NEAR(table.YToFrequency(point["y"], limits, row["single"]), hz, hz * 1e-12) << point;
    }
    for (const json& point : row["x_to_column"]) {
      EXPECT_EQ(table.XToColumn(point["x"], true, row["frames"]), point["strict"]) << point;
      EXPECT_EQ(table.XToColumn(point["x"], false, row["frames"]), point["loose"]) << point;
    }
  }
}

TEST(TableGeometryTest, ThumbnailsHoldTheWholeMap) {
  for (const json& row : Vectors("fit_size")) {
    const PixelSize size = ThumbnailClientSize(row["frames"], row["dpi"], row["dpi"]);
    EXPECT_EQ(json::array({size.width, size.height}), row["size"]) << row;
  }
}

TEST(TableGeometryTest, EveryColumnIsHitWhereItIsDrawn) {
  for (int zoom = 0; zoom < kZoomCount; ++zoom) {
    const TableGeometry table{.PlotRect = {17, 0, 217, 100}, .Zoom = zoom, .ScrollColumn = 30};
    SampleCount expected = 30;
    table.WalkColumns([&](std::int64_t column, double x) {
      EXPECT_EQ(column, expected);
      EXPECT_EQ(table.XToColumn(static_cast<int>(x), true, 1000), column);
      EXPECT_EQ(table.XToColumn(static_cast<int>(x) - 1, false, 1000), column - 1);
      ++expected;
      return true;
    });
    EXPECT_EQ(expected - 1, table.XToColumn(216, true, 1000)) << "the plot's last column";
  }
}

TEST(TableGeometryTest, AStrokeOutsideTheLimitsGivesNoPitchOrTheHighest) {
  const TableGeometry table{.PlotRect = {0, 0, 100, 400}, .Zoom = 1};
  struct {
    int y;
    StrokeLimits limits;
    double expected;
  } const rows[] = {
      {400, {}, 55.0},
      {400, {7902.0, 88.2}, 55.0},
      {-100000, {}, 7902.132820097988},
      {kMost, {}, 55.0},
      {-kMost, {882.0, 55.0}, 882.0},
      {400, {40.0, 88.2}, 40.0},  // crossed limits: the upper one has the last word
  };
  for (const auto& row : rows) EXPECT_NEAR(table.YToFrequency(row.y, row.limits, false), row.expected, 1e-9) << row.y;
}

TEST(TableGeometryTest, NonsenseFromAFileStaysFarOutsideThePlot) {
  const TableGeometry table{.PlotRect = {0, 0, 100, 400}, .Zoom = 6};
  for (const double hz : {std::numeric_limits<double>::infinity(), std::nan(""), -1.0, 1e300}) {
    EXPECT_EQ(table.FrequencyToY(hz, 400), -kFarthestPixel) << hz;
  }
  EXPECT_EQ(table.FrequencyToY(0.0, 400), kFarthestPixel);
  EXPECT_GT(table.FrequencyToY(1e12, 400), -kFarthestPixel) << "every pitch has a place of its own";
}

TEST(TableGeometryTest, AViewScrolledAnywhereEnds) {
  const TableGeometry table{.PlotRect = {10, 0, 50, 9}, .ScrollColumn = kMost - 2};
  std::int64_t last = 0;
  table.WalkColumns([&](std::int64_t column, double) {
    last = column;
    return true;
  });
  EXPECT_EQ(last, std::int64_t{kMost} + 17);
  EXPECT_EQ(table.XToColumn(kMost, false, 5), kMost);
  EXPECT_EQ(table.XToColumn(11, true, 5), -1);

  const TableGeometry before{.PlotRect = {10, 0, 50, 9}, .ScrollColumn = -3};
  EXPECT_EQ(before.XToColumn(15, true, 5), -1) << "the half column left of frame 0 is not frame 0";
  EXPECT_EQ(before.XToColumn(16, true, 5), 0);

  const TableGeometry empty{.PlotRect = {50, 9, 10, 0}};
  empty.WalkColumns([](std::int64_t, double) { return ADD_FAILURE() << "a plot without width has no column", true; });
}

}  // namespace

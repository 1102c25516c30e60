// What the frequency table shows: where it scrolls to, what a point of it belongs to, what it refuses.
#include "frqctrl/tablemodel.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace {

constexpr int kFrames = 60;

struct TableModelTest : testing::Test {
  TableModelTest() {
    map.Create(kFrames, FrqTypeFrq);
    map.Loaded = true;
    table.SetMaps(nullptr, &map);
    table.SetZoom(3);  // columns and rows of 10 pixels
    table.Geometry.PlotRect = {20, 0, 220, 300};
    table.HoldAverageAt(0, 100);
  }
  FrqMap map;
  TableModel table;
};

TEST_F(TableModelTest, APointBelongsToTheGripOrToAColumnOfTheMap) {
  // x, y, place, column
  const std::tuple<int, int, int, SampleCount> rows[] = {
      {19, 97, TableSpot::Grip, -1},    {19, 103, TableSpot::Nothing, -1}, {20, 97, TableSpot::Plot, 0},
      {219, 299, TableSpot::Plot, 19},  {220, 0, TableSpot::Nothing, -1},  {0, 96, TableSpot::Nothing, -1},
      {25, 300, TableSpot::Nothing, 0},
  };
  for (const auto& [x, y, place, column] : rows) {
    const TableSpot spot = table.SpotAt(x, y);
    EXPECT_EQ(std::tuple(int{spot.Place}, spot.Column), std::tuple(place, column)) << x << " " << y;
  }
  EXPECT_EQ((std::array{table.NearestColumn(-99), table.NearestColumn(45), table.NearestColumn(9999)}),
            (std::array{0, 2, kFrames - 1}));
  map.DerivedAverage = true;
  EXPECT_EQ(table.SpotAt(19, 97).Place, TableSpot::Nothing) << "a derived average cannot be taken hold of";
  table.SetMaps(nullptr, nullptr);
  EXPECT_EQ(table.SpotAt(30, 50).Column, -1);
  EXPECT_EQ(table.NearestColumn(30), -1);
}

TEST_F(TableModelTest, TheViewStaysWithinTheMapAndTheNotes) {
  table.Geometry.ScrollColumn = std::numeric_limits<SampleCount>::max();
  table.ScrollColumnsByWheel(-32000);
  EXPECT_EQ(table.Geometry.ScrollColumn, kFrames - 1);
  table.ScrollNotesByWheel(32000);
  EXPECT_EQ(std::pair(table.Geometry.BottomNote, table.VerticalPosition()), std::pair(kTopNote, 0));

  // 20 columns are in view. Column asked for, first column in view, first column then.
  const std::tuple<SampleCount, SampleCount, std::optional<SampleCount>> rows[] = {
      {14, 10, std::nullopt}, {26, 10, std::nullopt}, {13, 10, 10}, {27, 10, 10}, {9, 10, 7}, {30, 10, 12}, {1, 10, -1},
  };
  for (const auto& [column, first, expected] : rows) {
    EXPECT_EQ(table.FirstColumnToShow(column, first), expected) << column;
  }
}

}  // namespace

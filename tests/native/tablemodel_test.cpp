// The view of the frequency table: where it scrolls to, what a point of it belongs to, what it refuses.
#include "frqctrl/tablemodel.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <utility>

#include "base/note.h"
#include "frqctrl/tablereading.h"

namespace {

constexpr int kFrames = 60;

struct TableModelTest : testing::Test {
  TableModelTest() {
    map.Create(kFrames, FrqTypeFrq);
    map.Loaded = true;
    table.SetMaps(nullptr, &map);
    table.SetZoom(3);  // columns and rows of 10 pixels
    table.Geometry.PlotRect = {20, 0, 220, 300};
    table.HoldKeyLineAt(0, 100);
  }
  FrqMap map;
  TableModel table;
};

TEST_F(TableModelTest, APlaceIsReadAsThePencilsPitchAndTheFrameInItsColumn) {
  FrqFrame& frame = map.Frames.Own()[4];
  frame.Frequency = NoteToHz(68.6);
  frame.Amplitude = 3276.8;
  frame.Mark = 7;
  frame.SuggestedFrequency = NoteToHz(57.25);
  map.Hop = 256;
  const int y = table.Geometry.FrequencyToY(NoteToHz(40.0), 300);
  const auto read = ReadTable(table, 65, y);
  ASSERT_TRUE(read && read->Pointer && read->Frame && read->Frame->Pitch && read->Frame->Suggested);
  const auto note = [](const auto& pitch) { return std::pair(pitch->Note, pitch->Cents); };
  EXPECT_EQ(note(read->Pointer), std::pair(40, 10)) << "to the pixel, of which a semitone has ten";
  EXPECT_EQ(note(read->Frame->Pitch), std::pair(69, -40));
  EXPECT_EQ(note(read->Frame->Suggested), std::pair(57, 25));
  EXPECT_EQ(std::tuple(read->Frame->Frame, read->Frame->Position, read->Frame->Mark), std::tuple(4, 1024, 7u));
  EXPECT_NEAR(read->Frame->Level.value(), -20.0, 1e-9);
  const auto silent = ReadTable(table, 45, y);
  EXPECT_TRUE(silent && silent->Frame && !silent->Frame->Pitch && !silent->Frame->Level) << "no pitch, no level";
  EXPECT_FALSE(ReadTable(table, 19, 97)) << "the grip is no place of the plot";
  map.Clear();
  EXPECT_FALSE(ReadTable(table, 65, y).value().Frame);
}

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

  for (const int notch : {1, -2}) {
    table.ScrollNotesByWheel(notch * 120);
    table.ScrollColumnsByWheel(notch * 120);
  }
  EXPECT_EQ(std::pair(table.Geometry.BottomNote, table.Geometry.ScrollColumn), std::pair(kTopNote - 2, kFrames - 1));
  table.ScrollColumnsByWheel(120);
  EXPECT_EQ(table.Geometry.ScrollColumn, kFrames - 5);

  // 20 columns are in view. Column asked for, first column in view, first column then.
  const std::tuple<SampleCount, SampleCount, std::optional<SampleCount>> rows[] = {
      {14, 10, std::nullopt}, {26, 10, std::nullopt}, {13, 10, 10}, {27, 10, 10}, {9, 10, 7}, {30, 10, 12}, {1, 10, -1},
  };
  for (const auto& [column, first, expected] : rows) {
    EXPECT_EQ(table.FirstColumnToShow(column, first), expected) << column;
  }
}

TEST_F(TableModelTest, AStretchComesIntoViewWithWhatIsAheadOfIt) {
  // Twenty columns and thirty notes are in view, from column 20 and note 60 on. A stretch, the note of its first frame,
  // and where the view begins then.
  const std::tuple<SampleCount, SampleCount, double, SampleCount, int> rows[] = {
      {20, 25, 0.0, 20, 60}, {19, 25, 0.0, 14, 60},  {30, 39, 0.0, 20, 60},  {31, 40, 0.0, 26, 60},
      {25, 99, 0.0, 20, 60}, {30, 99, 0.0, 25, 60},  {2, 3, 0.0, 0, 60},     {22, 22, 89.5, 20, 60},
      {22, 23, 90.5, 20, 75}, {22, 23, 60.1, 20, 60}, {22, 23, 59.5, 20, 44}, {22, 23, 35.0, 20, 24}};
  for (const auto& [first, last, note, column, bottom] : rows) {
    map.Create(kFrames, FrqTypeFrq);
    map.Frames.Own()[static_cast<std::size_t>(first)].Frequency = note > 0.0 ? NoteToHz(note) : FrqNoPitch;
    table.Geometry.ScrollColumn = 20;
    table.Geometry.BottomNote = 60;
    EXPECT_EQ(table.ScrollToFrames(first, last), column != 20 || bottom != 60) << first << " " << note;
    EXPECT_EQ(std::pair(table.Geometry.ScrollColumn, table.Geometry.BottomNote), std::pair(column, bottom))
        << first << " " << note;
  }
}

TEST_F(TableModelTest, WhatCannotBeShownIsRefused) {
  EXPECT_TRUE(table.SetViewMode(0) && table.SetViewMode(1) && table.SetBrightness(-3) && table.SetBrightness(3) &&
              table.SetColorTable(0) && table.SetColorTable(5));
  EXPECT_FALSE(table.SetViewMode(-1) || table.SetViewMode(2) || table.SetBrightness(-4) || table.SetBrightness(4) ||
               table.SetColorTable(-1) || table.SetColorTable(6));
  EXPECT_EQ(std::tuple(table.ViewMode, table.Brightness, table.ColorTable), std::tuple(1, 3, 5));
  const double highest = 882.0, lowest = 88.2;
  table.SetLimits(&highest, nullptr);
  table.SetLimits(nullptr, &lowest);
  EXPECT_EQ(std::pair(table.Limits.UpperLimit, table.Limits.LowerLimit), std::pair(highest, lowest));
  map.Hop = 77;
  EXPECT_EQ(table.ColumnHop(), 77.0);
  table.SetMaps(nullptr, nullptr);
  EXPECT_EQ(table.ColumnHop(), 256.0);
  table.Kind = FrqTypeVs4ufrq;
  EXPECT_EQ(table.ColumnHop(), 220.5);
}

TEST_F(TableModelTest, AViewForTheCurveHoldsAllOfItAsLargeAsItCan) {
  EXPECT_FALSE(table.Fit() || table.Centre()) << "there is no curve";
  for (int i = 10; i < 50; ++i) map.Frames.Own()[static_cast<std::size_t>(i)].Frequency = NoteToHz(60.0 + i % 5);
  ASSERT_TRUE(table.Fit());
  EXPECT_EQ(table.Geometry.Zoom, 1) << "forty columns of four pixels in two hundred";
  const auto seen = [&](double note) { return table.Geometry.FrequencyToY(NoteToHz(note), 300); };
  EXPECT_EQ(table.Geometry.ScrollColumn, 5);
  EXPECT_NEAR((seen(60) + seen(64)) / 2, 150, 5);

  map.Frames.Own()[59].Frequency = NoteToHz(110.0);
  ASSERT_TRUE(table.Fit());
  EXPECT_EQ(table.Geometry.Zoom, 1) << "fifty columns, and rows of five pixels for fifty notes";
  EXPECT_TRUE(seen(60) < 300 && seen(110) > 0);
  map.Frames.Own()[49].Frequency = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(table.Fit() && table.Geometry.Zoom == 1) << "what is no pitch does not count";

  for (const int i : {30, 31}) map.Frames.Own()[static_cast<std::size_t>(i)].Selected = true;
  table.SetZoom(5);
  ASSERT_TRUE(table.Centre());
  EXPECT_EQ(table.Geometry.Zoom, 5);
  EXPECT_EQ(table.Geometry.ScrollColumn, 26) << "ten columns of twenty pixels about the selection";
  EXPECT_NEAR(seen(60.5), 150, 10);
}

TEST_F(TableModelTest, AZoomInPlaceKeepsTheMiddleOfTheSelectionWhereItIs) {
  for (FrqFrame& frame : map.Frames.Own()) frame.Frequency = NoteToHz(69.0);
  map.Frames.Own()[30].Selected = true;
  table.Geometry.ScrollColumn = 20;
  table.Geometry.BottomNote = 60;
  const auto place = [&] {
    return std::pair(20 + (30.5 - table.Geometry.ScrollColumn) * table.Geometry.ColumnWidth(),
                     static_cast<double>(table.Geometry.FrequencyToY(NoteToHz(69.0), 300)));
  };
  for (const bool down : {false, false, false, true, true, true, true}) {
    const auto [x, y] = place();
    ASSERT_TRUE(table.ZoomInPlace(down));
    EXPECT_NEAR(place().first, x, table.Geometry.ColumnWidth() / 2 + 1) << table.Geometry.Zoom;
    EXPECT_NEAR(place().second, y, table.Geometry.RowHeight() / 2 + 1) << table.Geometry.Zoom;
    EXPECT_TRUE(std::exchange(table.FollowsCurve, false));
  }
  for (FrqFrame& frame : map.Frames.Own()) frame = {};
  const auto middle = [&] { return table.Geometry.ScrollColumn + 100.0 / table.Geometry.ColumnWidth(); };
  const double before = middle();
  ASSERT_TRUE(table.ZoomInPlace(false));
  EXPECT_NEAR(middle(), before, 1.0) << "without a curve the middle of the view stays";
  table.SetZoom(kZoomCount - 1);
  EXPECT_FALSE(table.ZoomInPlace(false));
}

}  // namespace

// Places on the screen: the table's mapping of pixels, frames and frequencies, and the rows of the thumbnails.
#include "frqctrl/geometry.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "dialogs/thumbnaillayout.h"

namespace {

constexpr int kMost = std::numeric_limits<int>::max();

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

const std::vector<PixelSize> kSizes = {{100, 72}, {100, 72}, {500, 72}, {100, 72}, {4, 72}};

std::string RowsOf(const ThumbnailLayout& layout) {
  std::string text;
  for (const ThumbnailRow& row : layout.Rows) {
    for (int item = row.First; item < row.End; ++item) text += std::to_string(item);
    text += '|';
  }
  return text;
}

TEST(ThumbnailLayout, ARowTakesWhatFitsAndATooWideThumbnailHasItsOwn) {
  for (const auto& [width, rows] : {std::pair(0, "0|1|2|3|4|"),
                                    {136, "0|1|2|3|4|"},
                                    {137, "0|1|2|34|"},
                                    {233, "01|2|34|"},
                                    {741, "012|34|"},
                                    {5000, "01234|"}}) {
    EXPECT_EQ(RowsOf(LayOutThumbnails(kSizes, width, {})), rows) << width;
  }
}

}  // namespace

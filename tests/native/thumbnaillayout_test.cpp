// Which thumbnails stand in a row, where, and which rows a window shows.
#include "dialogs/thumbnaillayout.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

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

TEST(ThumbnailLayout, AWindowShowsTheRowsThatBeginAboveItsBottom) {
  const ThumbnailLayout layout = LayOutThumbnails(kSizes, 233, {});
  for (int item = 0; item < 5; ++item) EXPECT_EQ(layout.RowOf(item), item < 2 ? 0 : item == 2 ? 1 : 2);
  // The first row and the height; the end, the shift and the page.
  const std::array<int, 5> tests[] = {
      {0, 0, 0, 0, 0}, {0, 88, 1, 0, 1}, {0, 89, 2, 0, 1}, {1, 176, 3, -88, 2}, {2, 999, 3, -176, 3}};
  for (const auto& [first, height, end, shift, page] : tests) {
    const std::array seen = {layout.EndOfView(first, height), layout.Shift(first), layout.Page(height, {})};
    EXPECT_EQ(seen, (std::array{end, shift, page})) << first << ", " << height;
  }
  EXPECT_EQ(LayOutThumbnails({}, 300, {}).Page(300, {}), 0);
}

}  // namespace

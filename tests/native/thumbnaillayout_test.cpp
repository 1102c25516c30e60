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

TEST(ThumbnailLayout, PlacesAreApartByTheGapsAndKeepTheirSizes) {
  const ThumbnailLayout layout = LayOutThumbnails(kSizes, 233, {});
  const int expected[][4] = {
      {16, 16, 116, 88}, {124, 16, 224, 88}, {16, 104, 516, 176}, {16, 192, 116, 264}, {124, 192, 128, 264}};
  for (std::size_t i = 0; i < kSizes.size(); ++i) {
    const PixelRect& place = layout.Places[i];
    const int actual[4] = {place.left, place.top, place.right, place.bottom};
    EXPECT_TRUE(std::equal(actual, actual + 4, expected[i])) << i;
  }
  EXPECT_EQ(LayOutThumbnails(kSizes, 5000, {16, 32, 48}).Places[1].left, 32 + 100 + 16);
  EXPECT_EQ(LayOutThumbnails(kSizes, 0, {16, 32, 48}).Places[4].top, 48 + 4 * (72 + 48));
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

// Which thumbnails stand in a row.
#include "dialogs/thumbnaillayout.h"

#include <gtest/gtest.h>

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

}  // namespace

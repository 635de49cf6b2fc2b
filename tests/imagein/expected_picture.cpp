// SPDX-License-Identifier: MIT
//
// One file read in every way: held, cut, shown on pages of both kinds, and compared each time.
#include "tests/imagein/expected_picture.h"

#include <algorithm>

#include "tests/imagein/twin_pages.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {

namespace {

constexpr int32_t page_width = 29;
constexpr int32_t page_height = 23;

constexpr Place places[] = {
    {0, 0, page_width, page_height},           {3, 2, 11, 7},  // limits inside the page
    {-2, -1, page_width, page_height},                         // over the left and upper edge
    {25, 20, page_width, page_height},                         // over the right and lower one
    {25, -3, page_width + 9, page_height + 9},                 // limits beyond the page
};

void check_stored(Format format, const Bytes &file, const ExpectedPicture &expected) {
  const FailingMemory memory;
  const int32_t status = read_picture(format, file, store_number, places[0]);
  ASSERT_EQ(status, expected.status) << "into memory";
  if (!is_delivered(status)) {
    EXPECT_EQ(memory.live_blocks(), 0U) << "a picture is held";
    return;
  }
  literal::Picture picture = stored_picture(expected);
  picture.device_width = places[0].device_width;
  picture.device_height = places[0].device_height;
  EXPECT_TRUE(is_held(picture));
  release_picture();
  EXPECT_EQ(memory.live_blocks(), 0U);
  for (const bool rgba : {false, true}) {
    TwinPages pages(rgba, page_width, page_height);
    ASSERT_EQ(read_picture(format, file, store_number, places[0]), status);
    const bool empty = picture.width == 0 || picture.height == 0;
    EXPECT_EQ(scale_picture(raster_number, picture.width, picture.height, 2, 1), empty ? -2 : 0);
    literal::show_scaled(pages.literal, picture, picture.width, picture.height, 2, 1);
    EXPECT_TRUE(pages.alike()) << "held and then shown";
    EXPECT_TRUE(nothing_is_held());
  }
}

void check_shown(Format format, const Bytes &file, const ExpectedPicture &expected,
                 const Place &place, bool rgba) {
  TwinPages pages(rgba, page_width, page_height);
  const FailingMemory memory;
  EXPECT_EQ(read_picture(format, file, raster_number, place), expected.status) << "shown";
  EXPECT_EQ(memory.live_blocks(), 0U);
  Bytes last;
  for (DeliveredRow row : expected.rows) {
    if (!last.empty())
      std::copy_n(last.begin(), 3 * std::min(row.kept_pixels, last.size() / 3), row.rgb.begin());
    literal::show_row(pages.literal, row.rgb.data(), row.alpha.empty() ? nullptr : row.alpha.data(),
                      place.x + row.x, place.y + row.y, static_cast<int32_t>(row.rgb.size() / 3),
                      place.device_width, place.device_height);
    last = row.rgb;
  }
  EXPECT_TRUE(pages.alike()) << "shown at " << place.x << ", " << place.y;
}

}  // namespace

ExpectedPicture expect_rows(int32_t width, int32_t height, const Bytes &rgb, const Bytes &alpha) {
  ExpectedPicture expected;
  expected.width = width;
  expected.height = height;
  expected.has_alpha = !alpha.empty();
  const std::ptrdiff_t columns = width;
  for (int32_t y = 0; y < height; ++y) {
    DeliveredRow row;
    row.y = y;
    row.rgb.assign(rgb.begin() + 3 * y * columns, rgb.begin() + 3 * (y + 1) * columns);
    if (!alpha.empty())
      row.alpha.assign(alpha.begin() + y * columns, alpha.begin() + (y + 1) * columns);
    expected.rows.push_back(row);
  }
  return expected;
}

literal::Picture stored_picture(const ExpectedPicture &expected) {
  literal::Picture picture =
      literal::make_picture(expected.width, expected.height, expected.has_alpha);
  for (const DeliveredRow &row : expected.rows) {
    literal::store_row(picture, row.rgb.data(), row.alpha.empty() ? nullptr : row.alpha.data(),
                       row.x, row.y, static_cast<int32_t>(row.rgb.size() / 3));
  }
  return picture;
}

::testing::AssertionResult is_held(const literal::Picture &picture) {
  const int32_t w = picture.width;
  const int32_t h = picture.height;
  if (crop_picture(0, 0, w + 1, h) != -3) return ::testing::AssertionFailure() << "wider";
  if (crop_picture(0, 0, w, h + 1) != -3) return ::testing::AssertionFailure() << "higher";
  if (h > 0 && w > 0 && crop_picture(0, 0, w, h) != 0)
    return ::testing::AssertionFailure() << "smaller than " << w << " by " << h;
  for (int32_t y = 0; y < h; ++y) {
    const Bytes row = picture_row(0, y, w);
    const size_t start = 3 * static_cast<size_t>(w) * static_cast<size_t>(y);
    for (size_t i = 0; i < row.size(); ++i) {
      if (row[i] == picture.rgb[start + i]) continue;
      return ::testing::AssertionFailure()
             << "channel " << i % 3 << " of column " << i / 3 << ", row " << y << ": got "
             << int{row[i]} << ", wanted " << int{picture.rgb[start + i]};
    }
  }
  return ::testing::AssertionSuccess();
}

::testing::AssertionResult nothing_is_held() {
  if (scale_picture(store_number, 1, 1) == -3) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "a picture is held";
}

void check_reader(Format format, const Bytes &file, const ExpectedPicture &expected,
                  const std::string &what) {
  SCOPED_TRACE(std::string(name_of(format)) + ", " + what);
  check_stored(format, file, expected);
  for (const Place &place : places) {
    for (const bool rgba : {false, true})
      check_shown(format, file, expected, place, rgba);
  }
}

}  // namespace quorix::testing

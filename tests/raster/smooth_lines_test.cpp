// SPDX-License-Identifier: MIT
// Antialiased lines: the weights of the two pixels of each step, and what is drawn at full colour.

#include "tests/raster/raster_page.h"

namespace quorix::testing {
namespace {

using SmoothLine = RasterTest;

// A white page with alpha 0, and black lines of alpha 255.
void open_smooth_page(int32_t width, int32_t height) {
  open_rgba_page(width, height, true);
  set_option(34, 2);
  qqvclr(packed_rgb(0, 0, 0));
}

void draw_line(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  qqvlin(x1, y1, x2, y2);
  flush_lines();
}

TEST_F(SmoothLine, SharesEachStepBetweenTheTwoPixelsBesideIt) {
  open_smooth_page(5, 3);
  draw_line(0, 0, 4, 2);
  EXPECT_EQ(rgba_at(0, 0), "000000ff");
  EXPECT_EQ(rgba_at(1, 0), "808080ff");  // 255 - 127.5 + 0.5, truncated
  EXPECT_EQ(rgba_at(1, 1), "808080ff");
  EXPECT_EQ(rgba_at(2, 1), "000000ff");
  EXPECT_EQ(rgba_at(3, 1), "808080ff");
  EXPECT_EQ(rgba_at(3, 2), "808080ff");
  EXPECT_EQ(rgba_at(4, 2), "000000ff");
  EXPECT_EQ(rgba_at(4, 1), "ffffff00");
}

TEST_F(SmoothLine, GivesAPixelOfWeightZeroItsAlphaAll) {
  open_smooth_page(5, 3);
  draw_line(0, 0, 4, 2);
  EXPECT_EQ(rgba_at(2, 2), "ffffffff");
}

TEST_F(SmoothLine, BlendsEachOfTheThreeColours) {
  open_rgba_page(5, 3);
  set_option(34, 2);
  set_option(19, 9);
  qqvclr(packed_rgb(200, 100, 50));
  draw_line(0, 0, 4, 1);
  // A quarter: 50.5, 25.5, 13.0; three quarters: 150.5, 75.5, 38.0.
  EXPECT_EQ(rgba_at(1, 1), "32190d09");
  EXPECT_EQ(rgba_at(1, 0), "964b2609");
}

TEST_F(SmoothLine, BlendsWithWhatIsThere) {
  open_rgba_page(5, 3);
  qqvfll(0, 0, 4, 2, packed_rgb(100, 40, 0));
  set_option(34, 2);
  qqvclr(packed_rgb(0, 240, 255));
  draw_line(0, 0, 4, 1);
  // A quarter of the way: 75.5, 90.5, 64.25.
  EXPECT_EQ(rgba_at(1, 1), "4b5a40ff");
}

TEST_F(SmoothLine, IsTheSameInBothDirections) {
  open_smooth_page(7, 4);
  draw_line(0, 0, 6, 3);
  const std::vector<uint8_t> forward = page_content();
  qqvers();
  draw_line(6, 3, 0, 0);
  EXPECT_EQ(page_content(), forward);
}

TEST_F(SmoothLine, StepsRowsWhereItIsSteep) {
  open_smooth_page(3, 5);
  draw_line(0, 0, 2, 4);
  EXPECT_EQ(rgba_at(0, 1), "808080ff");
  EXPECT_EQ(rgba_at(1, 1), "808080ff");
  EXPECT_EQ(rgba_at(1, 2), "000000ff");
  EXPECT_EQ(rgba_at(2, 2), "ffffffff");
  EXPECT_EQ(rgba_at(2, 4), "000000ff");
}

TEST_F(SmoothLine, OfASteepDescentToTheLeftGoesTheSameWay) {
  open_smooth_page(3, 5);
  draw_line(2, 0, 0, 4);
  EXPECT_EQ(rgba_at(1, 1), "808080ff");  // x = 1.5 lies between columns 1 and 2
  EXPECT_EQ(rgba_at(2, 1), "808080ff");
  EXPECT_EQ(rgba_at(1, 2), "000000ff");
}

TEST_F(SmoothLine, AboveThePageStoresTheLowByteOfWhatLiesBeyondABlend) {
  open_smooth_page(5, 3);
  draw_line(0, -1, 4, 1);
  // At x = 1, y = -0.5 truncates to 0: weights -0.5 on row 1 and 1.5 on row 0 give 383 and -127.
  EXPECT_EQ(rgba_at(1, 1), "7f7f7fff");
  EXPECT_EQ(rgba_at(1, 0), "818181ff");
}

TEST_F(SmoothLine, OfEqualSidesIsAtFullColour) {
  open_smooth_page(4, 4);
  draw_line(3, 0, 1, 2);
  EXPECT_EQ(picture(), rows({"...#", "..#.", ".#..", "...."}));
  EXPECT_EQ(rgba_at(2, 1), "000000ff");
}

TEST_F(SmoothLine, OfEqualSidesStopsAtTheClipRectangle) {
  open_smooth_page(4, 4);
  set_clip_rectangle(1, 1, 2, 3);
  draw_line(0, 0, 3, 3);
  EXPECT_EQ(picture(), rows({"....", ".#..", "..#.", "...."}));
}

TEST_F(SmoothLine, AlongARowOrColumnIsAPlainOne) {
  open_smooth_page(4, 3);
  set_clip_rectangle(1, 1, 2, 1);
  draw_line(0, 0, 3, 0);  // and like one, it is not clipped while clipping is off
  draw_line(3, 0, 3, 2);
  EXPECT_EQ(picture(), rows({"####", "...#", "...#"}));
  EXPECT_EQ(rgba_at(1, 0), "000000ff");
}

TEST_F(SmoothLine, StopsAtTheClipRectangleThoughClippingIsOff) {
  open_smooth_page(5, 3);
  set_clip_rectangle(1, 0, 2, 1);
  draw_line(0, 0, 4, 2);
  EXPECT_EQ(picture(), rows({".#...", ".##..", "....."}));
}

TEST_F(SmoothLine, StaysOnThePageWhereTheClipRectangleDoesNot) {
  open_smooth_page(5, 3);
  set_clip_rectangle(-50, -50, 50, 50);
  draw_line(-4, -2, 8, 4);
  EXPECT_EQ(picture(), rows({"##...", "####.", "..###"}));
  EXPECT_EQ(rgba_at(1, 0), "808080ff");
}

TEST_F(SmoothLine, OfOnePointIsADot) {
  open_smooth_page(3, 1);
  draw_line(1, 0, 1, 0);
  EXPECT_EQ(picture(), rows({".#."}));
}

}  // namespace
}  // namespace quorix::testing

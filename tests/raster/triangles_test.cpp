// SPDX-License-Identifier: MIT
// Flat triangles with whole corners.

#include <climits>

#include "tests/raster/raster_page.h"

namespace quorix::testing {
namespace {

using Triangle = RasterTest;

void fill_triangle(const std::vector<PenPoint> &corners, int32_t colour = 1) {
  const int32_t xs[] = {corners[0].x, corners[1].x, corners[2].x};
  const int32_t ys[] = {corners[0].y, corners[1].y, corners[2].y};
  EXPECT_EQ(qqvftr(xs, ys, colour), 0);
}

TEST_F(Triangle, StepsItsSidesFromRowToRow) {
  open_page(10, 9);
  fill_triangle({{0, 0}, {8, 4}, {4, 8}});
  EXPECT_EQ(picture(), rows({"1.........", ".11.......", ".1111.....", "..11111...", "..1111111.",
                             "...11111..", "...1111...", "....11....", "....1....."}));
}

TEST_F(Triangle, IsTheSameWhateverTheOrderOfItsCorners) {
  const std::vector<std::vector<PenPoint>> orders = {
      {{0, 0}, {8, 4}, {4, 8}}, {{0, 0}, {4, 8}, {8, 4}}, {{8, 4}, {0, 0}, {4, 8}},
      {{8, 4}, {4, 8}, {0, 0}}, {{4, 8}, {0, 0}, {8, 4}}, {{4, 8}, {8, 4}, {0, 0}}};
  std::vector<uint8_t> first;
  for (const std::vector<PenPoint> &order : orders) {
    open_page(10, 9);
    fill_triangle(order);
    if (first.empty()) first = page_content();
    EXPECT_EQ(page_content(), first);
  }
}

TEST_F(Triangle, WithALevelUpperSideFillsThatRow) {
  open_page(10, 7);
  fill_triangle({{2, 2}, {8, 2}, {5, 5}});
  EXPECT_EQ(picture(), rows({"..........", "..........", "..1111111.", "...11111..", "....111...",
                             ".....1....", ".........."}));
}

TEST_F(Triangle, WithALevelLowerSideFillsThatRow) {
  open_page(10, 7);
  fill_triangle({{5, 2}, {2, 5}, {8, 5}});
  EXPECT_EQ(picture(), rows({"..........", "..........", ".....1....", "....111...", "...11111..",
                             "..1111111.", ".........."}));
}

TEST_F(Triangle, OfOneRowIsThatRow) {
  open_page(8, 3);
  fill_triangle({{4, 1}, {6, 1}, {2, 1}});
  EXPECT_EQ(picture(), rows({"........", "..11111.", "........"}));
}

TEST_F(Triangle, OfOnePointIsOnePixel) {
  open_page(4, 3);
  fill_triangle({{2, 1}, {2, 1}, {2, 1}});
  EXPECT_EQ(picture(), rows({"....", "..1.", "...."}));
}

TEST_F(Triangle, OfOneColumnIsThatColumn) {
  open_page(3, 5);
  fill_triangle({{1, 1}, {1, 4}, {1, 2}});
  EXPECT_EQ(picture(), rows({"...", ".1.", ".1.", ".1.", ".1."}));
}

// Seven fourteenths added up stay below a half, so the seventh row still begins at column 0.
TEST_F(Triangle, AddsUpTheSlopesOfItsSides) {
  open_page(16, 15);
  fill_triangle({{0, 0}, {1, 14}, {14, 14}});
  EXPECT_EQ(row_at(7), row(16, 0, 7));
  EXPECT_EQ(row_at(8), row(16, 1, 8));
}

TEST_F(Triangle, MakesItsColourTheCurrentOneForGood) {
  open_page(4, 3);
  qqvlin(0, 0, 3, 0);
  fill_triangle({{0, 1}, {3, 1}, {3, 1}}, 5);
  EXPECT_EQ(output_context->colours.colour_index, 5);
  EXPECT_EQ(output_context->colours.colour_arg, 5);
  qqvlin(0, 2, 3, 2);
  EXPECT_EQ(picture(), rows({"1111", "5555", "5555"}));
}

TEST_F(Triangle, OutsideThePageStillChangesTheColour) {
  open_page(4, 3);
  fill_triangle({{-9, -9}, {-8, -9}, {-8, -8}}, 5);
  EXPECT_EQ(output_context->colours.colour_index, 5);
  EXPECT_EQ(page_content(), std::vector<uint8_t>(12, 0));
}

TEST_F(Triangle, OnAnRgbaPageHasColourAndAlpha) {
  open_rgba_page(4, 3);
  set_option(19, 50);
  fill_triangle({{1, 1}, {1, 1}, {1, 1}}, packed_rgb(3, 2, 1));
  EXPECT_EQ(rgba_at(1, 1), "03020132");
  EXPECT_EQ(rgba_at(2, 1), "00000000");
}

TEST_F(Triangle, IsClippedWhetherOrNotClippingIsOn) {
  for (const bool clipping : {false, true}) {
    open_page(10, 7);
    set_clip_rectangle(4, 3, 7, 4);
    switch_clipping(clipping);
    fill_triangle({{5, 2}, {2, 5}, {8, 5}});
    fill_triangle({{0, 6}, {9, 6}, {9, 6}});
    fill_triangle({{0, 3}, {3, 3}, {2, 3}});
    EXPECT_EQ(picture(), rows({"..........", "..........", "..........", "....111...", "....1111..",
                               "..........", ".........."}));
  }
}

TEST_F(Triangle, OfOneRowIsCutAtTheClipColumns) {
  open_page(10, 3);
  set_clip_rectangle(4, 0, 7, 2);
  fill_triangle({{0, 1}, {9, 1}, {5, 1}});
  EXPECT_EQ(picture(), rows({"..........", "....1111..", ".........."}));
}

TEST_F(Triangle, KeepsItsStepsWhereItComesFromAboveThePage) {
  open_page(6, 3);
  set_clip_rectangle(-100, -100, 100, 100);
  fill_triangle({{-50, -50}, {50, 50}, {-50, 50}});
  EXPECT_EQ(picture(), rows({"1.....", "11....", "111..."}));
}

TEST_F(Triangle, MayReachFromOneEndOfTheNumbersToTheOther) {
  open_page(4, 6);
  fill_triangle({{INT32_MIN, 0}, {INT32_MAX, 0}, {0, 4}});
  EXPECT_EQ(picture(), rows({"1111", "1111", "1111", "1111", "1...", "...."}));
  qqvers();
  fill_triangle({{INT32_MIN, 2}, {INT32_MAX, 2}, {5, 2}});
  EXPECT_EQ(picture(), rows({"....", "....", "1111", "....", "....", "...."}));
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
// Rectangles, single pixels and polygons.

#include <climits>
#include <limits>

#include "tests/raster/raster_page.h"

namespace quorix::testing {
namespace {

using Rectangle = RasterTest;
using PixelInClip = RasterTest;
using Polygon = RasterTest;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// ---- Rectangles

TEST_F(Rectangle, HasBothCorners) {
  open_page(6, 5);
  EXPECT_EQ(qqvfll(1, 1, 3, 2, 4), 0);
  EXPECT_EQ(picture(), rows({"......", ".444..", ".444..", "......", "......"}));
}

TEST_F(Rectangle, OfEqualCornersIsOnePixel) {
  open_page(6, 5);
  qqvfll(3, 3, 3, 3, 5);
  EXPECT_EQ(picture(), rows({"......", "......", "......", "...5..", "......"}));
}

TEST_F(Rectangle, WithItsCornersTheWrongWayRoundIsNotDrawn) {
  for (const bool clipping : {false, true}) {
    open_page(6, 5);
    switch_clipping(clipping);
    qqvfll(3, 1, 1, 3, 5);
    qqvfll(1, 3, 3, 1, 5);
    EXPECT_EQ(page_content(), std::vector<uint8_t>(30, 0));
  }
}

TEST_F(Rectangle, WithoutClippingLooksAtThePageAlone) {
  open_page(4, 3);
  set_clip_rectangle(1, 1, 1, 1);
  qqvfll(-5, -5, 2, 1, 5);
  EXPECT_EQ(picture(), rows({"555.", "555.", "...."}));
}

TEST_F(Rectangle, WithClippingIsCutToTheClipRectangle) {
  open_page(5, 4);
  set_clip_rectangle(1, 1, 3, 2);
  switch_clipping(true);
  qqvfll(-5, -5, 2, 9, 5);
  qqvfll(4, 0, 4, 3, 4);
  EXPECT_EQ(picture(), rows({".....", ".55..", ".55..", "....."}));
}

TEST_F(Rectangle, MayReachFromOneEndOfTheNumbersToTheOther) {
  open_page(3, 2);
  qqvfll(INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX, 5);
  EXPECT_EQ(picture(), rows({"555", "555"}));
}

TEST_F(Rectangle, LeavesTheCurrentColour) {
  open_page(3, 2);
  qqvfll(0, 0, 0, 0, 5);
  EXPECT_EQ(output_context->colours.colour_index, 1);
  EXPECT_EQ(output_context->colours.colour_arg, 1);
  qqvlin(2, 0, 2, 1);
  EXPECT_EQ(picture(), rows({"5.1", "..1"}));
}

TEST_F(Rectangle, IsDrawnOverTheLinesGatheredBefore) {
  open_page(3, 1);
  qqvlin(0, 0, 2, 0);
  qqvfll(1, 0, 1, 0, 5);
  EXPECT_EQ(picture(), rows({"151"}));
}

// ---- Single pixels

TEST_F(PixelInClip, IsSetInsideTheClipRectangleAloneWhateverTheClipping) {
  for (const bool clipping : {false, true}) {
    open_page(4, 1);
    set_clip_rectangle(1, 0, 2, 0);
    switch_clipping(clipping);
    for (int32_t x = 0; x < 4; x++)
      EXPECT_EQ(qqvpix(x, 0, 5), 0);
    EXPECT_EQ(picture(), rows({".55."}));
  }
}

TEST_F(PixelInClip, OutsideTheClipRectangleDoesNotDrawGatheredLines) {
  open_page(4, 1);
  set_clip_rectangle(1, 0, 2, 0);
  qqvlin(0, 0, 3, 0);
  qqvpix(0, 0, 5);
  EXPECT_EQ(picture_without_flush(), rows({"...."}));
  qqvpix(1, 0, 5);
  EXPECT_EQ(picture_without_flush(), rows({"1511"}));
}

TEST_F(PixelInClip, OffThePageIsNotSetThoughTheClipRectangleHoldsIt) {
  open_page(2, 2);
  set_clip_rectangle(INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX);
  qqvpix(2, 0, 5);
  qqvpix(-1, 1, 5);
  qqvpix(0, 2, 5);
  qqvpix(INT32_MAX, INT32_MIN, 5);
  EXPECT_EQ(picture(), rows({"..", ".."}));
}

TEST_F(PixelInClip, LeavesTheCurrentColour) {
  open_page(2, 1);
  qqvpix(0, 0, 5);
  EXPECT_EQ(output_context->colours.colour_index, 1);
}

// ---- Polygons

TEST_F(Polygon, WithALevelUpperEdgeHasNoPixelInThatRow) {
  open_page(21, 21);
  EXPECT_EQ(fill_polygon_of({0, 20, 10}, {10, 10, 20}), 0);
  EXPECT_EQ(row_at(10), row(21));
  EXPECT_EQ(row_at(11), row(21, 1, 19));
  EXPECT_EQ(row_at(15), row(21, 5, 15));
  EXPECT_EQ(row_at(20), row(21, 10, 10));
}

TEST_F(Polygon, WithALevelLowerEdgeIsFilledInThatRowAndNotInItsUppermost) {
  open_page(21, 21);
  fill_polygon_of({10, 0, 20}, {10, 20, 20});
  EXPECT_EQ(row_at(10), row(21));
  EXPECT_EQ(row_at(20), row(21, 0, 20));
}

TEST_F(Polygon, RoundsItsCrossingsHalvesToTheRight) {
  open_page(8, 4);
  fill_polygon_of({2.49, 5.5, 5.5, 2.49}, {0, 0, 1, 1});
  fill_polygon_of({2.5, 5.49, 5.49, 2.5}, {1, 1, 2, 2});
  EXPECT_EQ(picture(), rows({"........", "..11111.", "...111..", "........"}));
}

TEST_F(Polygon, RoundsNegativeCrossingsTowardZero) {
  open_page(4, 3);
  // -1.4 + 0.5 truncates to 0, which lies on the page; -1.6 + 0.5 to -1, which does not.
  fill_polygon_of({-5, -1.4, -1.4, -5}, {0, 0, 1, 1});
  fill_polygon_of({-5, -1.6, -1.6, -5}, {1, 1, 2, 2});
  EXPECT_EQ(picture(), rows({"....", "1...", "...."}));
}

TEST_F(Polygon, TakesRowsAboveItsUpperAndUpToItsLowerEdge) {
  open_page(3, 6);
  fill_polygon_of({0, 1, 1, 0}, {1.5, 1.5, 4.0, 4.0});
  EXPECT_EQ(picture(), rows({"...", "...", "11.", "11.", "11.", "..."}));
  qqvers();
  fill_polygon_of({0, 1, 1, 0}, {1.0, 1.0, 3.9, 3.9});
  EXPECT_EQ(picture(), rows({"...", "...", "11.", "11.", "...", "..."}));
}

TEST_F(Polygon, IsFilledByTheEvenOddRule) {
  open_page(9, 3);
  // Two rectangles as one polygon, one within the other.
  fill_polygon_of({0, 8, 8, 0, 0, 3, 5, 5, 3, 3}, {0, 0, 2, 2, 0, 0, 0, 2, 2, 0});
  EXPECT_EQ(picture(), rows({".........", "1111.1111", "1111.1111"}));
}

TEST_F(Polygon, TakesANearlyLevelEdgeAtItsFirstCorner) {
  open_page(12, 10);
  fill_polygon_of({2, 10, 10, 2}, {3.998, 4.002, 8, 8});
  EXPECT_EQ(row_at(4), "..1.........");
  qqvers();
  fill_polygon_of({2, 10, 10, 2}, {3.99, 4.01, 8, 8});
  EXPECT_EQ(row_at(4), "..11111.....");  // 2 + 8 / 2
}

TEST_F(Polygon, IsClippedWhetherOrNotClippingIsOn) {
  for (const bool clipping : {false, true}) {
    open_page(6, 6);
    set_clip_rectangle(2, 2, 3, 4);
    switch_clipping(clipping);
    fill_polygon_of({0, 5, 5, 0}, {0, 0, 5, 5});
    EXPECT_EQ(picture(), rows({"......", "......", "..11..", "..11..", "..11..", "......"}));
  }
}

TEST_F(Polygon, BesideTheClipRectangleIsNotDrawn) {
  open_page(8, 8);
  set_clip_rectangle(3, 3, 4, 4);
  fill_polygon_of({0, 2, 2, 0}, {0, 0, 7, 7});
  fill_polygon_of({5, 7, 7, 5}, {0, 0, 7, 7});
  fill_polygon_of({0, 7, 7, 0}, {0, 0, 2, 2});
  fill_polygon_of({0, 7, 7, 0}, {4, 4, 7, 7});
  EXPECT_EQ(page_content(), std::vector<uint8_t>(64, 0));
}

TEST_F(Polygon, StaysOnThePageWhereTheClipRectangleDoesNot) {
  open_page(3, 3);
  set_clip_rectangle(-10, -10, 10, 10);
  fill_polygon_of({-9, 9, 9, -9}, {-9, -9, 9, 9});
  EXPECT_EQ(picture(), rows({"111", "111", "111"}));
}

TEST_F(Polygon, OnAnRgbaPageHasColourAndAlpha) {
  open_rgba_page(3, 3);
  set_option(19, 5);
  qqvclr(packed_rgb(9, 8, 7));
  fill_polygon_of({0, 1, 1, 0}, {0, 0, 1, 1});
  EXPECT_EQ(rgba_at(1, 1), "09080705");
  EXPECT_EQ(rgba_at(2, 1), "00000000");
  EXPECT_EQ(rgba_at(1, 0), "00000000");
}

// A comb of n edges up and down between rows 0 and 10, with a tooth every two columns.
int32_t fill_comb(int32_t corners) {
  std::vector<double> xs;
  std::vector<double> ys;
  for (int32_t i = 0; i < corners; i++) {
    xs.push_back(2.0 * i);
    ys.push_back(i % 2 == 0 ? 0.0 : 10.0);
  }
  return fill_polygon_of(xs, ys);
}

TEST_F(Polygon, OfMoreThanNinetyNineCrossingsInARowTellsItAndKeepsTheFirst) {
  open_page(220, 12);
  EXPECT_EQ(fill_comb(102), 1);
  // Edge i crosses row 5 at 2 i + 1. Of the crossings 0 to 98 the last has no partner.
  std::string expected(220, '.');
  for (size_t pair = 0; pair < 49; pair++) {
    for (size_t x = 4 * pair + 1; x <= 4 * pair + 3; x++)
      expected[x] = '1';
  }
  EXPECT_EQ(row_at(5), expected);
}

TEST_F(Polygon, OfNinetyEightCrossingsInARowIsDrawnWhole) {
  open_page(220, 12);
  EXPECT_EQ(fill_comb(98), 0);
}

TEST_F(Polygon, OfAHundredCrossingsInARowIsOneTooMany) {
  open_page(220, 12);
  EXPECT_EQ(fill_comb(100), 1);
}

TEST_F(Polygon, WithoutCornersIsNothing) {
  open_page(3, 3);
  EXPECT_EQ(fill_polygon_of({}, {}), 0);
  const double corner = 1.0;
  const int32_t negative = -4;
  int32_t status = 77;
  EXPECT_EQ(qqvpol(&corner, &corner, &negative, &status), 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(page_content(), std::vector<uint8_t>(9, 0));
}

TEST_F(Polygon, OfOneOrTwoCornersHasNoArea) {
  open_page(5, 5);
  EXPECT_EQ(fill_polygon_of({2}, {2}), 0);
  EXPECT_EQ(picture().find('1'), std::string::npos);
  // Both edges of two corners cross at the same places.
  EXPECT_EQ(fill_polygon_of({1, 1}, {1, 3}), 0);
  EXPECT_EQ(picture(), rows({".....", ".....", ".1...", ".1...", "....."}));
}

TEST_F(Polygon, WithANanAmongItsRowsIsNotDrawn) {
  open_page(8, 8);
  EXPECT_EQ(fill_polygon_of({2, 6, 6, 2}, {nan, 2, 6, 6}), 0);
  EXPECT_EQ(fill_polygon_of({2, 6, 6, 2}, {2, 2, 6, nan}), 0);
  EXPECT_EQ(page_content(), std::vector<uint8_t>(64, 0));
}

TEST_F(Polygon, WithANanAmongItsColumnsCrossesThereAtZero) {
  open_page(8, 8);
  fill_polygon_of({2, nan, 6, 2}, {2, 2, 6, 6});
  EXPECT_EQ(picture(), rows({"........", "........", "........", "111.....", "111.....", "111.....",
                             "111.....", "........"}));
}

TEST_F(Polygon, WithAnInfiniteColumnCrossesThereAtZeroAsWell) {
  open_page(8, 8);
  fill_polygon_of({2, infinity, 6, 2}, {2, 2, 6, 6});
  EXPECT_EQ(row_at(3), "111.....");
}

TEST_F(Polygon, WithAHugeColumnReachesTheEdgeOfThePage) {
  open_page(8, 8);
  fill_polygon_of({2, 1e300, 6, 2}, {2, 2, 6, 6});
  // In row 6 the huge numbers cancel, to 0.
  EXPECT_EQ(picture(), rows({"........", "........", "........", "..111111", "..111111", "..111111",
                             "111.....", "........"}));
  qqvers();
  fill_polygon_of({2, -1e300, 6, 2}, {2, 2, 6, 6});
  EXPECT_EQ(row_at(3), "111.....");
}

TEST_F(Polygon, WithAnInfiniteRowReachesTheEndOfThePage) {
  open_page(8, 8);
  fill_polygon_of({2, 6, 6, 2}, {2, 2, infinity, 6});
  EXPECT_EQ(picture(), rows({"........", "........", "........", "..11111.", "..11111.", "..11111.",
                             "..11111.", "1111111."}));
}

TEST_F(Polygon, ChangesNeitherItsCornersNorTheCurrentColour) {
  open_page(4, 4);
  fill_polygon_of({0, 3, 3}, {0, 0, 3});
  EXPECT_EQ(output_context->colours.colour_index, 1);
}

}  // namespace
}  // namespace quorix::testing

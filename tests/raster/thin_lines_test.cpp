// SPDX-License-Identifier: MIT
// Lines of width 1 to 3: straight rows and columns, Bresenham's steps, and how clipping differs.

#include <climits>

#include "tests/raster/raster_page.h"

namespace quorix::testing {
namespace {

using StraightLine = RasterTest;
using FastLine = RasterTest;
using WideLine = RasterTest;

void draw_line(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  qqvlin(x1, y1, x2, y2);
  flush_lines();
}

// ---- Rows and columns

TEST_F(StraightLine, GoesFromEndToEndInEitherDirection) {
  open_page(5, 3);
  draw_line(3, 0, 1, 0);
  draw_line(4, 2, 4, 1);
  EXPECT_EQ(picture(), rows({".111.", "....1", "....1"}));
}

TEST_F(StraightLine, GrowsByRowsBelowAndAboveInTurn) {
  open_page(3, 5);
  set_pen(2, 0, 0);
  draw_line(0, 2, 2, 2);
  EXPECT_EQ(picture(), rows({"...", "...", "111", "111", "..."}));
  qqvers();
  set_pen(3, 0, 0);
  draw_line(0, 2, 2, 2);
  EXPECT_EQ(picture(), rows({"...", "111", "111", "111", "..."}));
}

TEST_F(StraightLine, GrowsByColumnsRightAndLeftInTurn) {
  open_page(5, 2);
  set_pen(2, 0, 0);
  draw_line(2, 0, 2, 1);
  EXPECT_EQ(picture(), rows({"..11.", "..11."}));
  qqvers();
  set_pen(3, 0, 0);
  draw_line(2, 0, 2, 1);
  EXPECT_EQ(picture(), rows({".111.", ".111."}));
}

TEST_F(StraightLine, OfWidthTwoOnTheLastClipRowIsThatRowAlone) {
  open_page(3, 4);
  set_clip_rectangle(0, 0, 2, 2);
  set_pen(2, 0, 0);
  draw_line(0, 2, 2, 2);
  EXPECT_EQ(picture(), rows({"...", "...", "111", "..."}));
}

TEST_F(StraightLine, AtTheLastClipRowStopsGrowingOnTheFarSideToo) {
  open_page(3, 4);
  set_clip_rectangle(0, 0, 2, 2);
  set_pen(3, 0, 0);
  draw_line(0, 2, 2, 2);
  EXPECT_EQ(picture(), rows({"...", "...", "111", "..."}));
}

TEST_F(StraightLine, AtTheFirstClipRowStillGrowsDownward) {
  open_page(3, 4);
  set_pen(3, 0, 0);
  draw_line(0, 0, 2, 0);
  EXPECT_EQ(picture(), rows({"111", "111", "...", "..."}));
}

TEST_F(StraightLine, AtTheLastClipColumnStopsGrowingOnTheFarSideToo) {
  open_page(4, 2);
  set_pen(3, 0, 0);
  draw_line(3, 0, 3, 1);
  EXPECT_EQ(picture(), rows({"...1", "...1"}));
  qqvers();
  draw_line(0, 0, 0, 1);
  EXPECT_EQ(picture(), rows({"11..", "11.."}));
}

TEST_F(StraightLine, WithoutClippingDrawsItsMainRowBeyondTheClipRectangle) {
  open_page(6, 6);
  set_clip_rectangle(2, 2, 3, 4);
  set_pen(2, 0, 0);
  draw_line(0, 1, 5, 1);  // its extra row, 2, lies inside the clip rows
  draw_line(0, 4, 5, 4);  // its extra row, 5, does not
  EXPECT_EQ(picture(), rows({"......", "111111", "111111", "......", "111111", "......"}));
}

TEST_F(StraightLine, WithoutClippingDrawsItsMainColumnBeyondTheClipRectangle) {
  open_page(6, 4);
  set_clip_rectangle(2, 1, 4, 2);
  set_pen(2, 0, 0);
  draw_line(1, 0, 1, 3);
  draw_line(4, 0, 4, 3);
  EXPECT_EQ(picture(), rows({".11.1.", ".11.1.", ".11.1.", ".11.1."}));
}

TEST_F(StraightLine, WithClippingIsCutToTheClipRectangle) {
  open_page(6, 6);
  set_clip_rectangle(2, 2, 4, 4);
  switch_clipping(true);
  draw_line(0, 3, 5, 3);
  draw_line(3, 5, 3, 0);
  draw_line(0, 1, 5, 1);
  draw_line(5, 0, 5, 5);
  draw_line(0, 4, 1, 4);  // beside the rectangle
  EXPECT_EQ(picture(), rows({"......", "......", "...1..", "..111.", "...1..", "......"}));
}

TEST_F(StraightLine, StaysOnThePageWhateverItsEnds) {
  open_page(4, 3);
  draw_line(INT32_MIN, 1, INT32_MAX, 1);
  draw_line(2, INT32_MAX, 2, INT32_MIN);
  draw_line(-5, -5, 10, -5);
  draw_line(9, -9, 9, 9);
  EXPECT_EQ(picture(), rows({"..1.", "1111", "..1."}));
}

// ---- Bresenham's steps

TEST_F(FastLine, StepsTheShorterWayWhereTheErrorIsAboveZero) {
  open_page(6, 3);
  draw_line(0, 0, 5, 2);
  EXPECT_EQ(picture(), rows({"11....", "..11..", "....11"}));
}

TEST_F(FastLine, StartsAtItsFirstPointSoThatItsWayBackMayDiffer) {
  open_page(5, 3);
  draw_line(0, 0, 4, 2);
  EXPECT_EQ(picture(), rows({"11...", "..11.", "....1"}));
  qqvers();
  draw_line(4, 2, 0, 0);
  EXPECT_EQ(picture(), rows({"1....", ".11..", "...11"}));
}

TEST_F(FastLine, StepsRowsWhereItIsSteep) {
  open_page(3, 5);
  draw_line(0, 0, 2, 4);
  EXPECT_EQ(picture(), rows({"1..", "1..", ".1.", ".1.", "..1"}));
  qqvers();
  draw_line(2, 0, 0, 4);
  EXPECT_EQ(picture(), rows({"..1", "..1", ".1.", ".1.", "1.."}));
}

TEST_F(FastLine, OfEqualSidesIsTheDiagonal) {
  open_page(3, 3);
  draw_line(2, 0, 0, 2);
  EXPECT_EQ(picture(), rows({"..1", ".1.", "1.."}));
}

TEST_F(FastLine, KeepsItsStepsWhereItCrossesThePage) {
  open_page(6, 3);
  // One row in two columns: rows -50 to 100, so that columns 0 and 1 share row 0.
  draw_line(-100, -50, 200, 100);
  EXPECT_EQ(picture(), rows({"11....", "..11..", "....11"}));
}

TEST_F(FastLine, KeepsItsStepsFromOneEndOfTheNumbersToTheOther) {
  open_page(3, 3);
  draw_line(INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX);
  EXPECT_EQ(picture(), rows({"1..", ".1.", "..1"}));
  qqvers();
  draw_line(INT32_MAX, -INT32_MAX, -INT32_MAX, INT32_MAX);
  EXPECT_EQ(picture(), rows({"1..", "...", "..."}));
}

// ---- Wide lines

TEST_F(WideLine, TakesTheSamePixelsInBothDirections) {
  open_page(5, 3);
  switch_clipping(true);
  draw_line(4, 2, 0, 0);
  EXPECT_EQ(picture(), rows({"11...", "..11.", "....1"}));
}

TEST_F(WideLine, PutsItsExtraPixelsRightAndLeftOfASteepLine) {
  open_page(6, 6);
  set_pen(2, 0, 0);
  draw_line(2, 1, 3, 4);
  EXPECT_EQ(picture(), rows({"......", "..11..", "..11..", "...11.", "...11.", "......"}));
  qqvers();
  set_pen(3, 0, 0);
  draw_line(2, 1, 3, 4);
  EXPECT_EQ(picture(), rows({"......", ".111..", ".111..", "..111.", "..111.", "......"}));
}

TEST_F(WideLine, PutsItsExtraPixelsBelowAndAboveAFlatLine) {
  open_page(6, 6);
  set_pen(3, 0, 0);
  draw_line(1, 2, 4, 3);
  EXPECT_EQ(picture(), rows({"......", ".11...", ".1111.", ".1111.", "...11.", "......"}));
}

TEST_F(WideLine, ChangesSidesWhetherOrNotThePixelWasInside) {
  open_page(6, 6);
  set_clip_rectangle(0, 0, 3, 5);
  set_pen(3, 0, 0);
  draw_line(2, 1, 3, 4);
  EXPECT_EQ(picture(), rows({"......", ".111..", ".111..", "..11..", "..11..", "......"}));
}

TEST_F(WideLine, OnAPalettePageHasExtraPixelsOnlyAroundACentreInside) {
  open_page(8, 8);
  set_clip_rectangle(3, 0, 7, 7);
  set_pen(3, 0, 0);
  draw_line(2, 1, 1, 6);
  std::string nothing;
  for (int i = 0; i < 8; i++)
    nothing += "........\n";
  EXPECT_EQ(picture(), nothing);
}

TEST_F(WideLine, OnAnRgbaPageHasExtraPixelsAroundACentreBesideTheClipColumns) {
  open_rgba_page(8, 8);
  set_clip_rectangle(3, 0, 7, 7);
  set_pen(3, 0, 0);
  draw_line(2, 1, 1, 6);  // column 2 in rows 1 to 3, then column 1
  EXPECT_EQ(picture(), rows({"........", "...#....", "...#....", "...#....", "........", "........",
                             "........", "........"}));
}

TEST_F(WideLine, OnAnRgbaPageHasExtraPixelsAroundACentreAboveTheClipRows) {
  open_rgba_page(8, 5);
  set_clip_rectangle(0, 3, 7, 4);
  set_pen(3, 0, 0);
  draw_line(1, 2, 6, 1);  // row 2 in columns 1 to 3, then row 1
  EXPECT_EQ(picture(), rows({"........", "........", "........", ".###....", "........"}));
}

TEST_F(WideLine, OnAnRgbaPageIsNotDrawnBeyondItsMainDirectionsClip) {
  open_rgba_page(4, 6);
  set_clip_rectangle(0, 2, 3, 3);
  set_pen(3, 0, 0);
  draw_line(1, 0, 2, 5);
  EXPECT_EQ(picture(), rows({"....", "....", "###.", ".###", "....", "...."}));
}

TEST_F(WideLine, WithAClipRectangleBeyondThePageStaysOnThePage) {
  open_page(4, 3);
  set_clip_rectangle(-100, -100, 100, 100);
  switch_clipping(true);
  set_pen(3, 0, 0);
  draw_line(-2, -1, 6, 3);
  // Two columns a row: columns 0 and 1 in row 0, 2 and 3 in row 1, each a row down and up.
  EXPECT_EQ(picture(), rows({"1111", "1111", "..11"}));
}

}  // namespace
}  // namespace quorix::testing

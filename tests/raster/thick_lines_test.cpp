// SPDX-License-Identifier: MIT
// Lines of width 4 and more: their quadrilaterals, joins and caps, and discs.

#include "raster/raster.h"
#include "tests/raster/raster_page.h"

namespace quorix::testing {
namespace {

using ThickLine = RasterTest;
using Join = RasterTest;
using Cap = RasterTest;
using Disc = RasterTest;

// ---- Segments

TEST_F(ThickLine, OfWidthFourAlongARowIsFourRowsOneMoreBelow) {
  open_page(30, 100);
  set_pen(4, 0, 2);
  draw_polyline({{10, 50}, {20, 50}});
  std::vector<std::string> lines(100, row(30));
  for (size_t y = 49; y <= 52; y++)
    lines[y] = row(30, 10, 20);
  EXPECT_EQ(picture(), rows(lines));
}

TEST_F(ThickLine, OfWidthFourAlongAColumnIsFiveColumns) {
  open_page(100, 30);
  set_pen(4, 0, 2);
  draw_polyline({{50, 10}, {50, 20}});
  std::vector<std::string> lines(30, row(100));
  for (size_t y = 10; y <= 20; y++)
    lines[y] = row(100, 48, 52);
  EXPECT_EQ(picture(), rows(lines));
}

// Its angle is the stored quarter turn, not pi / 2, so its ends are not quite level.
TEST_F(ThickLine, DrawnUpwardIsOnePixelWideInItsEndRows) {
  open_page(20, 30);
  set_pen(4, 0, 2);
  draw_polyline({{10, 20}, {10, 10}});
  std::vector<std::string> lines(30, row(20));
  lines[10] = row(20, 8, 8);
  for (size_t y = 11; y <= 19; y++)
    lines[y] = row(20, 8, 12);
  lines[20] = row(20, 12, 12);
  EXPECT_EQ(picture(), rows(lines));
}

TEST_F(ThickLine, OfWidthFiveAlongARowIsFiveRows) {
  open_page(12, 9);
  set_pen(5, 0, 2);
  draw_polyline({{3, 4}, {8, 4}});
  // From 1.5 to 6.5: rows 2 to 6.
  std::vector<std::string> lines(9, row(12));
  for (size_t y = 2; y <= 6; y++)
    lines[y] = row(12, 3, 8);
  EXPECT_EQ(picture(), rows(lines));
}

TEST_F(ThickLine, IsClippedWhetherOrNotClippingIsOn) {
  open_page(12, 9);
  set_clip_rectangle(5, 3, 6, 4);
  set_pen(5, 2, 2);
  draw_polyline({{3, 4}, {8, 4}});
  std::vector<std::string> lines(9, row(12));
  lines[3] = row(12, 5, 6);
  lines[4] = row(12, 5, 6);
  EXPECT_EQ(picture(), rows(lines));
}

TEST_F(ThickLine, OnAnRgbaPageHasColourAndAlpha) {
  open_rgba_page(12, 9);
  set_option(19, 33);
  qqvclr(packed_rgb(1, 2, 3));
  set_pen(4, 0, 2);
  draw_polyline({{3, 4}, {8, 4}});
  EXPECT_EQ(rgba_at(3, 3), "01020321");
  EXPECT_EQ(rgba_at(8, 6), "01020321");
  EXPECT_EQ(rgba_at(8, 2), "00000000");
}

// ---- Joins: right, then down, width 4

std::vector<std::string> corner_without_its_join() {
  std::vector<std::string> lines(14, row(16));
  lines[3] = row(16, 3, 9);
  for (size_t y = 4; y <= 6; y++)
    lines[y] = row(16, 3, 11);
  for (size_t y = 7; y <= 10; y++)
    lines[y] = row(16, 7, 11);
  return lines;
}

void draw_corner(int32_t join) {
  open_page(16, 14);
  set_pen(4, 0, join);
  draw_polyline({{3, 4}, {9, 4}, {9, 10}});
}

TEST_F(Join, OfAnUnknownKindLeavesTheCornerOpen) {
  draw_corner(3);
  EXPECT_EQ(picture(), rows(corner_without_its_join()));
}

TEST_F(Join, BevelFillsATriangle) {
  draw_corner(2);
  std::vector<std::string> lines = corner_without_its_join();
  lines[3] = row(16, 3, 10);  // the slope from (9, 2) to (11, 4)
  EXPECT_EQ(picture(), rows(lines));
}

TEST_F(Join, MiterFillsTheWholeCorner) {
  draw_corner(0);
  std::vector<std::string> lines = corner_without_its_join();
  lines[3] = row(16, 3, 11);
  EXPECT_EQ(picture(), rows(lines));
}

TEST_F(Join, RoundPutsADiscOnTheCorner) {
  draw_corner(1);
  std::vector<std::string> lines = corner_without_its_join();
  lines[2] = row(16, 9, 9);
  lines[3] = row(16, 3, 11);
  EXPECT_EQ(picture(), rows(lines));
}

// A square whose last point is its first; the corner there is that of the last with the first
// segment.
void draw_square(int32_t cap, int32_t join) {
  open_page(18, 18);
  set_pen(4, cap, join);
  draw_polyline({{4, 4}, {12, 4}, {12, 12}, {4, 12}, {4, 4}});
}

TEST_F(Join, MiterFillsTheCornerWhereALineCloses) {
  draw_square(0, 0);
  EXPECT_EQ(row_at(2), row(18));
  EXPECT_EQ(row_at(3), row(18, 2, 14));
}

TEST_F(Join, BevelFillsATriangleWhereALineCloses) {
  draw_square(0, 2);
  EXPECT_EQ(row_at(3), row(18, 3, 13));
}

TEST_F(Join, RoundPutsADiscWhereALineCloses) {
  draw_square(0, 1);
  EXPECT_EQ(index_at(4, 2), 1);
  EXPECT_EQ(index_at(3, 2), 0);
  EXPECT_EQ(index_at(2, 3), 1);
}

TEST_F(Join, OfAnUnknownKindLeavesTheCornerOpenWhereALineCloses) {
  draw_square(0, 7);
  EXPECT_EQ(row_at(3), row(18, 4, 12));
}

// Pixel (3, 4) lies in the upward side's end row, which is one pixel wide: only a cap reaches it.
TEST_F(Cap, IsNotDrawnOnAClosedLine) {
  draw_square(2, 0);
  EXPECT_EQ(index_at(2, 4), 1);
  EXPECT_EQ(index_at(3, 4), 0);
  EXPECT_EQ(index_at(4, 4), 1);
}

// ---- Caps

TEST_F(Cap, ButtEndsAtThePoint) {
  open_page(30, 20);
  set_pen(4, 0, 2);
  draw_polyline({{10, 10}, {20, 10}});
  EXPECT_EQ(row_at(10), row(30, 10, 20));
}

TEST_F(Cap, SquareGoesOnByHalfTheWidth) {
  open_page(30, 20);
  set_pen(4, 2, 2);
  draw_polyline({{10, 10}, {20, 10}});
  std::vector<std::string> lines(20, row(30));
  for (size_t y = 9; y <= 12; y++)
    lines[y] = row(30, 8, 22);
  EXPECT_EQ(picture(), rows(lines));
}

TEST_F(Cap, RoundIsADisc) {
  open_page(30, 20);
  set_pen(4, 1, 2);
  draw_polyline({{10, 10}, {20, 10}});
  std::vector<std::string> lines(20, row(30));
  lines[8] = row(30, 10, 10);
  lines[8][20] = '1';
  for (size_t y = 9; y <= 11; y++)
    lines[y] = row(30, 8, 22);
  lines[12] = row(30, 10, 20);
  EXPECT_EQ(picture(), rows(lines));
}

TEST_F(Cap, OfAnUnknownKindIsNone) {
  open_page(30, 20);
  set_pen(4, 3, 2);
  draw_polyline({{10, 10}, {20, 10}});
  EXPECT_EQ(row_at(10), row(30, 10, 20));
}

// The end of a single segment is built as if the line ran to the right.
TEST_F(Cap, SquareAtTheEndOfALineStraightDownPointsToTheRight) {
  open_page(20, 25);
  set_pen(4, 2, 2);
  draw_polyline({{10, 5}, {10, 15}});
  std::vector<std::string> lines(25, row(20));
  for (size_t y = 3; y <= 15; y++)
    lines[y] = row(20, 8, 12);
  for (size_t y = 16; y <= 17; y++)
    lines[y] = row(20, 10, 12);
  EXPECT_EQ(picture(), rows(lines));
}

TEST_F(Cap, SquareAtTheEndOfALineToTheLeftLiesWithinIt) {
  open_page(30, 20);
  set_pen(4, 2, 2);
  draw_polyline({{20, 10}, {10, 10}});
  EXPECT_EQ(row_at(10), row(30, 10, 22));
}

TEST_F(Cap, SquareAtTheEndOfAPolylineFollowsItsLastSegment) {
  open_page(20, 25);
  set_pen(4, 2, 3);
  draw_polyline({{10, 3}, {10, 8}, {10, 15}});
  EXPECT_EQ(row_at(17), row(20, 8, 12));
  EXPECT_EQ(index_at(10, 18), 0);
}

// ---- Where two lines meet

struct Meeting {
  int32_t found;
  double x;
  double y;
};

Meeting meeting(Point a, Point b, Point c, Point d) {
  Meeting m{-1, 99.0, 99.0};
  m.found = line_intersection(a, b, c, d, &m.x, &m.y);
  return m;
}

TEST(LineIntersection, OfTwoSlopesIsWhereTheyMeet) {
  const Meeting m = meeting({0, 0}, {1, 1}, {0, 4}, {1, 3});
  EXPECT_EQ(m.found, 1);
  EXPECT_EQ(m.x, 2.0);
  EXPECT_EQ(m.y, 2.0);
}

TEST(LineIntersection, OfSlopesCloserThanAThousandthIsNone) {
  EXPECT_EQ(meeting({0, 0}, {1, 0}, {0, 5}, {1, 5}).found, 0);
  // 0.001 as a double lies below the limit, which is 0.001 as a float.
  EXPECT_EQ(meeting({0, 0}, {1000, 0}, {0, 5}, {1000, 6}).found, 0);
  EXPECT_EQ(meeting({0, 0}, {1000, 0}, {0, 5}, {1000, 4}).found, 0);
  EXPECT_EQ(meeting({0, 0}, {1000, 0}, {0, 5}, {1000, 6.0001}).found, 1);
  EXPECT_EQ(meeting({0, 0}, {1, 0}, {0, 5}, {1, 5 + 0x1.0624dep-10}).found, 1);  // the limit
}

TEST(LineIntersection, WithAVerticalLineLiesOnIt) {
  const Meeting second = meeting({0, 1}, {2, 2}, {6, 0}, {6, 9});
  EXPECT_EQ(second.found, 1);
  EXPECT_EQ(second.x, 6.0);
  EXPECT_EQ(second.y, 4.0);
  const Meeting first = meeting({6, 0}, {6, 9}, {0, 1}, {2, 2});
  EXPECT_EQ(first.found, 1);
  EXPECT_EQ(first.x, 6.0);
  EXPECT_EQ(first.y, 4.0);
}

TEST(LineIntersection, OfTwoVerticalLinesIsNone) {
  const Meeting m = meeting({1, 0}, {1, 5}, {2, 0}, {2, 5});
  EXPECT_EQ(m.found, 0);
}

// ---- Discs

TEST_F(Disc, OfRadiusThreeHasTheseRows) {
  open_page(11, 9);
  draw_disc(output_context, 5, 4, 3, 0);
  // Half widths 0, sqrt(5), sqrt(8), 3.
  EXPECT_EQ(picture(),
            rows({"...........", ".....1.....", "...11111...", "..1111111..", "..1111111..",
                  "..1111111..", "...11111...", ".....1.....", "..........."}));
}

TEST_F(Disc, CanBeItsUpperHalf) {
  open_page(11, 9);
  draw_disc(output_context, 5, 4, 3, 1);
  EXPECT_EQ(picture(),
            rows({"...........", ".....1.....", "...11111...", "..1111111..", "..1111111..",
                  "...........", "...........", "...........", "..........."}));
}

TEST_F(Disc, OfRadiusZeroIsOnePixelAndOfANegativeOneNone) {
  open_page(5, 3);
  draw_disc(output_context, 2, 1, 0, 0);
  draw_disc(output_context, 4, 1, -1, 0);
  EXPECT_EQ(picture(), rows({".....", "..1..", "....."}));
}

TEST_F(Disc, LosesTheMirrorOfEveryRowAboveTheClipRectangle) {
  open_page(11, 10);
  set_clip_rectangle(0, 5, 10, 9);
  draw_disc(output_context, 5, 6, 3, 0);
  // Rows 3 and 4 are above, so rows 9 and 8 are missing.
  EXPECT_EQ(picture(),
            rows({"...........", "...........", "...........", "...........", "...........",
                  "..1111111..", "..1111111..", "..1111111..", "...........", "..........."}));
}

TEST_F(Disc, CentredAboveTheClipRectangleIsNotDrawnAtAll) {
  open_page(11, 10);
  set_clip_rectangle(0, 5, 10, 9);
  draw_disc(output_context, 5, 4, 4, 0);
  EXPECT_EQ(page_content(), std::vector<uint8_t>(110, 0));
}

TEST_F(Disc, FarAboveThePageReachesItWithItsLowestRows) {
  open_page(5, 4);
  set_clip_rectangle(INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX);
  // The lowest row is one pixel wide, the next one more than 80,000.
  qqvsym(21, 2, -999999998, 2000000000);
  EXPECT_EQ(picture(), rows({"11111", "11111", "..1..", "....."}));
}

TEST_F(Disc, IsCutAtTheClipColumnsAndLowerRows) {
  open_page(11, 9);
  set_clip_rectangle(4, 0, 6, 5);
  draw_disc(output_context, 5, 4, 3, 0);
  EXPECT_EQ(picture(),
            rows({"...........", ".....1.....", "....111....", "....111....", "....111....",
                  "....111....", "...........", "...........", "..........."}));
}

}  // namespace
}  // namespace quorix::testing

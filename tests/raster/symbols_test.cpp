// SPDX-License-Identifier: MIT
// All plot markers by their pictures, and how pen and clipping act on them.

#include "tests/raster/raster_page.h"

namespace quorix::testing {
namespace {

using Symbol = RasterTest;

// A page of 11 by 11 with the marker of size 8 in its middle: from 1 to 9 both ways.
std::string symbol_picture(int32_t symbol) {
  qqwfree();
  open_page(11, 11);
  qqvsym(symbol, 5, 5, 8);
  return picture();
}

std::string framed(const std::vector<std::string> &lines) {
  std::string text = "...........\n";
  for (const std::string &line : lines) {
    text += '.';
    text += line;
    text += ".\n";
  }
  return text + "...........\n";
}

TEST_F(Symbol, ZeroIsASquare) {
  EXPECT_EQ(symbol_picture(0),
            framed({"111111111", "1.......1", "1.......1", "1.......1", "1.......1", "1.......1",
                    "1.......1", "1.......1", "111111111"}));
}

TEST_F(Symbol, OneIsAnOctagon) {
  EXPECT_EQ(symbol_picture(1),
            framed({"..11111..", ".1.....1.", "1.......1", "1.......1", "1.......1", "1.......1",
                    "1.......1", ".1.....1.", "..11111.."}));
}

TEST_F(Symbol, TwoIsATriangleUp) {
  EXPECT_EQ(symbol_picture(2),
            framed({"....1....", "....1....", "...1.1...", "...1.1...", "..1...1..", "..1...1..",
                    ".1.....1.", ".1.....1.", "111111111"}));
}

TEST_F(Symbol, ThreeIsAPlus) {
  EXPECT_EQ(symbol_picture(3),
            framed({"....1....", "....1....", "....1....", "....1....", "111111111", "....1....",
                    "....1....", "....1....", "....1...."}));
}

TEST_F(Symbol, FourIsACross) {
  EXPECT_EQ(symbol_picture(4),
            framed({"1.......1", ".1.....1.", "..1...1..", "...1.1...", "....1....", "...1.1...",
                    "..1...1..", ".1.....1.", "1.......1"}));
}

TEST_F(Symbol, FiveIsADiamond) {
  EXPECT_EQ(symbol_picture(5),
            framed({"....1....", "...1.1...", "..1...1..", ".1.....1.", "1.......1", ".1.....1.",
                    "..1...1..", "...1.1...", "....1...."}));
}

// Its sides are drawn from above, so they are no mirror of the triangle up.
TEST_F(Symbol, SixIsATriangleDown) {
  EXPECT_EQ(symbol_picture(6),
            framed({"111111111", "1.......1", ".1.....1.", ".1.....1.", "..1...1..", "..1...1..",
                    "...1.1...", "...1.1...", "....1...."}));
}

// The picture in which a pixel is set where it is set in any of the two.
std::string both(const std::string &a, const std::string &b) {
  std::string text = a;
  for (size_t i = 0; i < text.size(); i++) {
    if (b[i] == '1') text[i] = '1';
  }
  return text;
}

TEST_F(Symbol, SevenToFourteenCombineTwoStrokes) {
  const struct {
    int32_t symbol;
    int32_t first;
    int32_t second;
  } cases[] = {{7, 0, 4},  {8, 3, 4},  {9, 3, 5},  {10, 3, 1},
               {11, 2, 6}, {12, 3, 0}, {13, 4, 1}, {14, 0, 2}};
  for (const auto &c : cases) {
    const std::string expected = both(symbol_picture(c.first), symbol_picture(c.second));
    EXPECT_EQ(symbol_picture(c.symbol), expected) << c.symbol;
  }
}

TEST_F(Symbol, FifteenIsACircle) {
  EXPECT_EQ(symbol_picture(15),
            framed({"...111...", ".11...11.", ".1.....1.", "1.......1", "1.......1", "1.......1",
                    ".1.....1.", ".11...11.", "...111..."}));
}

TEST_F(Symbol, SixteenIsAFilledSquare) {
  const std::string full = "111111111";
  EXPECT_EQ(symbol_picture(16), framed({full, full, full, full, full, full, full, full, full}));
}

TEST_F(Symbol, SeventeenIsAFilledOctagon) {
  EXPECT_EQ(symbol_picture(17),
            framed({"..11111..", ".1111111.", "111111111", "111111111", "111111111", "111111111",
                    "111111111", ".1111111.", "..11111.."}));
}

TEST_F(Symbol, EighteenIsAFilledTriangleUp) {
  EXPECT_EQ(symbol_picture(18),
            framed({"....1....", "....11...", "...111...", "...1111..", "..11111..", "..111111.",
                    ".1111111.", ".11111111", "111111111"}));
}

TEST_F(Symbol, NineteenIsAFilledDiamond) {
  EXPECT_EQ(symbol_picture(19),
            framed({"....1....", "...111...", "..11111..", ".1111111.", "111111111", ".1111111.",
                    "..11111..", "...111...", "....1...."}));
}

TEST_F(Symbol, TwentyIsAFilledTriangleDown) {
  EXPECT_EQ(symbol_picture(20),
            framed({"111111111", "111111111", ".1111111.", ".1111111.", "..11111..", "..11111..",
                    "...111...", "...111...", "....1...."}));
}

TEST_F(Symbol, TwentyOneIsADisc) {
  EXPECT_EQ(symbol_picture(21),
            framed({"....1....", ".1111111.", ".1111111.", "111111111", "111111111", "111111111",
                    ".1111111.", ".1111111.", "....1...."}));
}

TEST_F(Symbol, TwentyTwoIsAnUpperHalfCircleWithItsBase) {
  EXPECT_EQ(symbol_picture(22),
            framed({"...111...", ".11...11.", ".1.....1.", "1.......1", "111111111", ".........",
                    ".........", ".........", "........."}));
}

TEST_F(Symbol, TwentyThreeIsAnUpperHalfDisc) {
  EXPECT_EQ(symbol_picture(23),
            framed({"....1....", ".1111111.", ".1111111.", "111111111", "111111111", ".........",
                    ".........", ".........", "........."}));
}

TEST_F(Symbol, OfAnyOtherNumberIsNothing) {
  for (const int32_t symbol : {-1, 24, 1000, INT32_MIN}) {
    EXPECT_EQ(symbol_picture(symbol).find('1'), std::string::npos) << symbol;
  }
}

TEST_F(Symbol, OfAnOddSizeIsRoundedDown) {
  open_page(11, 11);
  qqvsym(0, 5, 5, 3);
  EXPECT_EQ(row_at(4), "....111....");
  EXPECT_EQ(row_at(6), "....111....");
  EXPECT_EQ(row_at(3), row(11));
}

TEST_F(Symbol, OfAnOctagonsSmallSizeRoundsItsShortSideDown) {
  open_page(11, 11);
  qqvsym(1, 5, 5, 6);  // 3 across, 1 along
  EXPECT_EQ(row_at(2), "....111....");
  EXPECT_EQ(row_at(3), "...1...1...");
  EXPECT_EQ(row_at(4), "..1.....1..");
}

TEST_F(Symbol, OfSizeOneIsOnePixelWhereItHasAStrokeOrDisc) {
  for (int32_t symbol = 0; symbol <= 23; symbol++) {
    qqwfree();
    open_page(3, 3);
    qqvsym(symbol, 1, 1, 1);
    EXPECT_EQ(picture(), rows({"...", ".1.", "..."})) << symbol;
  }
}

TEST_F(Symbol, OfANegativeSizeIsTurnedOver) {
  open_page(11, 11);
  qqvsym(2, 5, 5, -8);
  const std::string turned = picture();
  EXPECT_EQ(turned.substr(12, 11), ".111111111.");
  EXPECT_EQ(turned.substr(9 * 12, 11), ".....1.....");
  qqvers();
  qqvsym(15, 5, 5, -8);  // a circle plots one round of its octants
  EXPECT_EQ(row_at(1), ".....1.....");
  EXPECT_EQ(row_at(5), ".1.......1.");
  EXPECT_EQ(row_at(9), ".....1.....");
  EXPECT_EQ(row_at(2), row(11));
  qqvers();
  qqvsym(21, 5, 5, -8);
  EXPECT_EQ(picture().find('1'), std::string::npos);
}

TEST_F(Symbol, IsClippedThoughClippingIsOffAndLeavesItOff) {
  open_page(11, 11);
  set_clip_rectangle(4, 0, 10, 5);
  switch_clipping(false);
  for (int32_t symbol = 0; symbol <= 23; symbol++) {
    qqvsym(symbol, 5, 5, 8);
    EXPECT_EQ(output_context->page.clip_on, 0) << symbol;
  }
  for (int32_t y = 0; y < 11; y++) {
    for (int32_t x = 0; x < 11; x++) {
      if (x < 4 || y > 5) {
        EXPECT_EQ(index_at(x, y), 0) << x << " " << y;
      }
    }
  }
  EXPECT_EQ(index_at(5, 5), 1);
}

TEST_F(Symbol, LeavesClippingOn) {
  open_page(11, 11);
  switch_clipping(true);
  qqvsym(3, 5, 5, 8);
  EXPECT_EQ(output_context->page.clip_on, 1);
}

TEST_F(Symbol, HasThePensWidth) {
  open_page(11, 11);
  set_pen(2, 0, 0);
  qqvsym(3, 5, 5, 4);
  EXPECT_EQ(picture(), rows({"...........", "...........", "...........", ".....11....",
                             ".....11....", "...11111...", "...11111...", ".....11....",
                             "...........", "...........", "..........."}));
}

TEST_F(Symbol, OfACircleGrowsByRowsAboveAndBelowAndByColumnsAtTheSides) {
  open_page(7, 7);
  set_pen(2, 0, 0);
  qqvsym(15, 3, 3, 1);
  EXPECT_EQ(picture(),
            rows({".......", ".......", ".......", "...11..", "...1...", ".......", "......."}));
  qqvers();
  set_pen(3, 0, 0);
  qqvsym(15, 3, 3, 1);
  EXPECT_EQ(picture(),
            rows({".......", ".......", "...1...", "..111..", "...1...", ".......", "......."}));
}

TEST_F(Symbol, OfAHalfCircleHasABaseOfThePensWidth) {
  open_page(7, 9);
  set_pen(5, 0, 0);
  qqvsym(22, 3, 4, 1);
  // The point grows to rows 2 to 6 and columns 1 to 5, the base of one pixel to rows 2 to 6.
  EXPECT_EQ(picture(), rows({".......", ".......", "...1...", "...1...", ".11111.", "...1...",
                             "...1...", ".......", "......."}));
}

TEST_F(Symbol, ChangesSidesOfACircleWhetherOrNotThePixelWasInside) {
  open_page(7, 7);
  set_clip_rectangle(0, 0, 6, 3);
  set_pen(3, 0, 0);
  qqvsym(15, 3, 3, 1);
  EXPECT_EQ(picture(),
            rows({".......", ".......", "...1...", "..111..", ".......", ".......", "......."}));
}

TEST_F(Symbol, IsDrawnOverTheLinesGatheredBefore) {
  open_page(5, 5);
  qqvlin(0, 2, 4, 2);
  qqvsym(-1, 0, 0, 1);
  EXPECT_EQ(picture_without_flush(), rows({".....", ".....", "11111", ".....", "....."}));
}

TEST_F(Symbol, LeavesThePenPosition) {
  open_page(5, 5);
  qqvdrw(0, 0, 3);
  qqvsym(3, 2, 2, 2);
  qqvdrw(4, 0, 2);
  EXPECT_EQ(picture(), rows({"11111", "..1..", ".111.", "..1..", "....."}));
}

TEST_F(Symbol, OnAnRgbaPageHasColourAndAlpha) {
  for (int32_t symbol = 0; symbol <= 23; symbol++) {
    qqwfree();
    open_rgba_page(3, 3);
    set_option(19, 40);
    qqvclr(packed_rgb(1, 2, 3));
    qqvsym(symbol, 1, 1, 1);
    EXPECT_EQ(rgba_at(1, 1), "01020328") << symbol;
    EXPECT_EQ(rgba_at(0, 1), "00000000") << symbol;
  }
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
// Gathering pen movements, what draws them, and which renderer does.

#include <functional>

#include "raster/raster.h"
#include "tests/raster/raster_page.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

using Polyline = RasterTest;
using Dot = RasterTest;
using Renderer = RasterTest;

// ---- Gathering

TEST_F(Polyline, ADrawToWhereThePenIsMakesADot) {
  open_page(9, 9);
  qqvdrw(5, 5, 3);
  qqvdrw(5, 5, 2);
  EXPECT_EQ(output_context->accumulator.poly_count, 1);
  EXPECT_EQ(output_context->accumulator.poly_pen_up, 0);
  const std::vector<uint32_t> table(256, 0x010101);
  qqvvlt(1, table.data());  // draws what is gathered
  EXPECT_EQ(picture_without_flush(),
            rows({".........", ".........", ".........", ".........", ".........", ".....1...",
                  ".........", ".........", "........."}));
}

TEST_F(Polyline, ADrawWithoutAStartPointDrawsNothingLaterOrEver) {
  open_page(5, 5);
  qqvdrw(1, 1, 2);
  EXPECT_EQ(output_context->accumulator.poly_count, 0);
  EXPECT_EQ(output_context->accumulator.poly_pen_up, 0);
  qqvdrw(3, 3, 2);
  qqvdrw(2, 2, 3);
  EXPECT_EQ(picture(), rows({".....", ".....", ".....", ".....", "....."}));
}

TEST_F(Polyline, ALoneMoveDrawsNothing) {
  open_page(3, 1);
  qqvdrw(1, 0, 3);
  qqvdrw(2, 0, 3);
  EXPECT_EQ(picture(), rows({"..."}));
}

TEST_F(Polyline, EveryCodeButTwoMoves) {
  for (const int32_t code : {0, 1, 3, 4, -2, 1000}) {
    open_page(4, 1);
    qqvdrw(0, 0, code);
    qqvdrw(1, 0, 2);
    qqvdrw(3, 0, code);
    EXPECT_EQ(picture_without_flush(), rows({"11.."})) << code;
    EXPECT_EQ(output_context->accumulator.poly_count, 1);
    EXPECT_EQ(output_context->accumulator.poly_pen_up, 1);
  }
}

TEST_F(Polyline, ALineIsAMoveAndADraw) {
  open_page(6, 2);
  qqvlin(1, 1, 4, 1);
  EXPECT_EQ(output_context->accumulator.poly_count, 2);
  EXPECT_EQ(picture(), rows({"......", ".1111."}));
  qqvdrw(4, 0, 2);
  EXPECT_EQ(picture(), rows({"....1.", ".1111."}));
}

TEST_F(Polyline, ALineOfOnePointIsADot) {
  open_page(3, 1);
  qqvlin(1, 0, 1, 0);
  EXPECT_EQ(picture(), rows({".1."}));
}

TEST_F(Polyline, KeepsThePenPositionAfterAFlush) {
  open_page(6, 4);
  qqvdrw(1, 1, 3);
  qqvdrw(4, 1, 2);
  qqvclr(2);
  EXPECT_EQ(output_context->accumulator.poly_count, 1);
  EXPECT_EQ(output_context->accumulator.poly_pen_up, 1);
  EXPECT_EQ(output_context->accumulator.poly_x[0], 4);
  qqvdrw(4, 3, 2);
  EXPECT_EQ(picture(), rows({"......", ".1112.", "....2.", "....2."}));
}

TEST_F(Polyline, AFlushWithoutPointsOrWithALoneMoveDoesNothing) {
  open_page(3, 1);
  flush_raster(output_context);
  EXPECT_EQ(output_context->accumulator.poly_count, 0);
  qqvdrw(1, 0, 3);
  flush_raster(output_context);
  EXPECT_EQ(output_context->accumulator.poly_count, 1);
  EXPECT_EQ(picture_without_flush(), rows({"..."}));
}

void draw_zigzag(int32_t first, int32_t last) {
  for (int32_t i = first; i <= last; i++)
    qqvdrw(i, i % 2, 2);
}

TEST_F(Polyline, AHundredAndFiftyCallsDrawHundredPointsAndThenFiftyOne) {
  open_page(160, 2);
  qqvdrw(0, 0, 3);
  draw_zigzag(1, 98);
  EXPECT_EQ(output_context->accumulator.poly_count, 99);
  EXPECT_EQ(picture_without_flush(), rows({row(160), row(160)}));
  draw_zigzag(99, 99);  // the hundredth point draws all, and is the first of the next hundred
  EXPECT_EQ(output_context->accumulator.poly_count, 1);
  EXPECT_EQ(output_context->accumulator.poly_pen_up, 1);
  EXPECT_EQ(output_context->accumulator.poly_x[0], 99);
  std::string even;
  std::string odd;
  for (int32_t i = 0; i < 160; i++) {
    even += i <= 99 && i % 2 == 0 ? '1' : '.';
    odd += i <= 99 && i % 2 == 1 ? '1' : '.';
  }
  EXPECT_EQ(picture_without_flush(), rows({even, odd}));
  draw_zigzag(100, 149);
  EXPECT_EQ(output_context->accumulator.poly_count, 51);
  for (int32_t i = 100; i <= 149; i++)
    (i % 2 == 0 ? even : odd)[static_cast<size_t>(i)] = '1';
  EXPECT_EQ(picture(), rows({even, odd}));
}

TEST_F(Polyline, AMoveAndAHundredAndFiftyDrawsLeaveFiftyTwoPoints) {
  open_page(160, 2);
  qqvdrw(0, 0, 3);
  draw_zigzag(1, 150);
  EXPECT_EQ(output_context->accumulator.poly_count, 52);
}

TEST_F(Polyline, AFullAccumulatorLeavesThePenUpAtItsLastPoint) {
  open_page(160, 2);
  qqvdrw(0, 0, 3);
  draw_zigzag(1, 99);
  qqvers();
  EXPECT_EQ(picture(), rows({row(160), row(160)}));
  qqvdrw(99, 1, 2);  // the same point again: a dot
  EXPECT_EQ(output_context->accumulator.poly_pen_up, 0);
  EXPECT_EQ(picture(), rows({row(160), row(160, 99, 99)}));
}

// ---- Who draws what is gathered

struct NamedCall {
  const char *name;
  std::function<void()> call;
};

const NamedCall drawing_calls[] = {
    {"qqvers", [] { qqvers(); }},
    {"qqvclr", [] { qqvclr(3); }},
    {"qqvvlt",
     [] {
       const uint32_t table[9] = {};
       qqvvlt(0, table);
     }},
    {"qqvcrp",
     [] {
       int32_t box[4];
       qqvcrp(&box[0], &box[1], &box[2], &box[3]);
     }},
    {"qqvfll", [] { qqvfll(5, 5, 4, 4, 1); }},
    {"qqvpix", [] { qqvpix(0, 0, 1); }},
    {"qqvpol", [] { fill_polygon_of({}, {}); }},
    {"qqvsym", [] { qqvsym(-1, 0, 0, 1); }},
    {"qqvftr",
     [] {
       const int32_t far[] = {-5, -5, -5};
       qqvftr(far, far, 1);
     }},
    {"qqvwpx", [] { qqvwpx(-1, -1, 1); }},
    {"qqvrow",
     [] {
       const uint8_t row[1] = {1};
       qqvrow(row, 0, 0, 1);
     }},
    {"qqvrow of nothing", [] { qqvrow(nullptr, 0, 0, 0); }},
    {"qqvrpx",
     [] {
       int32_t colour = 0;
       qqvrpx(-1, -1, &colour);
     }},
    {"qqvrdr",
     [] {
       uint8_t pixel = 0;
       qqvrdr(&pixel, 0, 0, 1, 1);
     }},
    {"qqvfil",
     [] {
       const MemoryFiles files;
       int32_t status = 0;
       qqvfil("picture", 0, &status);
     }},
    {"option 11", [] { set_option(11, 0); }},
    {"option 26", [] { set_option(26, 1); }},
    {"option 27", [] { set_option(27, 1); }},
    {"option 28", [] { set_option(28, 1); }},
    {"option 33", [] { set_option(33, 1); }},
};

TEST_F(Polyline, IsDrawnBeforeEverythingThatChangesOrReadsThePage) {
  for (const NamedCall &drawing : drawing_calls) {
    open_page(4, 1);
    qqvlin(1, 0, 2, 0);
    drawing.call();
    EXPECT_EQ(output_context->accumulator.poly_count, 1) << drawing.name;
    EXPECT_EQ(output_context->accumulator.poly_x[0], 2) << drawing.name;
    qqwfree();
  }
}

const NamedCall other_calls[] = {
    {"qqvptr",
     [] {
       uint8_t *raster = nullptr;
       qqvptr(&raster);
     }},
    {"qqvwin",
     [] {
       const int32_t zero = 0;
       const int32_t four = 4;
       const int32_t one = 1;
       int32_t status = 0;
       qqvwin(&zero, &zero, &four, &one, &status);
     }},
    {"qqvpix off the clip rectangle", [] { qqvpix(4, 0, 1); }},
    {"option 12", [] { set_option(12, 0); }},
    {"option 13", [] { set_option(13, 3); }},
    {"option 14", [] { set_option(14, 0); }},
    {"option 19", [] { set_option(19, 255); }},
    {"option 32", [] { set_option(32, -1); }},
    {"option 34", [] { set_option(34, 1); }},
    {"option 99", [] { set_option(99, 0); }},
    {"a read of option 26",
     [] {
       int32_t value = 0;
       qqwwid(26, &value, 0);
     }},
};

TEST_F(Polyline, StaysGatheredThroughEverythingElse) {
  for (const NamedCall &other : other_calls) {
    open_page(4, 1);
    qqvlin(1, 0, 2, 0);
    other.call();
    EXPECT_EQ(output_context->accumulator.poly_count, 2) << other.name;
    EXPECT_EQ(picture(), rows({".11."})) << other.name;
    qqwfree();
  }
}

TEST_F(Polyline, IsDrawnWithTheAlphaOfTheMomentItIsDrawn) {
  open_rgba_page(3, 1);
  qqvlin(0, 0, 2, 0);
  set_option(19, 7);
  EXPECT_EQ(rgba_at(1, 0), "ffffff07");
}

// ---- Dots

TEST_F(Dot, OfWidthOneIsOnePixelWhateverTheCap) {
  for (const int32_t cap : {0, 1, 2, 3}) {
    open_page(3, 3);
    set_pen(1, cap, 0);
    draw_polyline({{1, 1}, {1, 1}});
    EXPECT_EQ(picture(), rows({"...", ".1.", "..."})) << cap;
  }
}

TEST_F(Dot, OfButtCapIsOnePixelWhateverTheWidth) {
  open_page(3, 3);
  set_pen(9, 0, 0);
  draw_polyline({{1, 1}, {1, 1}});
  EXPECT_EQ(picture(), rows({"...", ".1.", "..."}));
}

TEST_F(Dot, OfAWidthBelowOneIsOnePixel) {
  for (const int32_t width : {0, -1, -7}) {
    open_page(3, 3);
    set_pen(width, 2, 0);
    draw_polyline({{1, 1}, {1, 1}});
    EXPECT_EQ(picture(), rows({"...", ".1.", "..."})) << width;
  }
}

TEST_F(Dot, OfSquareCapStandsHalfItsWidthToTheLeftAndAbove) {
  open_page(6, 5);
  set_pen(3, 2, 0);
  draw_polyline({{2, 2}, {2, 2}});
  EXPECT_EQ(picture(), rows({"......", ".111..", ".111..", ".111..", "......"}));
  qqvers();
  set_pen(4, 2, 0);
  draw_polyline({{2, 2}, {2, 2}});
  EXPECT_EQ(picture(), rows({"1111..", "1111..", "1111..", "1111..", "......"}));
}

TEST_F(Dot, OfSquareCapIsCutAtTheClipRectangle) {
  open_page(6, 5);
  set_clip_rectangle(2, 1, 3, 2);
  set_pen(4, 2, 0);
  draw_polyline({{2, 2}, {2, 2}});
  EXPECT_EQ(picture(), rows({"......", "..11..", "..11..", "......", "......"}));
}

TEST_F(Dot, OfAnyOtherCapIsADiscOfHalfTheWidth) {
  for (const int32_t cap : {1, 3, -1}) {
    open_page(7, 7);
    set_pen(5, cap, 0);
    draw_polyline({{3, 3}, {3, 3}});
    // Radius 2: half widths 0, sqrt(3), 2.
    EXPECT_EQ(picture(),
              rows({".......", "...1...", ".11111.", ".11111.", ".11111.", "...1...", "......."}))
        << cap;
  }
}

TEST_F(Dot, OutsideTheClipRectangleIsNotDrawnThoughClippingIsOff) {
  open_page(4, 1);
  set_clip_rectangle(2, 0, 3, 0);
  draw_polyline({{1, 0}, {1, 0}});
  EXPECT_EQ(picture(), rows({"...."}));
  draw_polyline({{2, 0}, {2, 0}});
  EXPECT_EQ(picture(), rows({"..1."}));
}

TEST_F(Dot, OnAnRgbaPageHasTheSameShapes) {
  open_rgba_page(7, 4);
  set_pen(4, 2, 0);
  draw_polyline({{3, 2}, {3, 2}});
  EXPECT_EQ(picture(), rows({".####..", ".####..", ".####..", ".####.."}));
  qqvers();
  set_pen(2, 1, 0);
  draw_polyline({{3, 2}, {3, 2}});
  // Radius 1: half widths 0 and 1.
  EXPECT_EQ(picture(), rows({".......", "...#...", "..###..", "...#..."}));
}

// ---- The renderer by width, mode and clipping

TEST_F(Renderer, OfWidthFourAndMoreIsTheThickOneInBothModes) {
  for (const bool rgba : {false, true}) {
    if (rgba) {
      open_rgba_page(8, 8);
    } else {
      open_page(8, 8);
    }
    set_pen(4, 0, 0);
    draw_polyline({{2, 3}, {5, 3}});
    const std::string line = rgba ? "..####.." : "..1111..";
    EXPECT_EQ(picture(),
              rows({"........", "........", line, line, line, line, "........", "........"}));
  }
}

TEST_F(Renderer, OfSmoothLinesNeedsRgbaAndWidthOne) {
  open_rgba_page(5, 3);
  set_option(34, 2);
  draw_polyline({{0, 0}, {4, 2}});
  EXPECT_EQ(rgba_at(1, 0), "808080ff");
  qqvers();
  set_option(26, 2);
  draw_polyline({{0, 0}, {4, 2}});
  EXPECT_EQ(rgba_at(1, 0), "ffffffff");
  qqvers();
  set_option(26, 0);
  draw_polyline({{0, 0}, {4, 2}});
  EXPECT_EQ(rgba_at(1, 0), "ffffffff");
  qqvers();
  set_option(26, 1);
  set_option(34, 1);
  draw_polyline({{0, 0}, {4, 2}});
  EXPECT_EQ(rgba_at(1, 0), "ffffffff");
}

TEST_F(Renderer, WithoutClippingIsTheFastOneForWidthsBelowTwo) {
  for (const int32_t width : {1, 0, -4}) {
    open_page(6, 3);
    set_clip_rectangle(2, 0, 3, 2);
    set_option(26, width);
    draw_polyline({{0, 0}, {5, 2}});
    EXPECT_EQ(picture(), rows({"11....", "..11..", "....11"})) << width;
  }
}

TEST_F(Renderer, WithClippingStopsAtTheClipRectangle) {
  open_page(6, 3);
  set_clip_rectangle(1, 0, 3, 2);
  switch_clipping(true);
  draw_polyline({{0, 0}, {5, 2}});
  EXPECT_EQ(picture(), rows({".1....", "..11..", "......"}));
}

TEST_F(Renderer, OfWidthTwoStopsAtTheClipRectangleWithoutClipping) {
  for (const bool rgba : {false, true}) {
    if (rgba) {
      open_rgba_page(6, 4);
    } else {
      open_page(6, 4);
    }
    set_clip_rectangle(1, 0, 3, 3);
    set_option(26, 2);
    draw_polyline({{0, 0}, {5, 2}});
    EXPECT_EQ(picture(), rgba ? rows({".#....", ".###..", "..##..", "......"})
                              : rows({".1....", ".111..", "..11..", "......"}));
  }
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
// Calls at the wrong time and numbers out of range: each has a defined harmless result.

#include <climits>
#include <functional>
#include <limits>

#include "tests/raster/raster_page.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

using BadInput = RasterTest;

// Every drawing operation that has no result but 0.
const std::vector<std::function<int32_t()>> &plain_operations() {
  static const int32_t xs[] = {0, 5, 2};
  static const int32_t ys[] = {0, 1, 5};
  static const uint8_t row[] = {1, 2, 3, 4, 5, 6};
  static const std::vector<uint32_t> table(256, 0x123456);
  static const std::vector<std::function<int32_t()>> operations = {
      [] { return qqvers(); },
      [] { return qqvclr(2); },
      [] { return qqvclr(packed_rgb(1, 2, 3)); },
      [] { return qqvvlt(1, table.data()); },
      [] { return qqvlin(0, 0, 4, 4); },
      [] { return qqvdrw(1, 4, 2); },
      [] { return qqvdrw(0, 0, 3); },
      [] { return qqvfll(0, 0, 4, 4, 2); },
      [] { return qqvpix(1, 1, 2); },
      [] { return qqvsym(16, 2, 2, 4); },
      [] { return qqvsym(21, 2, 2, 4); },
      [] { return qqvftr(xs, ys, 2); },
      [] { return qqvwpx(1, 1, 2); },
      [] { return qqvrow(row, 0, 0, 6); },
      [] { return qqvrow(row, 0, 0, -2); },
      [] { return qqvfin(); },
  };
  return operations;
}

void expect_readers_to_give_nothing() {
  int32_t colour = 77;
  EXPECT_EQ(qqvrpx(1, 1, &colour), 0);
  EXPECT_EQ(colour, 0);
  uint8_t pixels[4] = {7, 7, 7, 7};
  EXPECT_EQ(qqvrdr(pixels, 0, 0, -1, 1), 0);
  EXPECT_EQ(pixels[0], 0);
  EXPECT_EQ(pixels[2], 0);
  EXPECT_EQ(pixels[3], 7);
  EXPECT_EQ(qqvrdr(pixels, 0, 0, 2, 2), 0);
  EXPECT_EQ(pixels[3], 0);
}

void expect_files_to_be_refused() {
  MemoryFiles files;
  files.put("picture", {1, 2, 3});
  for (const int32_t mode : {0, 1}) {
    int32_t status = 77;
    EXPECT_EQ(qqvfil(mode == 0 ? "other" : "picture", mode, &status), 0);
    EXPECT_EQ(status, 1);
  }
  EXPECT_EQ(files.open_files(), 0U);
}

TEST_F(BadInput, OperationsBeforeTheFirstPageDoNothing) {
  for (const auto &operation : plain_operations()) {
    EXPECT_EQ(operation(), 0);
    EXPECT_EQ(output_context, nullptr);
  }
  expect_readers_to_give_nothing();
  expect_files_to_be_refused();
  EXPECT_EQ(output_context, nullptr);
  uint8_t *raster = reinterpret_cast<uint8_t *>(this);
  EXPECT_EQ(qqvptr(&raster), 0);
  EXPECT_EQ(raster, nullptr);
}

TEST_F(BadInput, ARecordWithoutAPageDrawsNothingEither) {
  set_option(26, 5);
  for (const auto &operation : plain_operations())
    EXPECT_EQ(operation(), 0);
  expect_readers_to_give_nothing();
  expect_files_to_be_refused();
  EXPECT_EQ(fill_polygon_of({0, 4, 4}, {0, 0, 4}), 0);
}

TEST_F(BadInput, OperationsOnAClosedPageDrawNothing) {
  for (const bool rgba : {false, true}) {
    if (rgba) {
      open_rgba_page(5, 5);
    } else {
      open_page(5, 5);
    }
    qqvfin();
    for (const auto &operation : plain_operations())
      EXPECT_EQ(operation(), 0);
    expect_readers_to_give_nothing();
    expect_files_to_be_refused();
    EXPECT_EQ(fill_polygon_of({0, 4, 4}, {0, 0, 4}), 0);
  }
}

TEST_F(BadInput, OperationsOnAPageThatCouldNotBeOpenedDrawNothing) {
  open_rgba_page(5, 5);
  int32_t w = 0;
  int32_t h = 4;
  int32_t status = 0;
  qqvini(-1, 1, &w, &h, 1, &status);
  ASSERT_EQ(status, 1);
  for (const auto &operation : plain_operations())
    EXPECT_EQ(operation(), 0);
  expect_readers_to_give_nothing();
  expect_files_to_be_refused();
}

TEST_F(BadInput, AllPensAndOptionsDrawNothingOnAClosedPage) {
  open_rgba_page(5, 5);
  set_option(34, 2);
  qqvfin();
  for (const int32_t width : {1, 2, 3, 7}) {
    for (const int32_t join : {0, 1, 2}) {
      for (const bool clipping : {false, true}) {
        set_pen(width, join, join);
        switch_clipping(clipping);
        qqvdrw(0, 0, 3);
        qqvdrw(4, 2, 2);
        qqvdrw(0, 4, 2);
        qqvdrw(0, 0, 2);
        flush_lines();
        qqvlin(2, 2, 2, 2);
        for (int32_t symbol = 0; symbol <= 23; symbol++)
          qqvsym(symbol, 2, 2, 4);
      }
    }
  }
  EXPECT_EQ(output_context->buffers.raster_base.pixels, nullptr);
}

TEST_F(BadInput, LinesGatheredOnAClosedPageAreDrawnOnTheNextOne) {
  open_page(3, 2);
  qqvfin();
  qqvdrw(0, 1, 3);
  qqvdrw(2, 1, 2);
  int32_t w = 3;
  int32_t h = 2;
  int32_t status = 0;
  qqvini(1, 1, &w, &h, 1, &status);
  EXPECT_EQ(picture(), rows({"...", "111"}));
}

TEST_F(BadInput, APolygonWithoutARecordGivesTheFirstErrorStatus) {
  EXPECT_EQ(fill_polygon_of({0, 4, 4}, {0, 0, 4}), 1);
}

TEST_F(BadInput, ColoursOutOfRangeAreIndicesByTheirLowBits) {
  open_page(6, 1);
  qqvfll(0, 0, 0, 0, 256 + 3);
  qqvpix(1, 0, -252);
  qqvwpx(2, 0, 0x7FFFFF05);
  const int32_t xs[] = {3, 3, 3};
  const int32_t ys[] = {0, 0, 0};
  qqvftr(xs, ys, 0x00000106);
  qqvclr(INT32_MIN + 7);
  qqvlin(4, 0, 4, 0);
  EXPECT_EQ(picture(), rows({"34567."}));
}

TEST_F(BadInput, ClipRectanglesOffThePageHoldNothing) {
  open_page(4, 4);
  const int32_t rectangles[][4] = {{4, 0, 9, 3},
                                   {-9, 0, -1, 3},
                                   {0, 4, 3, 9},
                                   {0, -9, 3, -1},
                                   {3, 0, 1, 3},
                                   {0, 3, 3, 1},
                                   {INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN}};
  for (const int32_t(&r)[4] : rectangles) {
    set_clip_rectangle(r[0], r[1], r[2], r[3]);
    switch_clipping(true);
    for (const int32_t width : {1, 3, 6}) {
      set_pen(width, 1, 1);
      draw_polyline({{0, 0}, {3, 1}, {3, 3}, {0, 3}, {0, 0}});
      draw_polyline({{2, 2}, {2, 2}});
      for (int32_t symbol = 0; symbol <= 23; symbol++)
        qqvsym(symbol, 2, 2, 4);
    }
    qqvfll(0, 0, 3, 3, 1);
    qqvpix(1, 1, 1);
    fill_polygon_of({0, 3, 3, 0}, {0, 0, 3, 3});
    EXPECT_EQ(page_content(), std::vector<uint8_t>(16, 0));
  }
}

TEST_F(BadInput, ClipRectanglesBeyondThePageDrawNothingBeyondIt) {
  for (const bool rgba : {false, true}) {
    if (rgba) {
      open_rgba_page(4, 4);
    } else {
      open_page(4, 4);
    }
    set_option(34, 2);
    set_clip_rectangle(INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX);
    for (const int32_t width : {1, 3, 9, 60}) {
      set_pen(width, width % 3, 1);
      draw_polyline({{-9, -9}, {12, -3}, {12, 12}, {-2, 30}, {-9, -9}});
      draw_polyline({{2, 2}, {2, 2}});
      for (int32_t symbol = 0; symbol <= 23; symbol++)
        qqvsym(symbol, 2, 2, 40);
    }
    EXPECT_EQ(index_at(0, 0), rgba ? 255 : 1);
  }
}

// Everything that writes or reads pixels, on a page of 5 by 4 that the calls leave on all sides.
std::vector<uint8_t> drawn_beyond_the_page(bool rgba, bool told_of_another) {
  if (rgba) {
    open_rgba_page(5, 4);
  } else {
    open_page(5, 4);
  }
  if (told_of_another) {
    output_context->page.width = 400;
    output_context->page.height = 300;
    output_context->page.stride = 400 * (rgba ? 4 : 1);
  }
  set_clip_rectangle(-400, -300, 400, 300);
  const std::vector<uint8_t> row(60, 7);
  const int32_t xs[] = {-3, 300, 2};
  const int32_t ys[] = {-2, 1, 200};
  qqvfll(3, -9, 350, 1, 2);
  qqvlin(-9, 3, 390, 2);
  qqvftr(xs, ys, 4);
  for (const int32_t width : {1, 3, 6}) {
    set_pen(width, 1, 0);
    draw_polyline({{-2, 1}, {300, 2}, {1, 280}});
    qqvsym(8, 4, 3, 20);
    qqvsym(22, 1, 1, 300);
  }
  fill_polygon_of({1, 380, 2}, {1, 2, 290});
  qqvpix(200, 2, 3);
  qqvwpx(200, 3, 3);
  qqvrow(row.data(), 3, 2, 60);
  qqvrow(row.data(), -1, 200, -20);
  std::vector<uint8_t> read(size_t{3} * 9 * 9);
  qqvrdr(read.data(), -2, -2, -9, 9);
  const auto *bytes = output_context->buffers.raster.pixels;
  read.insert(read.end(), bytes, bytes + size_t{5} * 4 * (rgba ? 4 : 1));
  return read;
}

TEST_F(BadInput, ARecordThatTellsOfAnotherPageStillDrawsOnThisOneAlone) {
  for (const bool rgba : {false, true})
    EXPECT_EQ(drawn_beyond_the_page(rgba, true), drawn_beyond_the_page(rgba, false));
}

TEST_F(BadInput, NanAndInfinitePolygonCornersNeverLeaveThePage) {
  const double strange[] = {std::numeric_limits<double>::quiet_NaN(),
                            std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity(),
                            std::numeric_limits<double>::max(),
                            -std::numeric_limits<double>::max(),
                            std::numeric_limits<double>::denorm_min(),
                            3e9};
  open_page(6, 6);
  for (const double a : strange) {
    for (const double b : strange) {
      for (size_t corner = 0; corner < 4; corner++) {
        std::vector<double> xs{1, 4, 4, 1};
        std::vector<double> ys{1, 1, 4, 4};
        xs[corner] = a;
        ys[(corner + 1) % 4] = b;
        EXPECT_EQ(fill_polygon_of(xs, ys), 0);
        xs[(corner + 2) % 4] = b;
        EXPECT_EQ(fill_polygon_of(xs, ys), 0);
      }
    }
  }
}

TEST_F(BadInput, SymbolsAtTheEndsOfTheNumbersDrawNothingHere) {
  open_page(4, 4);
  const int32_t ends[] = {INT32_MIN, INT32_MIN + 1, INT32_MAX - 1, INT32_MAX};
  for (int32_t symbol = 0; symbol <= 23; symbol++) {
    for (const int32_t x : ends) {
      for (const int32_t y : ends)
        qqvsym(symbol, x, y, 9);
    }
  }
  EXPECT_EQ(page_content(), std::vector<uint8_t>(16, 0));
}

TEST_F(BadInput, LinesBetweenTheEndsOfTheNumbersStayOnThePage) {
  const int32_t ends[] = {INT32_MIN, -1, 2, INT32_MAX};
  for (const bool clipping : {false, true}) {
    for (const int32_t width : {1, 2, 3, 8}) {
      open_page(4, 4);
      switch_clipping(clipping);
      set_pen(width, 2, 0);
      for (const int32_t x1 : ends) {
        for (const int32_t y1 : ends) {
          for (const int32_t x2 : ends) {
            for (const int32_t y2 : ends)
              draw_polyline({{x1, y1}, {x2, y2}});
          }
        }
      }
      EXPECT_EQ(index_at(2, 2), 1);
    }
  }
}

}  // namespace
}  // namespace quorix::testing

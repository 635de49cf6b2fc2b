// SPDX-License-Identifier: MIT
// Writing and reading single pixels, rows and rectangles.

#include <climits>

#include "tests/raster/raster_page.h"

namespace quorix::testing {
namespace {

using PixelOnPage = RasterTest;
using Row = RasterTest;
using ReadPixel = RasterTest;
using ReadRectangle = RasterTest;

// ---- Single pixels

TEST_F(PixelOnPage, IsSetWhateverTheClipRectangle) {
  open_page(3, 2);
  set_clip_rectangle(1, 1, 1, 1);
  switch_clipping(true);
  EXPECT_EQ(qqvwpx(0, 0, 4), 0);
  qqvwpx(2, 1, 5);
  EXPECT_EQ(picture(), rows({"4..", "..5"}));
}

TEST_F(PixelOnPage, OffThePageIsIgnoredButDrawsGatheredLines) {
  open_page(3, 2);
  qqvlin(0, 0, 1, 0);
  qqvwpx(-1, 0, 4);
  EXPECT_EQ(picture_without_flush(), rows({"11.", "..."}));
  qqvwpx(3, 0, 4);
  qqvwpx(0, -1, 4);
  qqvwpx(0, 2, 4);
  qqvwpx(INT32_MAX, INT32_MIN, 4);
  EXPECT_EQ(picture(), rows({"11.", "..."}));
}

TEST_F(PixelOnPage, OfTheTransparentIndexIsSkipped) {
  for (const bool rgba : {false, true}) {
    if (rgba) {
      open_rgba_page(2, 1);
    } else {
      open_page(2, 1);
    }
    set_option(32, 2);
    qqvwpx(0, 0, 2);
    qqvwpx(0, 0, 256 + 2);
    EXPECT_EQ(picture(), rows({".."}));
    qqvwpx(1, 0, 3);
    EXPECT_EQ(picture(), rows({rgba ? ".#" : ".3"}));
  }
}

TEST_F(PixelOnPage, OfTheTransparentRgbIsSkipped) {
  for (const bool rgba : {false, true}) {
    if (rgba) {
      open_rgba_page(2, 1);
    } else {
      open_page(2, 1);
    }
    set_option(32, packed_rgb(250, 10, 10));
    qqvwpx(0, 0, packed_rgb(250, 10, 10));
    EXPECT_EQ(picture(), rows({".."}));
    qqvwpx(1, 0, packed_rgb(250, 10, 11));  // the same index, another colour
    EXPECT_EQ(picture(), rows({rgba ? ".#" : ".2"}));
    qqvwpx(0, 0, 2);  // the index that stands for the transparent colour
    EXPECT_EQ(picture(), rows({rgba ? ".#" : ".2"}));
  }
}

TEST_F(PixelOnPage, OfATransparentIndexIsAlsoItsRgb) {
  open_page(2, 1);
  set_option(32, 2);
  qqvwpx(0, 0, packed_rgb(255, 0, 0));
  EXPECT_EQ(picture(), rows({".."}));
}

TEST_F(PixelOnPage, IsNeverTransparentForTheClippedPixelAndRectangles) {
  open_page(2, 1);
  set_option(32, 2);
  qqvpix(0, 0, 2);
  qqvfll(1, 0, 1, 0, 2);
  EXPECT_EQ(picture(), rows({"22"}));
}

// ---- Rows

TEST_F(Row, OfIndicesOnAPalettePageIsCopied) {
  open_page(5, 2);
  const uint8_t row[] = {2, 3, 4};
  EXPECT_EQ(qqvrow(row, 1, 1, 3), 0);
  EXPECT_EQ(picture(), rows({".....", ".234."}));
}

TEST_F(Row, OfIndicesOnAnRgbaPageTakesTheTable) {
  open_rgba_page(3, 1);
  set_option(19, 17);
  const uint8_t row[] = {2, 5};
  qqvrow(row, 1, 0, 2);
  EXPECT_EQ(rgba_at(0, 0), "00000000");
  EXPECT_EQ(rgba_at(1, 0), "ff000011");
  EXPECT_EQ(rgba_at(2, 0), "ffff0011");
}

TEST_F(Row, OfTriplesOnAnRgbaPageIsKept) {
  open_rgba_page(3, 1);
  set_option(19, 17);
  const uint8_t row[] = {1, 2, 3, 4, 5, 6};
  qqvrow(row, 1, 0, -2);
  EXPECT_EQ(rgba_at(1, 0), "01020311");
  EXPECT_EQ(rgba_at(2, 0), "04050611");
}

TEST_F(Row, OfTriplesOnAPalettePageTakesTheNearestColours) {
  open_page(3, 1);
  const uint8_t row[] = {250, 10, 10, 10, 250, 10};
  qqvrow(row, 0, 0, -2);
  EXPECT_EQ(picture(), rows({"23."}));
}

TEST_F(Row, SkipsTheTransparentColourAndGoesOnBehindIt) {
  const uint8_t indices[] = {3, 2, 4};
  const uint8_t triples[] = {0, 255, 0, 255, 0, 0, 0, 0, 255};
  for (const bool rgba : {false, true}) {
    for (const bool as_triples : {false, true}) {
      if (rgba) {
        open_rgba_page(3, 1);
      } else {
        open_page(3, 1);
      }
      qqvfll(1, 0, 1, 0, 5);
      set_option(32, 2);
      qqvrow(as_triples ? triples : indices, 0, 0, as_triples ? -3 : 3);
      if (rgba) {
        EXPECT_EQ(rgba_at(0, 0), "00ff00ff");
        EXPECT_EQ(rgba_at(1, 0), "ffff00ff");
        EXPECT_EQ(rgba_at(2, 0), "0000ffff");
      } else {
        EXPECT_EQ(picture(), rows({"354"}));
      }
    }
  }
}

TEST_F(Row, IsCutToThePageWhileItsBufferGoesOn) {
  open_page(3, 2);
  const uint8_t row[] = {2, 3, 4, 5, 6, 7, 8};
  qqvrow(row, -2, 0, 7);
  qqvrow(row, 2, 1, 7);
  qqvrow(row, 0, -1, 3);
  qqvrow(row, 0, 2, 3);
  qqvrow(row, 3, 0, 3);
  qqvrow(row, INT32_MAX, 0, 3);
  qqvrow(row, INT32_MAX, 0, INT32_MIN);
  qqvrow(row, 3, 1, INT32_MAX);
  EXPECT_EQ(picture(), rows({"456", "..2"}));
  const uint8_t triples[] = {255, 0, 0, 0, 255, 0, 0, 0, 255};
  qqvrow(triples, -1, 1, -3);
  EXPECT_EQ(picture(), rows({"456", "342"}));
}

TEST_F(Row, IgnoresTheClipRectangle) {
  open_page(3, 1);
  set_clip_rectangle(1, 0, 1, 0);
  switch_clipping(true);
  const uint8_t row[] = {2, 3, 4};
  qqvrow(row, 0, 0, 3);
  EXPECT_EQ(picture(), rows({"234"}));
}

TEST_F(Row, IsDrawnOverTheLinesGatheredBefore) {
  open_page(3, 1);
  qqvlin(0, 0, 2, 0);
  const uint8_t row[] = {2};
  qqvrow(row, 1, 0, 1);
  EXPECT_EQ(picture(), rows({"121"}));
}

// ---- Reading a pixel

int32_t pixel(int32_t x, int32_t y) {
  int32_t colour = 77;
  EXPECT_EQ(qqvrpx(x, y, &colour), 0);
  return colour;
}

TEST_F(ReadPixel, OfAPalettePageIsItsByte) {
  open_page(3, 2);
  qqvfll(2, 1, 2, 1, 200);
  EXPECT_EQ(pixel(2, 1), 200);
  EXPECT_EQ(pixel(0, 0), 0);
}

TEST_F(ReadPixel, OfAnRgbaPageIsTheNearestColour) {
  open_rgba_page(3, 2);
  qqvwpx(2, 1, packed_rgb(250, 10, 10));
  EXPECT_EQ(pixel(2, 1), 2);
}

TEST_F(ReadPixel, OffThePageIsZero) {
  open_page(3, 2);
  qqvfll(0, 0, 2, 1, 9);
  EXPECT_EQ(pixel(-1, 0), 0);
  EXPECT_EQ(pixel(3, 0), 0);
  EXPECT_EQ(pixel(0, -1), 0);
  EXPECT_EQ(pixel(0, 2), 0);
  EXPECT_EQ(pixel(INT32_MIN, INT32_MAX), 0);
}

TEST_F(ReadPixel, DrawsGatheredLinesFirst) {
  open_page(3, 2);
  qqvlin(0, 0, 2, 0);
  EXPECT_EQ(pixel(1, 0), 1);
}

// ---- Reading a rectangle

using Bytes = std::vector<uint8_t>;

Bytes rectangle(int32_t x, int32_t y, int32_t n, int32_t row_count, size_t size) {
  Bytes bytes(size + 1, 77);
  EXPECT_EQ(qqvrdr(bytes.data(), x, y, n, row_count), 0);
  EXPECT_EQ(bytes.back(), 77);  // not written beyond its end
  bytes.pop_back();
  return bytes;
}

// Row 0 holds colours 2 and 3, row 1 colours 4 and 5.
void write_four_colours() {
  qqvwpx(0, 0, 2);
  qqvwpx(1, 0, 3);
  qqvwpx(0, 1, 4);
  qqvwpx(1, 1, 5);
}

TEST_F(ReadRectangle, OfAPalettePageAsIndicesIsItsBytes) {
  open_page(2, 2);
  write_four_colours();
  EXPECT_EQ(rectangle(0, 0, 2, 2, 4), (Bytes{2, 3, 4, 5}));
  EXPECT_EQ(rectangle(1, 0, 1, 2, 2), (Bytes{3, 5}));
}

TEST_F(ReadRectangle, OfAPalettePageAsTriplesIsItsTableEntries) {
  open_page(2, 2);
  write_four_colours();
  EXPECT_EQ(rectangle(0, 0, -2, 2, 12), (Bytes{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 0}));
}

TEST_F(ReadRectangle, OfAnRgbaPageAsTriplesIsItsFirstThreeBytes) {
  open_rgba_page(2, 1);
  qqvwpx(0, 0, packed_rgb(1, 2, 3));
  qqvwpx(1, 0, packed_rgb(4, 5, 6));
  EXPECT_EQ(rectangle(0, 0, -2, 1, 6), (Bytes{1, 2, 3, 4, 5, 6}));
}

TEST_F(ReadRectangle, OfAnRgbaPageAsIndicesIsTheNearestColours) {
  open_rgba_page(2, 2);
  qqvwpx(0, 0, packed_rgb(250, 10, 10));
  qqvwpx(1, 0, packed_rgb(10, 250, 10));
  EXPECT_EQ(rectangle(0, 0, 2, 2, 4), (Bytes{2, 3, 0, 0}));
}

TEST_F(ReadRectangle, OfNegativeRowsGoesUpward) {
  open_page(2, 2);
  write_four_colours();
  EXPECT_EQ(rectangle(0, 1, 2, -2, 4), (Bytes{4, 5, 2, 3}));
  EXPECT_EQ(rectangle(1, 1, -1, -2, 6), (Bytes{255, 255, 0, 0, 255, 0}));
}

TEST_F(ReadRectangle, ReadsZeroOffThePage) {
  open_page(2, 2);
  write_four_colours();
  EXPECT_EQ(rectangle(-1, -1, 4, 3, 12), (Bytes{0, 0, 0, 0, 0, 2, 3, 0, 0, 4, 5, 0}));
  EXPECT_EQ(rectangle(1, 2, 2, -2, 4), (Bytes{0, 0, 5, 0}));
  EXPECT_EQ(rectangle(INT32_MAX, 0, 2, 1, 2), (Bytes{0, 0}));
  EXPECT_EQ(rectangle(0, INT32_MAX, 1, 2, 2), (Bytes{0, 0}));
  EXPECT_EQ(rectangle(0, INT32_MIN, 1, -2, 2), (Bytes{0, 0}));
}

TEST_F(ReadRectangle, ReadsZeroOffThePageWhateverThePaletteHoldsThere) {
  open_page(1, 1);
  const std::vector<uint32_t> table(256, 0x999999);
  qqvvlt(1, table.data());
  EXPECT_EQ(rectangle(-1, 0, -2, 1, 6), (Bytes{0, 0, 0, 0x99, 0x99, 0x99}));
  qqwfree();
  open_rgba_page(1, 1);
  qqvvlt(1, table.data());
  EXPECT_EQ(rectangle(-1, 0, -2, 1, 6), (Bytes{0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(rectangle(-1, 0, 1, 1, 1), (Bytes{0}));
}

TEST_F(ReadRectangle, OfNoColumnsOrRowsWritesNothing) {
  open_page(2, 2);
  EXPECT_EQ(rectangle(0, 0, 0, 2, 0), Bytes{});
  EXPECT_EQ(rectangle(0, 0, 2, 0, 0), Bytes{});
}

TEST_F(ReadRectangle, DrawsGatheredLinesFirst) {
  open_page(3, 1);
  qqvlin(0, 0, 2, 0);
  EXPECT_EQ(rectangle(0, 0, 3, 1, 3), (Bytes{1, 1, 1}));
}

}  // namespace
}  // namespace quorix::testing

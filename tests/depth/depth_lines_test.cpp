// SPDX-License-Identifier: MIT
//
// Depth lines: which pixels, at which depths, in which form for each device.

#include <cmath>
#include <limits>

#include "tests/depth/depth_page.h"

namespace quorix::testing {
namespace {

using DepthLine = DepthTest;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST_F(DepthLine, WalksItsLongerAxisAndTakesTheDepthAlong) {
  open_page(6, 4);
  depth_buffer(0);
  depth_line(0, 0, 0, 4, 2, 1, 2);
  // y is 0, 0.5, 1, 1.5, 2.
  EXPECT_EQ(picture(), rows({"2.....", ".22...", "...22.", "......"}));
  EXPECT_EQ(depth_at(1, 1), 0.25F);
  EXPECT_EQ(depth_at(2, 1), 0.5F);
  EXPECT_EQ(depth_at(3, 2), 0.75F);
  EXPECT_EQ(depth_at(4, 2), 1.0F);
}

TEST_F(DepthLine, StartsAtTheEndWithTheSmallerCoordinate) {
  open_page(6, 4);
  depth_buffer(0);
  depth_line(4, 2, 1, 0, 0, 0, 2);
  EXPECT_EQ(picture(), rows({"2.....", ".22...", "...22.", "......"}));
  EXPECT_EQ(depth_at(1, 1), 0.25F);
}

TEST_F(DepthLine, OfEqualExtentsWalksTheRows) {
  open_page(5, 4);
  depth_buffer(0);
  // From the upper end (3.4, 0) in three steps of -1 to (0.4, 3).
  depth_line(0.4, 3, 1, 3.4, 0, 0.25, 2);
  EXPECT_EQ(picture(), rows({"...2.", "..2..", ".2...", "2...."}));
  EXPECT_EQ(depth_at(3, 0), 0.25F);
  EXPECT_EQ(depth_at(2, 1), 0.5F);
}

TEST_F(DepthLine, RoundsItsEndsByAHalfAndTruncation) {
  open_page(5, 4);
  // -0.9 + 0.5 truncates to 0, as 0.49 + 0.5 does.
  depth_line(-0.9, -0.9, 0, 0.49, 0.49, 0, 2);
  EXPECT_EQ(picture(), rows({"2....", ".....", ".....", "....."}));
}

TEST_F(DepthLine, WithinOnePixelHasTheDepthOfItsFirstEnd) {
  open_page(5, 4);
  depth_buffer(0);
  depth_line(1.9, 2.1, 0.75, 2.1, 1.9, 0.25, 2);
  EXPECT_EQ(picture(), rows({".....", ".....", "..2..", "....."}));
  EXPECT_EQ(depth_at(2, 2), 0.75F);
  depth_dot(2, 2, 0.5, 3);
  depth_line(2, 2, 0.75, 2, 2, 0.25, 4);  // hidden, whatever the second depth
  EXPECT_EQ(index_at(2, 2), 3);
  EXPECT_EQ(depth_at(2, 2), 0.5F);
}

TEST_F(DepthLine, AtTheSameDepthShows) {
  open_page(5, 4);
  depth_buffer(0);
  depth_line(0, 1, 0.5, 4, 1, 0.5, 2);
  depth_line(0, 1, 0.5, 4, 1, 0.5, 3);
  EXPECT_EQ(picture(), rows({".....", "33333", ".....", "....."}));
}

TEST_F(DepthLine, ShowsUpToTheBiasBehindAnotherAndNoFurther) {
  open_page(5, 4);
  depth_buffer(0);
  depth_dot(1, 1, 0.5, 2);
  depth_dot(1, 1, 0.502, 3);
  EXPECT_EQ(index_at(1, 1), 2);
  depth_dot(1, 1, 0.5009, 4);
  EXPECT_EQ(index_at(1, 1), 4);
  EXPECT_EQ(depth_at(1, 1), 0.5009F);
}

TEST_F(DepthLine, ComparesTheBiasInDoublesAgainstItsFloat) {
  open_page(5, 4);
  depth_buffer(0);
  // 0.001 as a float is 0.001 + 4.7e-11.
  const double bias = 0.001F;
  depth_dot(1, 1, 0.5, 2);
  depth_dot(1, 1, 0.5 + bias, 3);
  EXPECT_EQ(index_at(1, 1), 3);
  depth_dot(2, 1, 0.5, 2);
  depth_dot(2, 1, std::nextafter(0.5 + bias, 1.0), 3);
  EXPECT_EQ(index_at(2, 1), 2);
}

TEST_F(DepthLine, HasATighterBiasAfterOptionSeventeen) {
  open_page(5, 4);
  depth_buffer(0);
  set_option(17, 0);
  depth_dot(1, 1, 0.5, 2);
  depth_dot(1, 1, 0.50002, 3);
  EXPECT_EQ(index_at(1, 1), 2);
  depth_dot(1, 1, 0.500009, 4);
  EXPECT_EQ(index_at(1, 1), 4);
  set_option(18, 0);
  depth_dot(1, 1, 0.5009, 5);
  EXPECT_EQ(index_at(1, 1), 5);
}

TEST_F(DepthLine, StopsAtTheClipRectangleWhereverItsEndsAre) {
  open_page(6, 5);
  depth_buffer(0);
  set_clip_rectangle(1, 1, 4, 3);
  depth_line(-4.5, 2, 0, 12, 2, 1, 2);
  EXPECT_EQ(picture(), rows({"......", "......", ".2222.", "......", "......"}));
  EXPECT_EQ(depth_at(1, 2), 0.3125F);  // 5 of 16 steps
  EXPECT_EQ(depth_at(0, 2), 2.0F);
}

TEST_F(DepthLine, StopsAtThePageWhereTheClipRectangleIsLarger) {
  open_page(6, 5);
  depth_buffer(0);
  set_clip_rectangle(-100, -100, 100, 100);
  depth_line(-20, -20, 0.5, 20, 20, 0.5, 2);
  EXPECT_EQ(picture(), rows({"2.....", ".2....", "..2...", "...2..", "....2."}));
}

TEST_F(DepthLine, ComesBeforeTheLinesThatAreStillGathered) {
  open_page(5, 3);
  qqvlin(0, 1, 4, 1);
  depth_line(2, 0, 0, 2, 2, 0, 2);
  EXPECT_EQ(picture(), rows({"..2..", "11111", "..2.."}));
}

TEST_F(DepthLine, OfWholeNumbersIsTheSameLine) {
  open_page(6, 4);
  depth_buffer(0);
  const int32_t x[2] = {4, 0};
  const int32_t y[2] = {2, 0};
  const double z[2] = {1, 0};
  EXPECT_EQ(qqzlin(x, y, 2, z, raster_device_number), 0);
  EXPECT_EQ(picture(), rows({"2.....", ".22...", "...22.", "......"}));
  EXPECT_EQ(depth_at(1, 1), 0.25F);
}

TEST_F(DepthLine, ReachesFromInfinityToThePage) {
  open_page(5, 3);
  depth_buffer(0);
  depth_line(2, 1, 0.5, 2, infinity, 0.5, 2);
  depth_line(infinity, 0, 0.25, 3, 0, 0.25, 3);
  EXPECT_EQ(picture(), rows({"...33", "..2..", "..2.."}));
}

TEST_F(DepthLine, ThatIsNotANumberInHeightStartsInRowZero) {
  open_page(5, 3);
  depth_line(1, nan, 0, 1, 2, 0, 2);
  EXPECT_EQ(picture(), rows({".2...", ".2...", ".2..."}));
}

TEST_F(DepthLine, WhoseDepthIsNotANumberIsHidden) {
  open_page(5, 3);
  depth_buffer(0);
  depth_line(0, 1, nan, 4, 1, nan, 2);
  EXPECT_EQ(picture(), rows({".....", ".....", "....."}));
  EXPECT_EQ(depth_at(0, 1), 2.0F);
  depth_buffer(1);
  depth_line(0, 1, nan, 4, 1, nan, 2);
  EXPECT_EQ(picture(), rows({".....", "22222", "....."}));
}

// ---- Devices

TEST_F(DepthLine, OnAnRgbaPageHasTheCurrentAlpha) {
  open_rgba_page(3, 2);
  set_option(19, 0x7B);
  depth_dot(1, 1, 0, packed_rgb(0x10, 0x20, 0x30));
  EXPECT_EQ(rgba_at(1, 1), "1020307b");
  depth_dot(1, 1, 0, 5);  // yellow
  EXPECT_EQ(rgba_at(1, 1), "ffff007b");
}

TEST_F(DepthLine, OnAPalettePageHasTheNearestColour) {
  open_page(3, 2);
  depth_dot(1, 1, 0, packed_rgb(250, 3, 2));
  EXPECT_EQ(index_at(1, 1), 2);
  // Entries 7 and 9 alike: an index too is drawn as the nearest colour, which is the first.
  uint32_t table[256];
  for (uint32_t i = 0; i < 256; ++i)
    table[i] = i == 9 ? 0x070707U : i * 0x010101U;
  qqvvlt(1, table);
  depth_dot(2, 1, 0, 9);
  EXPECT_EQ(index_at(2, 1), 7);
}

TEST_F(DepthLine, OnAWindowOf24BitsIsBlueGreenRed) {
  open_page(3, 2);
  open_window(24, 1);
  const std::string beside = window_pixel(window, 2, 1);
  depth_dot(1, 1, 0, packed_rgb(0x10, 0x20, 0x30), window_device_number);
  EXPECT_EQ(window_pixel(window, 1, 1), "302010");
  EXPECT_EQ(window_pixel(window, 2, 1), beside);
}

TEST_F(DepthLine, OnAWindowOf32BitsLeavesTheFourthByte) {
  open_page(3, 2);
  open_window(32);
  const std::string before = window_pixel(window, 1, 1);
  depth_dot(1, 1, 0, packed_rgb(0x10, 0x20, 0x30), window_device_number);
  EXPECT_EQ(window_pixel(window, 1, 1), "302010" + before.substr(6));
}

TEST_F(DepthLine, OnAWindowOf16BitsSetsPixels) {
  open_page(3, 2);
  open_window(16);
  depth_dot(2, 1, 0, packed_rgb(0x10, 0x20, 0x30), window_device_number);
  EXPECT_EQ(window.pixels[5], 0x10U + 0x20U * 256 + 0x30U * 65536);
  EXPECT_EQ(window.pixels[4], 0xFFFFFFFFU);
}

TEST_F(DepthLine, OnAPaletteWindowIsTheMappedNearestColour) {
  open_page(3, 2);
  open_window(8);
  depth_dot(1, 1, 0, packed_rgb(250, 3, 2), window_device_number);
  EXPECT_EQ(*pixel_at(window, 1, 1), 12);
  window.compressed = true;
  depth_dot(1, 1, 0, 200, window_device_number);
  EXPECT_EQ(*pixel_at(window, 1, 1), 201 / 2 + 10);
}

TEST_F(DepthLine, OnAWindowSharesTheDepthBuffer) {
  open_page(3, 2);
  open_window(24);
  depth_buffer(0);
  depth_dot(1, 1, 0.25, 2);
  const std::string before = window_pixel(window, 1, 1);
  depth_dot(1, 1, 0.5, 3, window_device_number);
  EXPECT_EQ(window_pixel(window, 1, 1), before);
}

TEST_F(DepthLine, IsNotDrawnWhereThereIsNoWindow) {
  open_page(3, 2);
  depth_buffer(0);
  depth_dot(1, 1, 0.25, 2, window_device_number);
  EXPECT_EQ(depth_at(1, 1), 2.0F);
  EXPECT_EQ(picture(), rows({"...", "..."}));
}

TEST_F(DepthLine, IsNotDrawnWhereTheWindowHasNoBitmapNow) {
  open_page(3, 2);
  open_window(24);
  depth_buffer(0);
  WindowDevice::refuse_bitmaps(true);
  depth_dot(1, 1, 0.25, 2, window_device_number);
  EXPECT_EQ(depth_buffer(3, window_device_number), 0);
  EXPECT_EQ(depth_at(1, 1), 2.0F);
}

TEST_F(DepthLine, NeedsARecord) {
  depth_line(0, 0, 0, 3, 3, 0, 1);
  const int32_t ends[2] = {0, 3};
  const double z[2] = {0, 0};
  EXPECT_EQ(qqzlin(ends, ends, 1, z, raster_device_number), 0);
  EXPECT_EQ(output_context, nullptr);
}

}  // namespace
}  // namespace quorix::testing

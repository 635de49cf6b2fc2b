// SPDX-License-Identifier: MIT
//
// Shaded triangles: interpolation, rows, depth tests, blending, and their form on each device.

#include <limits>

#include "tests/depth/depth_page.h"

namespace quorix::testing {
namespace {

using ShadedTriangle = DepthTest;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

int32_t grey(uint32_t value) {
  return packed_rgb(value, value, value);
}

TEST_F(ShadedTriangle, InterpolatesColourAndDepthAlongRowsAndColumns) {
  open_rgba_page(9, 9);
  depth_buffer(0);
  shaded({0, 0, 0, grey(0)}, {8, 0, 1, grey(80)}, {0, 8, 0.5, grey(160)});
  EXPECT_EQ(rgba_at(0, 0), "000000ff");
  EXPECT_EQ(rgba_at(4, 0), "282828ff");
  EXPECT_EQ(rgba_at(8, 0), "505050ff");
  EXPECT_EQ(rgba_at(0, 8), "a0a0a0ff");
  EXPECT_EQ(rgba_at(0, 4), "505050ff");
  // Row 4 goes from 80 to the middle of 80 and 160.
  EXPECT_EQ(rgba_at(2, 4), "646464ff");
  EXPECT_EQ(rgba_at(4, 4), "787878ff");
  EXPECT_EQ(rgba_at(5, 4), "00000000");
  EXPECT_EQ(depth_at(4, 0), 0.5F);
  EXPECT_EQ(depth_at(0, 4), 0.25F);
  EXPECT_EQ(depth_at(4, 4), 0.75F);
}

TEST_F(ShadedTriangle, DrawsBothEndsOfEveryRow) {
  open_page(7, 5);
  shaded({1, 1, 0, 2}, {5, 1, 0, 2}, {3, 3, 0, 2});
  EXPECT_EQ(picture(), rows({".......", ".22222.", "..222..", "...2...", "......."}));
}

TEST_F(ShadedTriangle, OnOneRowHasColoursByTheYOrderAndPlacesByTheXOrder) {
  open_rgba_page(11, 11);
  depth_buffer(0);
  // By y: second, third, first. By x: first, third, second.
  shaded({1, 5.04, 0, grey(200)}, {9, 5, 1, grey(40)}, {5, 5.02, 0.5, grey(120)});
  EXPECT_EQ(rgba_at(1, 5), "282828ff");
  EXPECT_EQ(rgba_at(3, 5), "505050ff");
  EXPECT_EQ(rgba_at(5, 5), "787878ff");
  EXPECT_EQ(rgba_at(9, 5), "c8c8c8ff");
  EXPECT_EQ(depth_at(1, 5), 0.0F);
  EXPECT_EQ(depth_at(3, 5), 0.25F);
  EXPECT_EQ(depth_at(9, 5), 1.0F);
  EXPECT_EQ(rgba_at(0, 5), "00000000");
  EXPECT_EQ(rgba_at(10, 5), "00000000");
}

TEST_F(ShadedTriangle, KeepsCornersWithinATenthOnOneRow) {
  open_page(9, 6);
  // 2.45 and 2.54 would round to different rows.
  shaded({1, 2.45, 0, 2}, {7, 2.54, 0, 2}, {4, 2.5, 0, 2});
  EXPECT_EQ(picture(),
            rows({".........", ".........", ".2222222.", ".........", ".........", "........."}));
  open_page(9, 6);
  shaded({1, 2.45, 0, 2}, {7, 2.56, 0, 2}, {1, 2.45, 0, 2});
  EXPECT_EQ(index_at(7, 3), 2);
}

TEST_F(ShadedTriangle, WithoutADepthBufferAlwaysPaints) {
  open_page(9, 9);
  shaded_sheet(0.25, 2);
  shaded_sheet(1e300, 3);
  EXPECT_EQ(index_at(4, 4), 3);
  shaded_sheet(nan, 4);
  EXPECT_EQ(index_at(4, 4), 4);
}

TEST_F(ShadedTriangle, AtEqualDepthPaints) {
  open_page(9, 9);
  depth_buffer(0);
  shaded_sheet(0.5, 2);
  shaded_sheet(0.5, 3);
  EXPECT_EQ(index_at(4, 4), 3);
}

TEST_F(ShadedTriangle, MayLieBehindByAMillionthAndNotByTheBias) {
  open_page(9, 9);
  depth_buffer(0);
  shaded_sheet(0.5, 2);
  shaded_sheet(0.5 + 2e-6, 3);
  EXPECT_EQ(index_at(4, 4), 2);
  shaded_sheet(0.5 + 9e-7, 4);
  EXPECT_EQ(index_at(4, 4), 4);
  EXPECT_EQ(depth_at(4, 4), static_cast<float>(0.5 + 9e-7));
}

TEST_F(ShadedTriangle, WhoseDepthIsNotANumberIsHidden) {
  open_page(9, 9);
  depth_buffer(0);
  shaded_sheet(nan, 3);
  EXPECT_EQ(index_at(4, 4), 0);
  EXPECT_EQ(depth_at(4, 4), 2.0F);
}

TEST_F(ShadedTriangle, BlendsWithTheAlphaOfTheRecord) {
  open_rgba_page(9, 9);
  set_option(19, 255);
  shaded_sheet(0.5, packed_rgb(100, 200, 0));
  set_option(19, 51);
  layer(3);
  shaded_sheet(0.5, packed_rgb(200, 100, 255));
  // A fifth of the new value: 80 + 20... = 120, 160 + 20 = 180, 51.
  EXPECT_EQ(rgba_at(4, 4), "78b43333");
  layer(4);
  shaded_sheet(0.5, packed_rgb(200, 100, 255));
  EXPECT_EQ(rgba_at(4, 4), "c864ff33");
}

TEST_F(ShadedTriangle, TranslucentNeedsToLieInFrontByAThousandth) {
  open_rgba_page(9, 9);
  depth_buffer(0);
  shaded_sheet(0.5, packed_rgb(100, 100, 100));
  layer(3);
  for (const double z : {0.5, 0.4995, 0.75}) {
    shaded_sheet(z, packed_rgb(1, 2, 3));
    EXPECT_EQ(rgba_at(4, 4), "646464ff") << z;
    EXPECT_EQ(depth_at(4, 4), 0.5F);
  }
  shaded_sheet(0.4985, packed_rgb(1, 2, 3));
  EXPECT_EQ(rgba_at(4, 4), "010203ff");
  EXPECT_EQ(depth_at(4, 4), 0.4985F);
}

TEST_F(ShadedTriangle, DoesNotBlendOnAPalettePage) {
  open_page(9, 9);
  depth_buffer(0);
  layer(3);
  set_option(19, 10);
  shaded_sheet(0.5, 2);
  shaded_sheet(0.5, 3);  // ties pass: it is opaque
  EXPECT_EQ(index_at(4, 4), 3);
}

TEST_F(ShadedTriangle, HonoursPackedColoursAndPaletteColoursPerCorner) {
  open_rgba_page(9, 9);
  shaded({0, 0, 0, packed_rgb(10, 20, 30)}, {8, 0, 0, 5}, {0, 8, 0, packed_rgb(40, 50, 60)});
  EXPECT_EQ(rgba_at(0, 0), "0a141eff");
  EXPECT_EQ(rgba_at(8, 0), "ffff00ff");
  EXPECT_EQ(rgba_at(0, 8), "28323cff");
}

TEST_F(ShadedTriangle, HasTheNearestColourOnAPalettePage) {
  open_page(9, 9);
  shaded_sheet(0, packed_rgb(250, 4, 3));
  EXPECT_EQ(index_at(3, 3), 2);
}

TEST_F(ShadedTriangle, TakesColoursBeyondOneByTheirLowByte) {
  open_rgba_page(9, 9);
  const double x[3] = {0, 8, 0};
  const double y[3] = {0, 0, 8};
  const double z[3] = {0, 0, 0};
  const double r[3] = {2, 2, 2};     // 510
  const double g[3] = {-1, -1, -1};  // -254.5 truncates to -254
  const double b[3] = {nan, nan, nan};
  qqztri3(x, y, z, r, g, b, raster_device_number);
  EXPECT_EQ(rgba_at(1, 1), "fe0200ff");
}

TEST_F(ShadedTriangle, ExchangesPureBlackAndWhiteOnAWhitePage) {
  open_rgba_page(9, 9, true);
  set_option(3, 1);
  shaded_sheet(0, grey(0));
  EXPECT_EQ(rgba_at(1, 1), "ffffffff");
  shaded_sheet(0, grey(255));
  EXPECT_EQ(rgba_at(1, 1), "000000ff");
  shaded_sheet(0, grey(254));
  EXPECT_EQ(rgba_at(1, 1), "fefefeff");
  set_option(3, 0);
  shaded_sheet(0, grey(0));
  EXPECT_EQ(rgba_at(1, 1), "000000ff");
  open_rgba_page(9, 9, false);
  set_option(3, 1);
  shaded_sheet(0, grey(0));
  EXPECT_EQ(rgba_at(1, 1), "000000ff");
}

TEST_F(ShadedTriangle, ExchangesBlackAndWhiteBeforeAPaletteEntryIsSought) {
  open_page(9, 9);
  output_context->page.white_background = 1;
  set_option(3, 1);
  shaded_sheet(0, grey(0));
  EXPECT_EQ(index_at(1, 1), 255);
  shaded_sheet(0, grey(255));
  EXPECT_EQ(index_at(1, 1), 0);
}

TEST_F(ShadedTriangle, ExchangesTheBlendedColour) {
  open_rgba_page(9, 9, true);
  set_option(3, 1);
  set_option(19, 0);
  layer(3);
  shaded_sheet(0, grey(128));  // nothing of it: the page's white, which becomes black
  EXPECT_EQ(rgba_at(1, 1), "00000000");
}

TEST_F(ShadedTriangle, DrawsTheGatheredLinesFirst) {
  open_page(9, 9);
  qqvlin(0, 0, 8, 0);
  shaded_sheet(0, 2);
  EXPECT_EQ(index_at(3, 0), 2);
  open_page(9, 9);
  open_window(24);
  qqvlin(0, 0, 8, 0);
  shaded_sheet(0, 2, window_device_number);
  EXPECT_EQ(page_content()[0], 0);
}

TEST_F(ShadedTriangle, StaysInTheClipRectangleAndOnThePage) {
  open_page(7, 5);
  set_clip_rectangle(2, 1, 4, 30);
  shaded({-50, -50, 0, 2}, {90, -50, 0, 2}, {-50, 90, 0, 2});
  EXPECT_EQ(picture(), rows({".......", "..222..", "..222..", "..222..", "..222.."}));
}

TEST_F(ShadedTriangle, WithOtherNumbersIsTheSame) {
  open_page(9, 9);
  const int32_t xs[3] = {1, 5, 3};
  const int32_t ys[3] = {1, 1, 3};
  const int32_t colour[3] = {2, 2, 2};
  const double z[3] = {0, 0, 0};
  EXPECT_EQ(qqztri(xs, ys, colour, z, raster_device_number), 0);
  const std::vector<uint8_t> whole = page_content();
  open_page(9, 9);
  shaded({1, 1, 0, 2}, {5, 1, 0, 2}, {3, 3, 0, 2});
  EXPECT_EQ(page_content(), whole);
}

// ---- Windows

TEST_F(ShadedTriangle, OnAWindowIsBlueGreenRedAndBlends) {
  for (const int32_t bits : {24, 32}) {
    open_page(9, 9);  // the kind of page is of no account
    open_window(bits, 1);
    const std::string fourth = window_pixel(window, 4, 4).substr(6);
    set_option(19, 51);
    shaded_sheet(0, packed_rgb(100, 200, 0), window_device_number);
    EXPECT_EQ(window_pixel(window, 4, 4), "00c864" + fourth);
    layer(3);
    shaded_sheet(0, packed_rgb(200, 100, 255), window_device_number);
    EXPECT_EQ(window_pixel(window, 4, 4), "33b478" + fourth);
    layer(4);
  }
}

TEST_F(ShadedTriangle, OnAWindowOf16BitsSetsPixelsAndDoesNotBlend) {
  open_rgba_page(9, 9, true);
  open_window(16);
  depth_buffer(0);
  layer(3);
  set_option(3, 1);
  shaded_sheet(0.5, packed_rgb(1, 2, 3), window_device_number);
  EXPECT_EQ(window.pixels[4 * 9 + 4], 0x030201U);
  shaded_sheet(0.5, packed_rgb(0, 0, 0), window_device_number);
  EXPECT_EQ(window.pixels[4 * 9 + 4], 0xFFFFFFU);
}

TEST_F(ShadedTriangle, OnAPaletteWindowIsTheMappedNearestColour) {
  open_rgba_page(9, 9);
  open_window(8, 2);
  depth_buffer(0);
  layer(3);
  shaded_sheet(0.5, packed_rgb(250, 4, 3), window_device_number);
  EXPECT_EQ(*pixel_at(window, 4, 4), 12);
  shaded_sheet(0.5, 3, window_device_number);
  EXPECT_EQ(*pixel_at(window, 4, 4), 13);
}

TEST_F(ShadedTriangle, NeedsARecordAndAPage) {
  shaded_sheet(0, 2);
  EXPECT_EQ(output_context, nullptr);
  set_option(19, 255);
  set_clip_rectangle(-10, -10, 50, 50);
  shaded_sheet(0, 2);
  shaded_sheet(0, 2, window_device_number);
  open_page(3, 3);
  qqvfin();
  shaded_sheet(0, 2);
}

}  // namespace
}  // namespace quorix::testing

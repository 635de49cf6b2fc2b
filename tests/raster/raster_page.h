// SPDX-License-Identifier: MIT
// What the raster tests share: a record of their own, pages with a known palette, and pages shown
// as text.

#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "core/output_context.h"
#include "quorix/quorix.h"

namespace quorix::testing {

// Each test starts without a record and leaves none.
class RasterTest : public ::testing::Test {
 protected:
  void SetUp() override { qqwfree(); }
  void TearDown() override { qqwfree(); }
};

// Open a page of that size with colour 1 current. Its palette: 0 black, 1 white, 2 red, 3 green,
// 4 blue, 5 yellow, from 6 on the grey of the index.
void open_page(int32_t width, int32_t height);
void open_rgba_page(int32_t width, int32_t height, bool white = false);
uint32_t test_palette_word(uint32_t index);

// 0x01BBGGRR.
int32_t packed_rgb(uint32_t r, uint32_t g, uint32_t b);

void set_option(int32_t option, int32_t value);
void set_pen(int32_t width, int32_t cap, int32_t join);
void set_clip_rectangle(int32_t x1, int32_t y1, int32_t x2, int32_t y2);
void switch_clipping(bool on);

// Draws what is still gathered.
void flush_lines();

// The page after a flush, a line of characters per row. A palette page shows '.' for 0, digits and
// letters for indices up to 35, '?' beyond; an RGBA page '.' for a pixel whose alpha is 0, '#' for
// any other.
std::string picture();
std::string picture_without_flush();
// Rows of a picture, each ended as picture() ends them.
std::string rows(const std::vector<std::string> &lines);
// A row of a palette page: background, but 1 from `first` to `last`. Without them all background.
std::string row(int32_t width, int32_t first = 0, int32_t last = -1);
// Row y of picture().
std::string row_at(int32_t y);

// One pixel: its index, or "rrggbbaa" in hexadecimal digits.
int32_t index_at(int32_t x, int32_t y);
std::string rgba_at(int32_t x, int32_t y);

// Points drawn as one polyline.
struct PenPoint {
  int32_t x;
  int32_t y;
};
void draw_polyline(const std::vector<PenPoint> &points);

int32_t fill_polygon_of(const std::vector<double> &xs, const std::vector<double> &ys);

// All bytes of the page, without a flush.
std::vector<uint8_t> page_content();

}  // namespace quorix::testing

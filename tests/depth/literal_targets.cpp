// SPDX-License-Identifier: MIT
//
// Literal depth renderer: what can be drawn on, one pixel at a time, and the depth beside it.

#include <algorithm>

#include "tests/depth/literal_depth.h"

namespace quorix::literal {

bool is_raster(int32_t device) {
  return device > 100;
}

int32_t rounded(double value) {
  return to_int(value + 0.5);
}

Rgb resolved(const LiteralRaster &raster, int32_t colour) {
  if (is_packed(colour)) return packed_bytes(colour);
  return palette_entry(raster, index_of(colour));
}

bool has_pixel(const LiteralDepth &record, int32_t device, int64_t x, int64_t y) {
  if (is_raster(device)) return on_page(record.raster, x, y);
  return record.window != nullptr && testing::contains(*record.window, x, y);
}

int64_t last_row(const LiteralDepth &record, int32_t device) {
  int64_t last = -1;
  if (is_raster(device) && record.raster.page_valid) last = record.raster.page_height - 1;
  if (!is_raster(device) && record.window != nullptr) last = record.window->height - 1;
  return std::min<int64_t>(last, record.raster.clip_y2);
}

int64_t last_column(const LiteralDepth &record, int32_t device) {
  int64_t last = -1;
  if (is_raster(device) && record.raster.page_valid) last = record.raster.page_width - 1;
  if (!is_raster(device) && record.window != nullptr) last = record.window->width - 1;
  return std::min<int64_t>(last, record.raster.clip_x2);
}

namespace {

void put_in_window(LiteralDepth &record, int64_t x, int64_t y, Rgb rgb, uint8_t index) {
  testing::PlainWindow &window = *record.window;
  if (window.bits == 24 || window.bits == 32) {
    uint8_t *pixel = testing::pixel_at(window, x, y);
    pixel[0] = rgb.b;
    pixel[1] = rgb.g;
    pixel[2] = rgb.r;
  } else if (window.bits == 16) {
    const uint32_t colour = rgb.r + rgb.g * 256U + rgb.b * 65536U;
    window.pixels.at(static_cast<size_t>(y * window.width + x)) = colour;
  } else {
    *testing::pixel_at(window, x, y) = testing::index_to_pixel(window, index);
  }
}

void put_in_raster(LiteralRaster &raster, int64_t x, int64_t y, Rgb rgb, uint8_t index) {
  uint8_t *pixel = pixel_at(raster, x, y);
  if (raster.rgba_mode != 0) {
    pixel[0] = rgb.r;
    pixel[1] = rgb.g;
    pixel[2] = rgb.b;
    pixel[3] = raster.colour_alpha;
  } else {
    pixel[0] = index;
  }
}

}  // namespace

void put_rgb(LiteralDepth &record, int32_t device, int64_t x, int64_t y, Rgb rgb) {
  if (!has_pixel(record, device, x, y)) return;
  const uint8_t nearest = nearest_colour(record.raster, rgb);
  if (is_raster(device)) {
    put_in_raster(record.raster, x, y, rgb, nearest);
  } else {
    put_in_window(record, x, y, rgb, nearest);
  }
}

void put_index(LiteralDepth &record, int32_t device, int64_t x, int64_t y, uint8_t index) {
  if (!has_pixel(record, device, x, y)) return;
  const Rgb rgb = palette_entry(record.raster, index);
  if (is_raster(device)) {
    put_in_raster(record.raster, x, y, rgb, index);
  } else {
    put_in_window(record, x, y, rgb, index);
  }
}

void flush_window(LiteralDepth &record) {
  if (record.window == nullptr) return;
  testing::note(*record.window, "flush()");
  record.raster.poly_count = 0;
}

bool tests_depth(const LiteralDepth &record) {
  return record.depth_on && !record.depth.empty();
}

bool has_depth(const LiteralDepth &record, int64_t x, int64_t y) {
  return x >= 0 && x < record.depth_width && y >= 0 && y < record.depth_height;
}

float &depth_at(LiteralDepth &record, int64_t x, int64_t y) {
  return record.depth.at(static_cast<size_t>(x + y * record.depth_width));
}

void fill_depth(LiteralDepth &record) {
  for (float &value : record.depth)
    value = 2.0F;
}

void clear_page(LiteralRaster &raster) {
  if (!raster.page_valid) return;
  const bool white = raster.white_background != 0 && raster.page_rgba;
  for (size_t i = 0; i < raster.pixels.size(); ++i) {
    raster.pixels[i] = 0;
    if (white && i % 4 != 3) raster.pixels[i] = 255;
  }
}

}  // namespace quorix::literal

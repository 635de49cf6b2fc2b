// SPDX-License-Identifier: MIT
// Literal raster: the record, its options, and the page's life from opening to release.

#include <cstdlib>

#include "tests/raster/literal_raster.h"

namespace quorix::literal {

int32_t to_int(double value) {
  if (value != value) return 0;
  if (value >= 2147483647.0) return INT32_MAX;
  if (value <= -2147483648.0) return INT32_MIN;
  return static_cast<int32_t>(value);
}

uint8_t low_byte(int64_t value) {
  return static_cast<uint8_t>(static_cast<uint64_t>(value) & 255U);
}

void set_output_defaults(LiteralRaster &raster) {
  raster.depth_bias = 0.001F;
  raster.blend_over_background = 1;
  raster.transparent_colour = -1;
  raster.colour_alpha = 255;
  raster.line_width = 1;
  raster.line_cap = 2;
  raster.line_join = 2;
  raster.swap_black_white = 0;
}

void init_record(LiteralRaster &raster) {
  raster = LiteralRaster{};
  raster.exists = true;
}

namespace {

void fill_background(LiteralRaster &raster) {
  const bool white = raster.white_background != 0 && raster.page_rgba;
  for (size_t i = 0; i < raster.pixels.size(); i++) {
    raster.pixels[i] = 0;
    if (white && i % 4 != 3) raster.pixels[i] = 255;
  }
}

}  // namespace

int32_t qqvini(LiteralRaster &raster, int32_t page_w, int32_t page_h, int32_t *w, int32_t *h,
               int32_t have_size, int32_t *status) {
  if (!raster.exists) init_record(raster);

  int64_t wide = page_w;
  raster.rgba_mode = 0;
  if (wide < 0) {
    raster.rgba_mode = 1;
    wide = -wide;
  }
  raster.white_background = low_byte(*status);
  *status = 0;

  if (have_size == 0) {
    if (wide <= page_h) {
      *w = 603;
      *h = 853;
    } else {
      *w = 853;
      *h = 603;
    }
  }
  raster.width = *w;
  raster.height = *h;
  raster.stride = *w;
  if (raster.rgba_mode != 0) raster.stride = static_cast<int32_t>(static_cast<uint32_t>(*w) * 4U);

  raster.page_valid = false;
  raster.pixels.clear();
  if (*w <= 0 || *h <= 0) {
    *status = 1;
    return 0;
  }

  raster.page_valid = true;
  raster.page_rgba = raster.rgba_mode != 0;
  raster.page_width = *w;
  raster.page_height = *h;
  const size_t bytes_per_pixel = raster.page_rgba ? 4 : 1;
  raster.pixels.resize(static_cast<size_t>(*w) * static_cast<size_t>(*h) * bytes_per_pixel);
  raster.raster_state = 1;
  fill_background(raster);
  raster.clip_x1 = 0;
  raster.clip_y1 = 0;
  raster.clip_x2 = raster.width - 1;
  raster.clip_y2 = raster.height - 1;
  return 0;
}

int32_t qqvfin(LiteralRaster &raster) {
  if (!raster.exists) return 0;
  raster.page_valid = false;
  raster.pixels.clear();
  return 0;
}

int32_t qqvers(LiteralRaster &raster) {
  if (!raster.exists) return 0;
  flush_polyline(raster);
  fill_background(raster);
  return 0;
}

int32_t qqvptr(LiteralRaster &raster, uint8_t **bytes) {
  *bytes = nullptr;
  if (raster.exists && raster.page_valid) *bytes = raster.pixels.data();
  return 0;
}

int32_t qqvwin(LiteralRaster &raster, const int32_t *x, const int32_t *y, const int32_t *w,
               const int32_t *h, int32_t *status) {
  const int64_t left = *x;
  const int64_t top = *y;
  const int64_t wide = *w;
  const int64_t high = *h;
  *status = 0;
  bool inside = raster.exists && raster.page_valid;
  if (left < 0 || top < 0) inside = false;
  if (left >= raster.width || top >= raster.height) inside = false;
  if (left + wide > raster.width || top + high > raster.height) inside = false;
  if (wide <= 0 || high <= 0) inside = false;
  if (!inside) {
    *status = -3;
    return 1;
  }

  const int64_t bytes_per_pixel = raster.stride == raster.width ? 1 : 4;
  std::vector<uint8_t> cropped;
  for (int64_t row = 0; row < high; row++) {
    for (int64_t column = 0; column < wide; column++) {
      const uint8_t *pixel = pixel_at(raster, left + column, top + row);
      for (int64_t i = 0; i < bytes_per_pixel; i++)
        cropped.push_back(pixel[i]);
    }
  }
  raster.pixels = cropped;
  raster.page_width = *w;
  raster.page_height = *h;
  raster.width = *w;
  raster.height = *h;
  raster.stride = static_cast<int32_t>(wide * bytes_per_pixel);
  raster.clip_x2 = raster.width - 1;
  raster.clip_y2 = raster.height - 1;
  return 0;
}

namespace {

bool differs_from_background(LiteralRaster &raster, int64_t x, int64_t y) {
  const uint8_t *pixel = pixel_at(raster, x, y);
  if (!raster.page_rgba) return pixel[0] != 0;
  const uint8_t background = raster.white_background != 0 ? 255 : 0;
  return pixel[0] != background || pixel[1] != background || pixel[2] != background;
}

}  // namespace

int32_t qqvcrp(LiteralRaster &raster, int32_t *x1, int32_t *y1, int32_t *x2, int32_t *y2) {
  *x1 = raster.width;
  *y1 = raster.height;
  *x2 = -1;
  *y2 = -1;
  if (!raster.exists) return 0;
  flush_polyline(raster);
  if (!raster.page_valid) return 0;

  for (int32_t y = 0; y < raster.page_height; y++) {
    for (int32_t x = 0; x < raster.page_width; x++) {
      if (!differs_from_background(raster, x, y)) continue;
      if (x < *x1) *x1 = x;
      if (y < *y1) *y1 = y;
      if (x > *x2) *x2 = x;
      if (y > *y2) *y2 = y;
    }
  }
  return 0;
}

int32_t qqwfree(LiteralRaster &raster) {
  raster = LiteralRaster{};
  return 0;
}

namespace {

void set_transparent_colour(LiteralRaster &raster, int32_t value) {
  raster.transparent_colour = value;
  if (value == -1) return;
  if (is_packed(value)) {
    const Rgb rgb = packed_bytes(value);
    raster.transparent_r = rgb.r;
    raster.transparent_g = rgb.g;
    raster.transparent_b = rgb.b;
    raster.transparent_colour = nearest_colour(raster, rgb);
  } else {
    const Rgb rgb = palette_entry(raster, index_of(value));
    raster.transparent_r = rgb.r;
    raster.transparent_g = rgb.g;
    raster.transparent_b = rgb.b;
  }
}

void set_option(LiteralRaster &raster, int32_t option, int32_t value) {
  switch (option) {
    case 3:
      raster.swap_black_white = low_byte(value);
      return;
    case 11:
      flush_polyline(raster);
      raster.clip_x1 = value;
      return;
    case 12:
      raster.clip_y1 = value;
      return;
    case 13:
      raster.clip_x2 = value;
      return;
    case 14:
      raster.clip_y2 = value;
      return;
    case 17:
      raster.depth_bias = 1e-5F;
      return;
    case 18:
      raster.depth_bias = 0.001F;
      return;
    case 19:
      raster.colour_alpha = low_byte(value);
      return;
    case 21:
      raster.blend_over_background = low_byte(int64_t{1} - value);
      return;
    case 25:
      raster.text_map_level = value;
      return;
    case 26:
      flush_polyline(raster);
      raster.line_width = value;
      return;
    case 27:
      flush_polyline(raster);
      raster.line_cap = value;
      return;
    case 28:
      flush_polyline(raster);
      raster.line_join = value;
      return;
    case 32:
      set_transparent_colour(raster, value);
      return;
    case 33:
      flush_polyline(raster);
      raster.clip_on = value == 1 ? 0 : 1;
      return;
    case 34:
      raster.line_smooth_on = low_byte(int64_t{value} - 1);
      return;
    case 99:
      set_output_defaults(raster);
      return;
    default:
      return;
  }
}

}  // namespace

int32_t qqwwid(LiteralRaster &raster, int32_t option, int32_t *value, int32_t set) {
  if (!raster.exists) init_record(raster);
  if (set == 0) {
    *value = -1;
    return 0;
  }
  set_option(raster, option, *value);
  return 0;
}

}  // namespace quorix::literal

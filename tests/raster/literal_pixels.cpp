// SPDX-License-Identifier: MIT
// Literal raster: every pixel that is written or read, single ones, rows and rectangles.

#include "tests/raster/literal_raster.h"

namespace quorix::literal {

bool on_page(const LiteralRaster &raster, int64_t x, int64_t y) {
  if (!raster.page_valid) return false;
  return x >= 0 && x < raster.page_width && y >= 0 && y < raster.page_height;
}

bool in_clip_columns(const LiteralRaster &raster, int64_t x) {
  return x >= raster.clip_x1 && x <= raster.clip_x2;
}

bool in_clip_rows(const LiteralRaster &raster, int64_t y) {
  return y >= raster.clip_y1 && y <= raster.clip_y2;
}

bool in_clip(const LiteralRaster &raster, int64_t x, int64_t y) {
  return in_clip_columns(raster, x) && in_clip_rows(raster, y);
}

uint8_t *pixel_at(LiteralRaster &raster, int64_t x, int64_t y) {
  const int64_t bytes_per_pixel = raster.page_rgba ? 4 : 1;
  const int64_t offset = (y * raster.page_width + x) * bytes_per_pixel;
  return &raster.pixels.at(static_cast<size_t>(offset));
}

namespace {

void write_index(LiteralRaster &raster, int64_t x, int64_t y, uint8_t index) {
  if (!on_page(raster, x, y)) return;
  pixel_at(raster, x, y)[0] = index;
}

void write_rgb(LiteralRaster &raster, int64_t x, int64_t y, Rgb rgb) {
  if (!on_page(raster, x, y)) return;
  uint8_t *pixel = pixel_at(raster, x, y);
  pixel[0] = rgb.r;
  pixel[1] = rgb.g;
  pixel[2] = rgb.b;
  pixel[3] = raster.colour_alpha;
}

}  // namespace

void write_current(LiteralRaster &raster, int64_t x, int64_t y) {
  if (raster.rgba_mode != 0) {
    write_rgb(raster, x, y, Rgb{raster.colour_r, raster.colour_g, raster.colour_b});
  } else {
    write_index(raster, x, y, raster.colour_index);
  }
}

void write_colour(LiteralRaster &raster, int64_t x, int64_t y, int32_t colour) {
  if (is_packed(colour)) {
    const Rgb rgb = packed_bytes(colour);
    if (raster.rgba_mode != 0) {
      write_rgb(raster, x, y, rgb);
    } else {
      write_index(raster, x, y, nearest_colour(raster, rgb));
    }
  } else {
    const uint8_t index = index_of(colour);
    if (raster.rgba_mode != 0) {
      write_rgb(raster, x, y, palette_entry(raster, index));
    } else {
      write_index(raster, x, y, index);
    }
  }
}

void fill_row_current(LiteralRaster &raster, int64_t x1, int64_t x2, int64_t y) {
  // Columns off the page cannot be written.
  if (x1 < 0) x1 = 0;
  if (x2 > raster.page_width - 1) x2 = raster.page_width - 1;
  for (int64_t x = x1; x <= x2; x++)
    write_current(raster, x, y);
}

int32_t qqvpix(LiteralRaster &raster, int32_t x, int32_t y, int32_t colour) {
  if (!raster.exists) return 0;
  if (!in_clip(raster, x, y)) return 0;
  flush_polyline(raster);
  write_colour(raster, x, y, colour);
  return 0;
}

namespace {

bool is_transparent_rgb(const LiteralRaster &raster, Rgb rgb) {
  if (raster.transparent_colour == -1) return false;
  return rgb.r == raster.transparent_r && rgb.g == raster.transparent_g &&
         rgb.b == raster.transparent_b;
}

bool is_transparent_index(const LiteralRaster &raster, uint8_t index) {
  if (raster.transparent_colour == -1) return false;
  return raster.transparent_colour == index;
}

}  // namespace

int32_t qqvwpx(LiteralRaster &raster, int32_t x, int32_t y, int32_t colour) {
  if (!raster.exists) return 0;
  flush_polyline(raster);
  if (x < 0 || x >= raster.width || y < 0 || y >= raster.height) return 0;
  if (is_packed(colour)) {
    if (is_transparent_rgb(raster, packed_bytes(colour))) return 0;
  } else {
    if (is_transparent_index(raster, index_of(colour))) return 0;
  }
  write_colour(raster, x, y, colour);
  return 0;
}

void write_raster_row(LiteralRaster &raster, const uint8_t *buffer, int32_t x, int32_t y,
                      int64_t count, bool rgb) {
  for (int64_t i = 0; i < count; i++) {
    const int64_t column = x + i;
    if (!on_page(raster, column, y)) continue;
    if (rgb) {
      const Rgb triple{buffer[3 * i], buffer[3 * i + 1], buffer[3 * i + 2]};
      if (is_transparent_rgb(raster, triple)) continue;
      if (raster.rgba_mode != 0) {
        write_rgb(raster, column, y, triple);
      } else {
        write_index(raster, column, y, nearest_colour(raster, triple));
      }
    } else {
      const uint8_t index = buffer[i];
      if (is_transparent_index(raster, index)) continue;
      if (raster.rgba_mode != 0) {
        write_rgb(raster, column, y, palette_entry(raster, index));
      } else {
        write_index(raster, column, y, index);
      }
    }
  }
}

int32_t qqvrow(LiteralRaster &raster, const uint8_t *buffer, int32_t x, int32_t y, int32_t n) {
  if (!raster.exists) return 0;
  flush_polyline(raster);
  const bool rgb = n < 0;
  int64_t count = n;
  if (rgb) count = -count;
  write_raster_row(raster, buffer, x, y, count, rgb);
  return 0;
}

namespace {

Rgb rgb_of_pixel(LiteralRaster &raster, int64_t x, int64_t y) {
  const uint8_t *pixel = pixel_at(raster, x, y);
  if (raster.page_rgba) return Rgb{pixel[0], pixel[1], pixel[2]};
  return palette_entry(raster, pixel[0]);
}

uint8_t index_of_pixel(LiteralRaster &raster, int64_t x, int64_t y) {
  const uint8_t *pixel = pixel_at(raster, x, y);
  if (raster.page_rgba) return nearest_colour(raster, Rgb{pixel[0], pixel[1], pixel[2]});
  return pixel[0];
}

}  // namespace

int32_t qqvrpx(LiteralRaster &raster, int32_t x, int32_t y, int32_t *colour) {
  *colour = 0;
  if (!raster.exists) return 0;
  flush_polyline(raster);
  if (!on_page(raster, x, y)) return 0;
  *colour = index_of_pixel(raster, x, y);
  return 0;
}

int32_t qqvrdr(LiteralRaster &raster, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
               int32_t rows) {
  if (raster.exists) flush_polyline(raster);
  const bool rgb = n < 0;
  const bool upward = rows < 0;
  int64_t columns = n;
  int64_t row_count = rows;
  if (rgb) columns = -columns;
  if (upward) row_count = -row_count;

  int64_t next = 0;
  for (int64_t i = 0; i < row_count; i++) {
    const int64_t row = upward ? y - i : y + i;
    for (int64_t k = 0; k < columns; k++) {
      const bool there = raster.exists && on_page(raster, x + k, row);
      if (rgb) {
        Rgb triple{0, 0, 0};
        if (there) triple = rgb_of_pixel(raster, x + k, row);
        buffer[next] = triple.r;
        buffer[next + 1] = triple.g;
        buffer[next + 2] = triple.b;
        next += 3;
      } else {
        uint8_t index = 0;
        if (there) index = index_of_pixel(raster, x + k, row);
        buffer[next] = index;
        next += 1;
      }
    }
  }
  return 0;
}

}  // namespace quorix::literal

// SPDX-License-Identifier: MIT
// Literal raster: the polyline accumulator, the choice of a renderer, dots and straight rows and
// columns.

#include <utility>

#include "tests/raster/literal_raster.h"

namespace quorix::literal {

namespace {

void keep_as_start_point(LiteralRaster &raster, int32_t x, int32_t y) {
  raster.poly_x[0] = x;
  raster.poly_y[0] = y;
  raster.poly_pen_up = 1;
  raster.poly_count = 1;
}

}  // namespace

int32_t qqvdrw(LiteralRaster &raster, int32_t x, int32_t y, int32_t code) {
  if (!raster.exists) return 0;
  if (code == 2) {
    const int32_t c = raster.poly_count;
    if (c > 0 && (x != raster.poly_x[c - 1] || y != raster.poly_y[c - 1])) {
      raster.poly_x[c] = x;
      raster.poly_y[c] = y;
      raster.poly_count = c + 1;
    }
    raster.poly_pen_up = 0;
    if (raster.poly_count < max_points) return 0;
  }
  const int32_t c = raster.poly_count;
  if (c > 1 || (c == 1 && raster.poly_pen_up == 0)) {
    render_polyline(raster, raster.poly_x, raster.poly_y, c);
  }
  keep_as_start_point(raster, x, y);
  return 0;
}

int32_t qqvlin(LiteralRaster &raster, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  qqvdrw(raster, x1, y1, 3);
  qqvdrw(raster, x2, y2, 2);
  return 0;
}

void flush_polyline(LiteralRaster &raster) {
  const int32_t c = raster.poly_count;
  if (c == 0) return;
  if (c == 1 && raster.poly_pen_up != 0) return;
  render_polyline(raster, raster.poly_x, raster.poly_y, c);
  keep_as_start_point(raster, raster.poly_x[c - 1], raster.poly_y[c - 1]);
}

namespace {

void draw_dot(LiteralRaster &raster, int32_t x, int32_t y) {
  // A width below 1 is one pixel, here as for lines.
  if (raster.line_width <= 1 || raster.line_cap == 0) {
    if (in_clip(raster, x, y)) write_current(raster, x, y);
    return;
  }
  if (raster.line_cap == 2) {
    const int64_t left = int64_t{x} - raster.line_width / 2;
    const int64_t top = int64_t{y} - raster.line_width / 2;
    const int64_t right = left + raster.line_width - 1;
    const int64_t bottom = top + raster.line_width - 1;
    for (int64_t row = top; row <= bottom; row++) {
      for (int64_t column = left; column <= right; column++) {
        if (in_clip(raster, column, row)) write_current(raster, column, row);
      }
    }
    return;
  }
  draw_disc(raster, x, y, raster.line_width / 2, false);
}

}  // namespace

void render_polyline(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t n) {
  if (raster.line_width >= 4 && n >= 2) {
    draw_thick(raster, xs, ys, n);
  } else if (n == 1) {
    draw_dot(raster, xs[0], ys[0]);
  } else if (raster.rgba_mode != 0 && raster.line_smooth_on != 0 && raster.line_width == 1) {
    draw_smooth(raster, xs, ys, n);
  } else if (raster.clip_on == 0 && raster.line_width < 2) {
    draw_fast(raster, xs, ys, n);
  } else {
    draw_wide(raster, xs, ys, n);
  }
}

void draw_hline(LiteralRaster &raster, int64_t x1, int64_t y, int64_t x2) {
  if (x1 > x2) std::swap(x1, x2);
  if (raster.clip_on != 0) {
    if (!in_clip_rows(raster, y)) return;
    if (x1 < raster.clip_x1) x1 = raster.clip_x1;
    if (x2 > raster.clip_x2) x2 = raster.clip_x2;
  }
  fill_row_current(raster, x1, x2, y);
  if (raster.line_width > 1) {
    int64_t sign = 1;
    for (int64_t i = 1; i <= raster.line_width - 1; i++) {
      const int64_t offset = (i + 1) / 2;
      const int64_t row = y + offset * sign;
      if (in_clip_rows(raster, row)) {
        fill_row_current(raster, x1, x2, row);
        sign = -sign;
      }
    }
  }
}

namespace {

void fill_column_current(LiteralRaster &raster, int64_t x, int64_t y1, int64_t y2) {
  // Rows off the page cannot be written.
  if (y1 < 0) y1 = 0;
  if (y2 > raster.page_height - 1) y2 = raster.page_height - 1;
  for (int64_t y = y1; y <= y2; y++)
    write_current(raster, x, y);
}

}  // namespace

void draw_vline(LiteralRaster &raster, int64_t x, int64_t y1, int64_t y2) {
  if (y1 > y2) std::swap(y1, y2);
  if (raster.clip_on != 0) {
    if (!in_clip_columns(raster, x)) return;
    if (y1 < raster.clip_y1) y1 = raster.clip_y1;
    if (y2 > raster.clip_y2) y2 = raster.clip_y2;
  }
  fill_column_current(raster, x, y1, y2);
  if (raster.line_width > 1) {
    int64_t sign = 1;
    for (int64_t i = 1; i <= raster.line_width - 1; i++) {
      const int64_t offset = (i + 1) / 2;
      const int64_t column = x + offset * sign;
      if (in_clip_columns(raster, column)) {
        fill_column_current(raster, column, y1, y2);
        sign = -sign;
      }
    }
  }
}

}  // namespace quorix::literal

// SPDX-License-Identifier: MIT
// Literal raster: lines of width 1 to 3. Fast ones are not clipped, wide ones are, and smooth ones
// are blended by their distance to the ideal line.

#include <utility>

#include "tests/raster/literal_raster.h"

namespace quorix::literal {

namespace {

__extension__ using Wide = __int128;

int64_t distance(int64_t a, int64_t b) {
  return a < b ? b - a : a - b;
}

}  // namespace

Walk walk_from(int64_t step, int64_t major, int64_t minor) {
  // Without the wrap the error term would stand at -(major / 2) + step * minor; each step along
  // the minor axis takes one `major` off, as often as it takes to be not above 0.
  const Wide unwrapped = Wide{-(major / 2)} + Wide{step} * minor;
  Wide moved = 0;
  if (unwrapped > 0) moved = (unwrapped + major - 1) / major;
  return Walk{step, major, static_cast<int64_t>(moved),
              static_cast<int64_t>(unwrapped - moved * major)};
}

namespace {

// The walk of a line that starts at `start` on its major axis and takes `major` steps in
// `direction`. A long walk is cut to its steps on the page, 0 to size - 1: the others write
// nothing.
Walk plan_walk(int64_t start, int64_t direction, int64_t major, int64_t minor, int64_t size) {
  if (major <= long_walk) return Walk{0, major, 0, -(major / 2)};
  int64_t first = direction > 0 ? -start : start - (size - 1);
  int64_t last = direction > 0 ? size - 1 - start : start;
  if (first < 0) first = 0;
  if (last > major) last = major;
  if (first > last) return Walk{0, -1, 0, 0};
  Walk walk = walk_from(first, major, minor);
  walk.last = last;
  return walk;
}

void draw_fast_segment(LiteralRaster &raster, int64_t x0, int64_t y0, int64_t x1, int64_t y1) {
  if (y0 == y1) {
    draw_hline(raster, x0, y0, x1);
    return;
  }
  if (x0 == x1) {
    draw_vline(raster, x0, y0, y1);
    return;
  }
  const int64_t dx = distance(x0, x1);
  const int64_t dy = distance(y0, y1);
  const int64_t step_x = x0 < x1 ? 1 : -1;
  const int64_t step_y = y0 < y1 ? 1 : -1;
  if (dx <= dy) {
    const Walk walk = plan_walk(y0, step_y, dy, dx, raster.page_height);
    int64_t x = x0 + walk.moved * step_x;
    int64_t y = y0 + walk.first * step_y;
    int64_t e = walk.error;
    for (int64_t k = walk.first; k <= walk.last; k++) {
      write_current(raster, x, y);
      y += step_y;
      e += dx;
      if (e > 0) {
        e -= dy;
        x += step_x;
      }
    }
  } else {
    const Walk walk = plan_walk(x0, step_x, dx, dy, raster.page_width);
    int64_t x = x0 + walk.first * step_x;
    int64_t y = y0 + walk.moved * step_y;
    int64_t e = walk.error;
    for (int64_t k = walk.first; k <= walk.last; k++) {
      write_current(raster, x, y);
      x += step_x;
      e += dy;
      if (e > 0) {
        e -= dx;
        y += step_y;
      }
    }
  }
}

// One row of a steep wide line, around the column cx.
void draw_wide_row(LiteralRaster &raster, int64_t cx, int64_t y) {
  if (raster.rgba_mode == 0) {
    // A palette raster draws the extra pixels only around a centre inside the clip.
    if (!in_clip(raster, cx, y)) return;
    write_current(raster, cx, y);
  } else {
    if (!in_clip_rows(raster, y)) return;
    if (in_clip_columns(raster, cx)) write_current(raster, cx, y);
  }
  if (raster.line_width > 1) {
    int64_t sign = 1;
    for (int64_t i = 1; i <= raster.line_width - 1; i++) {
      const int64_t offset = (i + 1) / 2;
      const int64_t x = cx + offset * sign;
      if (in_clip_columns(raster, x)) write_current(raster, x, y);
      sign = -sign;
    }
  }
}

// One column of a flat wide line, around the row cy.
void draw_wide_column(LiteralRaster &raster, int64_t x, int64_t cy) {
  if (raster.rgba_mode == 0) {
    if (!in_clip(raster, x, cy)) return;
    write_current(raster, x, cy);
  } else {
    if (!in_clip_columns(raster, x)) return;
    if (in_clip_rows(raster, cy)) write_current(raster, x, cy);
  }
  if (raster.line_width > 1) {
    int64_t sign = 1;
    for (int64_t i = 1; i <= raster.line_width - 1; i++) {
      const int64_t offset = (i + 1) / 2;
      const int64_t y = cy + offset * sign;
      if (in_clip_rows(raster, y)) write_current(raster, x, y);
      sign = -sign;
    }
  }
}

void draw_wide_segment(LiteralRaster &raster, int64_t x0, int64_t y0, int64_t x1, int64_t y1) {
  if (y0 == y1) {
    draw_hline(raster, x0, y0, x1);
    return;
  }
  if (x0 == x1) {
    draw_vline(raster, x0, y0, y1);
    return;
  }
  const int64_t dx = distance(x0, x1);
  const int64_t dy = distance(y0, y1);
  if (dx <= dy) {
    if (y0 > y1) {
      std::swap(x0, x1);
      std::swap(y0, y1);
    }
    const int64_t step = x0 > x1 ? -1 : 1;
    const Walk walk = plan_walk(y0, 1, dy, dx, raster.page_height);
    int64_t cx = x0 + walk.moved * step;
    int64_t e = walk.error;
    for (int64_t y = y0 + walk.first; y <= y0 + walk.last; y++) {
      draw_wide_row(raster, cx, y);
      e += dx;
      if (e > 0) {
        e -= dy;
        cx += step;
      }
    }
  } else {
    if (x0 > x1) {
      std::swap(x0, x1);
      std::swap(y0, y1);
    }
    const int64_t step = y0 > y1 ? -1 : 1;
    const Walk walk = plan_walk(x0, 1, dx, dy, raster.page_width);
    int64_t cy = y0 + walk.moved * step;
    int64_t e = walk.error;
    for (int64_t x = x0 + walk.first; x <= x0 + walk.last; x++) {
      draw_wide_column(raster, x, cy);
      e += dy;
      if (e > 0) {
        e -= dx;
        cy += step;
      }
    }
  }
}

// Mixes the current colour into a pixel. A weight outside 0 to 1 comes out beyond a byte, of which
// the low 8 bits count.
void blend_pixel(LiteralRaster &raster, int64_t x, int64_t y, double weight) {
  if (!in_clip(raster, x, y)) return;
  if (!on_page(raster, x, y)) return;
  const uint8_t wanted[3] = {raster.colour_r, raster.colour_g, raster.colour_b};
  uint8_t *pixel = pixel_at(raster, x, y);
  for (int i = 0; i < 3; i++) {
    const double before = pixel[i];
    const double after = wanted[i];
    pixel[i] = low_byte(to_int(before + (after - before) * weight + 0.5));
  }
  pixel[3] = raster.colour_alpha;
}

void draw_diagonal(LiteralRaster &raster, int64_t x0, int64_t y0, int64_t x1, int64_t y1) {
  if (x0 > x1) {
    std::swap(x0, x1);
    std::swap(y0, y1);
  }
  const int64_t step = y0 > y1 ? -1 : 1;
  int64_t y = y0;
  for (int64_t x = x0; x <= x1; x++) {
    if (in_clip(raster, x, y)) write_current(raster, x, y);
    y += step;
  }
}

void draw_smooth_segment(LiteralRaster &raster, int64_t x0, int64_t y0, int64_t x1, int64_t y1) {
  if (y0 == y1) {
    draw_hline(raster, x0, y0, x1);
    return;
  }
  if (x0 == x1) {
    draw_vline(raster, x0, y0, y1);
    return;
  }
  if (distance(x0, x1) == distance(y0, y1)) {
    draw_diagonal(raster, x0, y0, x1, y1);
    return;
  }
  if (in_clip(raster, x1, y1)) write_current(raster, x1, y1);
  if (in_clip(raster, x0, y0)) write_current(raster, x0, y0);
  const double fx = static_cast<double>(x1 - x0);
  const double fy = static_cast<double>(y1 - y0);
  if (distance(y0, y1) < distance(x0, x1)) {
    if (x0 > x1) {
      std::swap(x0, x1);
      std::swap(y0, y1);
    }
    const double m = fy / fx;
    double y = static_cast<double>(y0);
    for (int64_t x = x0 + 1; x <= x1 - 1; x++) {
      y += m;
      const int64_t i = to_int(y);
      const double f = y - static_cast<double>(i);
      const double g = 1.0 - f;
      blend_pixel(raster, x, i + 1, f);
      blend_pixel(raster, x, i, g);
    }
  } else {
    if (y0 > y1) {
      std::swap(x0, x1);
      std::swap(y0, y1);
    }
    const double m = fx / fy;
    double x = static_cast<double>(x0);
    for (int64_t y = y0 + 1; y <= y1 - 1; y++) {
      x += m;
      const int64_t i = to_int(x);
      const double f = x - static_cast<double>(i);
      const double g = 1.0 - f;
      blend_pixel(raster, i + 1, y, f);
      blend_pixel(raster, i, y, g);
    }
  }
}

}  // namespace

void draw_fast(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t n) {
  for (int32_t i = 1; i < n; i++)
    draw_fast_segment(raster, xs[i - 1], ys[i - 1], xs[i], ys[i]);
}

void draw_wide(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t n) {
  for (int32_t i = 1; i < n; i++)
    draw_wide_segment(raster, xs[i - 1], ys[i - 1], xs[i], ys[i]);
}

void draw_smooth(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t n) {
  for (int32_t i = 1; i < n; i++)
    draw_smooth_segment(raster, xs[i - 1], ys[i - 1], xs[i], ys[i]);
}

}  // namespace quorix::literal

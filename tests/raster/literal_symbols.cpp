// SPDX-License-Identifier: MIT
// Literal raster: plot markers, as strokes through the line renderers, fills through the polygon
// filler, circles and discs.

#include <initializer_list>

#include "tests/raster/literal_raster.h"

namespace quorix::literal {

namespace {

struct Corner {
  int32_t x;
  int32_t y;
};

using Stroke = std::vector<Corner>;

void draw_stroke(LiteralRaster &raster, const Stroke &stroke) {
  std::vector<int32_t> xs;
  std::vector<int32_t> ys;
  for (const Corner &corner : stroke) {
    xs.push_back(corner.x);
    ys.push_back(corner.y);
  }
  render_polyline(raster, xs.data(), ys.data(), static_cast<int32_t>(stroke.size()));
}

void fill_stroke(LiteralRaster &raster, const Stroke &stroke) {
  std::vector<Point> points;
  for (const Corner &corner : stroke) {
    points.push_back(Point{static_cast<double>(corner.x), static_cast<double>(corner.y)});
  }
  int32_t status = 0;
  fill_polygon(raster, points, &status);
}

bool is_one_of(int32_t symbol, std::initializer_list<int32_t> symbols) {
  for (const int32_t candidate : symbols) {
    if (symbol == candidate) return true;
  }
  return false;
}

void write_clipped(LiteralRaster &raster, int64_t x, int64_t y) {
  if (in_clip(raster, x, y)) write_current(raster, x, y);
}

void plot_circle_point(LiteralRaster &raster, int number, int64_t x, int64_t y) {
  write_clipped(raster, x, y);
  if (raster.line_width <= 1) return;
  int64_t sign = 1;
  for (int64_t i = 1; i <= raster.line_width - 1; i++) {
    const int64_t offset = (i + 1) / 2;
    if (number == 0 || number == 1 || number == 4 || number == 5) {
      write_clipped(raster, x, y + offset * sign);
    } else {
      write_clipped(raster, x + offset * sign, y);
    }
    sign = -sign;
  }
}

void plot_octants(LiteralRaster &raster, int64_t cx, int64_t cy, int64_t a, int64_t b,
                  bool upper_half_only) {
  plot_circle_point(raster, 0, cx + a, cy - b);
  plot_circle_point(raster, 1, cx - a, cy - b);
  plot_circle_point(raster, 2, cx + b, cy - a);
  plot_circle_point(raster, 3, cx - b, cy - a);
  if (upper_half_only) return;
  plot_circle_point(raster, 4, cx + a, cy + b);
  plot_circle_point(raster, 5, cx - a, cy + b);
  plot_circle_point(raster, 6, cx + b, cy + a);
  plot_circle_point(raster, 7, cx - b, cy + a);
}

void draw_circle(LiteralRaster &raster, int64_t cx, int64_t cy, int64_t r, bool upper_half_only) {
  int64_t a = 0;
  int64_t b = r;
  int64_t d = 1 - r;
  plot_octants(raster, cx, cy, a, b, upper_half_only);
  while (a < b) {
    a += 1;
    if (d >= 0) {
      b -= 1;
      d += 2 * (a - b) + 1;
    } else {
      d += 2 * a + 1;
    }
    plot_octants(raster, cx, cy, a, b, upper_half_only);
  }
}

void draw_strokes(LiteralRaster &raster, int32_t symbol, int32_t x, int32_t y, int32_t h) {
  const int32_t q = h / 2;
  if (is_one_of(symbol, {3, 8, 9, 10, 12})) {
    draw_stroke(raster, {{x - h, y}, {x + h, y}});
    draw_stroke(raster, {{x, y - h}, {x, y + h}});
  }
  if (is_one_of(symbol, {4, 7, 8, 13})) {
    draw_stroke(raster, {{x - h, y - h}, {x + h, y + h}});
    draw_stroke(raster, {{x - h, y + h}, {x + h, y - h}});
  }
  const Stroke square{
      {x - h, y - h}, {x + h, y - h}, {x + h, y + h}, {x - h, y + h}, {x - h, y - h}};
  if (is_one_of(symbol, {0, 7, 12, 14, 16})) draw_stroke(raster, square);
  const Stroke octagon{{x - q, y - h}, {x + q, y - h}, {x + h, y - q},
                       {x + h, y + q}, {x + q, y + h}, {x - q, y + h},
                       {x - h, y + q}, {x - h, y - q}, {x - q, y - h}};
  if (is_one_of(symbol, {1, 10, 13, 17})) draw_stroke(raster, octagon);
  const Stroke triangle_up{{x, y - h}, {x + h, y + h}, {x - h, y + h}, {x, y - h}};
  if (is_one_of(symbol, {2, 11, 14, 18})) draw_stroke(raster, triangle_up);
  const Stroke triangle_down{{x, y + h}, {x - h, y - h}, {x + h, y - h}, {x, y + h}};
  if (is_one_of(symbol, {6, 11, 20})) draw_stroke(raster, triangle_down);
  const Stroke diamond{{x, y - h}, {x + h, y}, {x, y + h}, {x - h, y}, {x, y - h}};
  if (is_one_of(symbol, {5, 9, 19})) draw_stroke(raster, diamond);

  if (symbol == 16) fill_stroke(raster, square);
  if (symbol == 17) fill_stroke(raster, octagon);
  if (symbol == 18) fill_stroke(raster, triangle_up);
  if (symbol == 20) fill_stroke(raster, triangle_down);
  if (symbol == 19) fill_stroke(raster, diamond);
}

}  // namespace

int32_t qqvsym(LiteralRaster &raster, int32_t symbol, int32_t x, int32_t y, int32_t size) {
  if (!raster.exists) return 0;
  flush_polyline(raster);
  const uint8_t saved_clip_on = raster.clip_on;
  raster.clip_on = 1;
  const int32_t h = size / 2;
  draw_strokes(raster, symbol, x, y, h);
  if (symbol == 15) draw_circle(raster, x, y, h, false);
  if (symbol == 21) draw_disc(raster, x, y, h, false);
  if (symbol == 22) {
    draw_circle(raster, x, y, h, true);
    draw_hline(raster, int64_t{x} - h, y, int64_t{x} + h);
  }
  if (symbol == 23) draw_disc(raster, x, y, h, true);
  raster.clip_on = saved_clip_on;
  return 0;
}

}  // namespace quorix::literal

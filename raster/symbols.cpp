// SPDX-License-Identifier: MIT
//
// Plot markers, built from strokes of the pen in force, fills, circles and discs.
//
// Each shape is filled right after its strokes.
#include <cstddef>

#include "base/numbers.h"
#include "quorix/raster.h"
#include "raster/raster.h"
#include "raster/symbol_shapes.h"

namespace quorix {

namespace {

// The last corner repeats the first and is left out.
void fill_shape(const OutputContext *context, const ShapePoints &points, int32_t corners) {
  double xs[max_shape_corners];
  double ys[max_shape_corners];
  for (int32_t i = 0; i < corners; ++i) {
    xs[i] = points.x[i];
    ys[i] = points.y[i];
  }
  int32_t status = 0;
  fill_polygon(context, xs, ys, corners, &status);
}

void draw_shapes(OutputContext *context, int32_t symbol, int32_t x, int32_t y, int32_t h) {
  for (const SymbolShape &shape : symbol_shapes) {
    if (!draws_shape(shape, symbol)) continue;
    const ShapePoints points = place_shape(shape, x, y, h);
    render_polyline(context, points.x, points.y, shape.corners);
    if (shape.filled_symbol == symbol) fill_shape(context, points, shape.corners);
  }
}

// The pixels of a pen at one point of a circle: extra ones above and below where the circle is
// flat, beside it where it is steep, at offsets +1, -1, +2, -2, ... Only those that can lie in the
// box are visited, however wide the pen is.
template <class Pixel>
void draw_circle_point(const Surface<Pixel> &s, int32_t line_width, int64_t x, int64_t y,
                       bool flat) {
  put_pixel(s, x, y);
  const int64_t at = flat ? y : x;
  const int64_t low = flat ? s.box.y1 : s.box.x1;
  const int64_t high = flat ? s.box.y2 : s.box.x2;
  const int64_t nearest = std::max({int64_t{1}, low - at, at - high});
  const int64_t farthest = std::max(high - at, at - low);
  const int64_t end = std::min<int64_t>(line_width, 2 * farthest + 1);
  for (int64_t i = 2 * nearest - 1; i < end; ++i) {
    const int64_t offset = i % 2 != 0 ? (i + 1) / 2 : -((i + 1) / 2);
    put_pixel(s, flat ? x : x + offset, flat ? y + offset : y);
  }
}

template <class Pixel>
void draw_octants(const Surface<Pixel> &s, int32_t line_width, int64_t cx, int64_t cy, int64_t a,
                  int64_t b, bool upper_half_only) {
  const auto point = [&](int64_t x, int64_t y, bool flat) {
    draw_circle_point(s, line_width, cx + x, cy + y, flat);
  };
  point(a, -b, true);
  point(-a, -b, true);
  point(b, -a, false);
  point(-b, -a, false);
  if (upper_half_only) return;
  point(a, b, true);
  point(-a, b, true);
  point(b, a, false);
  point(-b, a, false);
}

// The midpoint circle.
template <class Pixel>
void draw_circle(const Surface<Pixel> &s, int32_t line_width, int32_t cx, int32_t cy, int32_t r,
                 bool upper_half_only) {
  int64_t a = 0;
  int64_t b = r;
  int64_t d = 1 - static_cast<int64_t>(r);
  draw_octants(s, line_width, cx, cy, a, b, upper_half_only);
  while (a < b) {
    ++a;
    if (d >= 0) {
      --b;
      d += 2 * (a - b) + 1;
    } else {
      d += 2 * a + 1;
    }
    draw_octants(s, line_width, cx, cy, a, b, upper_half_only);
  }
}

void draw_round_symbol(const OutputContext *context, int32_t symbol, int32_t x, int32_t y,
                       int32_t h) {
  const bool upper_half_only = symbol == symbol_half_circle || symbol == symbol_half_disc;
  with_surface(context, [&](const auto &s) {
    if (symbol == symbol_disc || symbol == symbol_half_disc) {
      draw_disc(s, x, y, h, upper_half_only);
      return;
    }
    draw_circle(s, context->pen.line_width, x, y, h, upper_half_only);
    if (upper_half_only) draw_hline(s, context, saturated_sum(x, -h), y, saturated_sum(x, h));
  });
}

}  // namespace

void draw_symbol(OutputContext *context, int32_t symbol, int32_t x, int32_t y, int32_t h) {
  if (symbol == symbol_circle || (symbol >= symbol_disc && symbol <= symbol_half_disc)) {
    draw_round_symbol(context, symbol, x, y, h);
  } else if (symbol >= 0 && symbol < symbol_disc) {
    draw_shapes(context, symbol, x, y, h);
  }
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvsym(int32_t symbol, int32_t x, int32_t y, int32_t size) {
  OutputContext *context = output_context;
  if (context == nullptr) return 0;
  flush_raster(context);
  const uint8_t clip_on = context->page.clip_on;
  context->page.clip_on = 1;  // markers are always clipped
  draw_symbol(context, symbol, x, y, size / 2);
  context->page.clip_on = clip_on;
  return 0;
}

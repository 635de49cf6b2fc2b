// SPDX-License-Identifier: MIT
//
// The pen: moves gather into a polyline of up to 100 points, which is drawn as a whole when the
// pen lifts, the store is full or the state changes. Here too: which renderer draws it.
#include "quorix/raster.h"

#include "base/numbers.h"
#include "raster/raster.h"

namespace quorix {

namespace {

constexpr int32_t thick_width = 4;  // pens from this width on are drawn as polygons
constexpr int32_t pen_draws = 2;    // the code of a move that draws; all others lift the pen
constexpr int32_t pen_lifts = 3;

// One point: a pixel, a square or a disc, by the cap.
template <class Pixel>
void draw_dot(const Surface<Pixel> &s, const OutputContext *context, int32_t x, int32_t y) {
  const int32_t width = context->pen.line_width;
  if (width <= 1 || context->pen.line_cap == cap_butt) {
    put_pixel(s, x, y);
    return;
  }
  if (context->pen.line_cap != cap_square) {
    draw_disc(s, x, y, width / 2, false);
    return;
  }
  const int64_t left = static_cast<int64_t>(x) - width / 2;
  const int64_t top = static_cast<int64_t>(y) - width / 2;
  const int64_t x1 = std::max<int64_t>(left, s.box.x1);
  const int64_t x2 = std::min<int64_t>(left + width - 1, s.box.x2);
  if (x1 > x2) return;
  const int64_t last = std::min<int64_t>(top + width - 1, s.box.y2);
  for (int64_t row = std::max<int64_t>(top, s.box.y1); row <= last; ++row) {
    fill_span(s, static_cast<int32_t>(x1), static_cast<int32_t>(x2), static_cast<int32_t>(row));
  }
}

void draw_wide(const PaletteSurface &s, const OutputContext *context, const int32_t *xs,
               const int32_t *ys, int32_t n) {
  draw_wide_palette(s, context, xs, ys, n);
}

void draw_wide(const RgbaSurface &s, const OutputContext *context, const int32_t *xs,
               const int32_t *ys, int32_t n) {
  draw_wide_rgba(s, context, xs, ys, n);
}

// Only RGBA rasters know antialiasing.
bool draw_smooth(const PaletteSurface & /*s*/, const OutputContext * /*context*/,
                 const int32_t * /*xs*/, const int32_t * /*ys*/, int32_t /*n*/) {
  return false;
}

bool draw_smooth(const RgbaSurface &s, const OutputContext *context, const int32_t *xs,
                 const int32_t *ys, int32_t n) {
  if (context->pen.line_smooth_on == 0 || context->pen.line_width != 1) return false;
  draw_smooth_rgba(s, context, xs, ys, n);
  return true;
}

// What is gathered is drawn; the pen stays where it is.
void render_gathered(OutputContext *context) {
  if (draw_lone_segment(context)) return;
  render_polyline(context, context->accumulator.poly_x, context->accumulator.poly_y,
                  context->accumulator.poly_count);
}

void start_at(OutputContext *context, int32_t x, int32_t y) {
  context->accumulator.poly_x[0] = x;
  context->accumulator.poly_y[0] = y;
  context->accumulator.poly_pen_up = 1;
  context->accumulator.poly_count = 1;
}

void append_point(OutputContext *context, int32_t x, int32_t y) {
  const int32_t count = context->accumulator.poly_count;
  context->accumulator.poly_pen_up = 0;  // also for a point that is not stored: it makes a dot
  if (count == 0) return;
  if (x == context->accumulator.poly_x[count - 1] && y == context->accumulator.poly_y[count - 1])
    return;
  context->accumulator.poly_x[count] = x;
  context->accumulator.poly_y[count] = y;
  context->accumulator.poly_count = count + 1;
}

void move_pen(OutputContext *context, int32_t x, int32_t y, int32_t code) {
  if (code == pen_draws) {
    append_point(context, x, y);
    if (context->accumulator.poly_count < poly_capacity) return;
  }
  const int32_t count = context->accumulator.poly_count;
  if (count > 1 || (count == 1 && context->accumulator.poly_pen_up == 0)) render_gathered(context);
  start_at(context, x, y);
}

}  // namespace

void render_polyline(OutputContext *context, const int32_t *xs, const int32_t *ys, int32_t n) {
  with_surface(context, [&](const auto &s) {
    if (context->pen.line_width >= thick_width && n >= 2) {
      draw_thick(s, context, xs, ys, n);
    } else if (n == 1) {
      draw_dot(s, context, xs[0], ys[0]);
    } else if (draw_smooth(s, context, xs, ys, n)) {
      return;
    } else if (context->page.clip_on == 0 && context->pen.line_width < 2) {
      draw_fast(s, context, xs, ys, n);
    } else {
      draw_wide(s, context, xs, ys, n);
    }
  });
}

void flush_raster(OutputContext *context) {
  const int32_t count = context->accumulator.poly_count;
  if (count == 0 || (count == 1 && context->accumulator.poly_pen_up != 0)) return;
  render_gathered(context);
  start_at(context, context->accumulator.poly_x[count - 1], context->accumulator.poly_y[count - 1]);
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvdrw(int32_t x, int32_t y, int32_t code) {
  if (output_context != nullptr) move_pen(output_context, x, y, code);
  return 0;
}

extern "C" int32_t qqvlin(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  if (output_context == nullptr) return 0;
  move_pen(output_context, x1, y1, pen_lifts);
  move_pen(output_context, x2, y2, pen_draws);
  return 0;
}

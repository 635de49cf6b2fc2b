// SPDX-License-Identifier: MIT
//
// Triangles and halves of quadrilaterals whose palette index is interpolated, without depth.
#include "base/numbers.h"
#include "base/sort3.h"
#include "depth/pixel_formats.h"
#include "depth/quad_value.h"
#include "quorix/depth.h"
#include "raster/repeated_sum.h"

namespace quorix {

namespace {

// A point of an edge, or what one row adds to it. c is the index, or for a packed colour its
// number; quadrilaterals do not use it.
struct IndexPoint {
  double x, c;
};

struct IndexEdges {
  IndexPoint on_short, on_long;
  IndexPoint short_step, long_step;
};

IndexPoint row_step(IndexPoint from, IndexPoint to, int32_t from_row, int32_t to_row) {
  const double rows = static_cast<double>(to_row) - from_row;
  return {(to.x - from.x) / rows, (to.c - from.c) / rows};
}

void step_point(IndexPoint *p, IndexPoint step) {
  p->x += step.x;
  p->c += step.c;
}

void skip_rows(IndexPoint *p, IndexPoint step, int64_t count) {
  p->x = repeated_sum(p->x, step.x, count);
  p->c = repeated_sum(p->c, step.c, count);
}

// Calls span(x1, x2, y, c1, c2) for the rows first to last, as far as they are rows of the box.
template <class Span>
void walk_rows(const Rect &box, IndexEdges *e, int64_t first, int64_t last, Span span) {
  if (first > last) return;
  const int64_t skipped = std::clamp<int64_t>(box.y1 - first, 0, last - first + 1);
  skip_rows(&e->on_short, e->short_step, skipped);
  skip_rows(&e->on_long, e->long_step, skipped);
  last = std::min<int64_t>(last, box.y2);
  for (int64_t y = first + skipped; y <= last; ++y) {
    const int32_t xs = round_to_int32(e->on_short.x);
    const int32_t xl = round_to_int32(e->on_long.x);
    if (xs >= xl) {
      span(xl, xs, static_cast<int32_t>(y), e->on_long.c, e->on_short.c);
    } else {
      span(xs, xl, static_cast<int32_t>(y), e->on_short.c, e->on_long.c);
    }
    step_point(&e->on_short, e->short_step);
    step_point(&e->on_long, e->long_step);
  }
}

// All corners on one row: places follow x, while the indices stay in the order of y, here the order
// in which equal rows are sorted. Kept, as in shaded triangles.
template <class Span>
void walk_flat(const Rect &box, const IndexTriangle &t, const int32_t *by_y, Span span) {
  const int32_t y = t.y[0];
  if (y < box.y1 || y > box.y2) return;
  int32_t by_x[3];
  sort3_int(t.x, &by_x[0], &by_x[1], &by_x[2]);
  for (int i = 0; i < 2; ++i)
    span(t.x[by_x[i]], t.x[by_x[i + 1]], y, t.colour[by_y[i]], t.colour[by_y[i + 1]]);
}

template <class Span>
void walk_triangle(const Rect &box, const IndexTriangle &t, Span span) {
  if (is_empty(box)) return;
  int32_t order[3];
  sort3_int(t.y, &order[0], &order[1], &order[2]);
  const int32_t ya = t.y[order[0]];
  const int32_t yb = t.y[order[1]];
  const int32_t yc = t.y[order[2]];
  if (ya == yc) return walk_flat(box, t, order, span);
  const auto point = [&](int32_t i) {
    return IndexPoint{static_cast<double>(t.x[i]), static_cast<double>(t.colour[i])};
  };
  const IndexPoint a = point(order[0]);
  const IndexPoint b = point(order[1]);
  const IndexPoint c = point(order[2]);
  IndexEdges edges;
  edges.on_long = a;
  edges.long_step = row_step(a, c, ya, yc);
  if (ya == yb) {
    edges.on_short = b;
    edges.short_step = row_step(b, c, yb, yc);
    return walk_rows(box, &edges, yb, yc, span);
  }
  edges.on_short = a;
  edges.short_step = row_step(a, b, ya, yb);
  walk_rows(box, &edges, ya, yb, span);
  if (yb == yc || yb >= box.y2) return;
  edges.short_step = row_step(b, c, yb, yc);
  edges.on_short = b;
  step_point(&edges.on_short, edges.short_step);
  walk_rows(box, &edges, static_cast<int64_t>(yb) + 1, yc, span);
}

template <class Pixels>
void index_span(const Rect &box, const Pixels &pixels, int32_t x1, int32_t x2, int32_t y, double c1,
                double c2) {
  const double slope = x1 != x2 ? (c1 - c2) / (static_cast<double>(x1) - x2) : 0.0;
  const int32_t left = std::max(x1, box.x1);
  const int32_t right = std::min(x2, box.x2);
  for (int32_t x = left; x <= right; ++x) {
    const double c = (static_cast<double>(x) - x1) * slope + c1;
    pixels.put(x, y, pixels.index_ink(round_to_int32(c)));
  }
}

// The place of a pixel moves on only when one was written, so what comes after a miss is shifted to
// the left. Kept, except where pixels are set one by one. Misses beside the page count too, as far
// as they lie within the clip rectangle and near the page.
template <class Pixels>
void quad_span(const Target &t, const Pixels &pixels, const QuadMap &map, int32_t x1, int32_t x2,
               int32_t y) {
  constexpr int32_t near_page = 65536;
  const int32_t left = std::max({x1, t.clip.x1, -near_page});
  const int32_t right = std::min({x2, t.clip.x2, saturated_sum(t.page.x2, near_page)});
  int64_t place = left;
  for (int64_t x = left; x <= right && place <= t.box.x2; ++x) {
    const int32_t value = quad_value(map, static_cast<int32_t>(x), y);
    if (value == outside_quad) continue;
    if (std::is_same_v<Pixels, SinglePixels>) place = x;
    if (place >= t.page.x1 && place <= t.page.x2) {
      pixels.put(static_cast<int32_t>(place), y, pixels.index_ink(value));
    }
    ++place;
  }
}

// Calls draw(target, pixels) if there is something to draw on.
template <class Draw>
void draw_on_target(OutputContext *context, int32_t device, Draw draw) {
  if (!window_device(device)) flush_raster(context);
  Target target;
  if (!open_target(context, device, Depths::ignored, &target)) return;
  with_pixels(target, [&](const auto &pixels) { draw(target, pixels); });
}

}  // namespace

void draw_index_triangle(OutputContext *context, int32_t device, const IndexTriangle &triangle) {
  draw_on_target(context, device, [&](const Target &t, const auto &pixels) {
    walk_triangle(t.box, triangle, [&](int32_t x1, int32_t x2, int32_t row, double c1, double c2) {
      index_span(t.box, pixels, x1, x2, row, c1, c2);
    });
  });
}

void draw_quad_half(OutputContext *context, int32_t device, const IndexTriangle &half,
                    const IndexQuad &quad) {
  const QuadMap map = quad_map(quad.x, quad.y, quad.colour);
  draw_on_target(context, device, [&](const Target &t, const auto &pixels) {
    walk_triangle(t.box, half,
                  [&](int32_t x1, int32_t x2, int32_t row, double /*c1*/, double /*c2*/) {
                    quad_span(t, pixels, map, x1, x2, row);
                  });
  });
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqdtri(const int32_t *x, const int32_t *y, const int32_t *colour,
                          int32_t device) {
  if (output_context == nullptr) return 0;
  const DepthCalls *calls = depth_calls(output_context, OpenLayer::passed_by);
  const IndexTriangle triangle = {
      {x[0], x[1], x[2]}, {y[0], y[1], y[2]}, {colour[0], colour[1], colour[2]}};
  if (calls != nullptr) calls->index_triangle(output_context, device, triangle);
  return 0;
}

extern "C" int32_t qqdtri2(const int32_t *x, const int32_t *y, const int32_t *colour, int32_t half,
                           int32_t device) {
  if (output_context == nullptr) return 0;
  const DepthCalls *calls = depth_calls(output_context, OpenLayer::passed_by);
  const int32_t middle = half == 1 ? 1 : 3;
  const IndexTriangle triangle = {
      {x[0], x[middle], x[2]}, {y[0], y[middle], y[2]}, {colour[0], colour[middle], colour[2]}};
  if (calls != nullptr) calls->quad_half(output_context, device, triangle, {x, y, colour});
  return 0;
}

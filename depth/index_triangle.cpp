// SPDX-License-Identifier: MIT
//
// Triangles and halves of quadrilaterals whose palette index is interpolated, without depth: qqdtri
// and qqdtri2.
//
// The edges are those of all triangles (raster/edge_walk.h). In a triangle the index is
// interpolated along the rows; in half of a quadrilateral every pixel asks for the value of the
// whole shape (quad_value.h). Nothing needs memory, and time goes with the pixels and rows of the
// box.
#include "base/numbers.h"
#include "base/sort3.h"
#include "depth/pixel_formats.h"
#include "depth/quad_value.h"
#include "quorix/depth.h"
#include "raster/edge_walk.h"

namespace quorix {

namespace {

// What is interpolated along an edge: x, and the index, or for a packed colour its number.
// Quadrilaterals do not use the second.
enum EdgeValue : int { edge_x, edge_colour, edge_values };
using IndexPoint = EdgePoint<edge_values>;
using IndexEdges = EdgePair<edge_values>;

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

// Calls span(x1, x2, y, c1, c2), from left to right; where both points stand at one x, the long
// edge comes first.
template <class Span>
void call_span(const IndexPoint &on_short, const IndexPoint &on_long, int32_t y, Span span) {
  const int32_t xs = round_to_int32(on_short.v[edge_x]);
  const int32_t xl = round_to_int32(on_long.v[edge_x]);
  if (xs >= xl) {
    span(xl, xs, y, on_long.v[edge_colour], on_short.v[edge_colour]);
  } else {
    span(xs, xl, y, on_short.v[edge_colour], on_long.v[edge_colour]);
  }
}

// Calls span as call_span does for the rows of the box.
template <class Span>
void walk_triangle(const Rect &box, const IndexTriangle &t, Span span) {
  if (is_empty(box)) return;
  int32_t order[3];
  sort3_int(t.y, &order[0], &order[1], &order[2]);
  const int32_t rows[3] = {t.y[order[0]], t.y[order[1]], t.y[order[2]]};
  if (rows[0] == rows[2]) return walk_flat(box, t, order, span);
  IndexPoint corners[3];
  for (int i = 0; i < 3; ++i) {
    corners[i] = {{static_cast<double>(t.x[order[i]]), static_cast<double>(t.colour[order[i]])}};
  }
  walk_triangle_edges(box, corners, rows, [&](IndexEdges *edges, int32_t first, int32_t last) {
    draw_each_row(edges, first, last, [&](const IndexEdges &e, int32_t y) {
      call_span(e.on_short, e.on_long, y, span);
    });
  });
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

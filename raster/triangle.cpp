// SPDX-License-Identifier: MIT
//
// Flat triangles with integer corners.
//
// Both edges are stepped row by row in doubles (edge_walk.h), so an edge ends at the sum of its
// steps, which need not be its corner.
#include "base/numbers.h"
#include "base/sort3.h"
#include "quorix/raster.h"
#include "raster/edge_walk.h"
#include "raster/raster.h"

namespace quorix {

namespace {

template <class Pixel>
void fill_row(const Surface<Pixel> &s, int32_t a, int32_t b, int32_t y) {
  const int32_t x1 = std::max(std::min(a, b), s.box.x1);
  const int32_t x2 = std::min(std::max(a, b), s.box.x2);
  if (x1 <= x2) fill_span(s, x1, x2, y);
}

// All three corners on one row.
template <class Pixel>
void fill_flat(const Surface<Pixel> &s, const int32_t *xs, int32_t y) {
  if (y < s.box.y1 || y > s.box.y2) return;
  const auto [low, high] = std::minmax({xs[0], xs[1], xs[2]});
  fill_row(s, low, high, y);
}

template <class Pixel>
void fill_triangle(const Surface<Pixel> &s, const int32_t *xs, const int32_t *ys) {
  if (is_empty(s.box)) return;
  int32_t order[3];
  sort3_int(ys, &order[0], &order[1], &order[2]);
  const int32_t rows[3] = {ys[order[0]], ys[order[1]], ys[order[2]]};
  if (rows[0] == rows[2]) return fill_flat(s, xs, rows[0]);
  const auto corner = [&](int i) { return EdgePoint<1>{{static_cast<double>(xs[order[i]])}}; };
  const EdgePoint<1> corners[3] = {corner(0), corner(1), corner(2)};
  walk_triangle_edges(s.box, corners, rows, [&](EdgePair<1> *edges, int32_t first, int32_t last) {
    draw_each_row(edges, first, last, [&](const EdgePair<1> &e, int32_t y) {
      fill_row(s, round_to_int32(e.on_short.v[0]), round_to_int32(e.on_long.v[0]), y);
    });
  });
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvftr(const int32_t *xs, const int32_t *ys, int32_t colour) {
  if (output_context == nullptr) return 0;
  set_current_colour(output_context, colour);
  with_surface(output_context, [&](const auto &s) { fill_triangle(s, xs, ys); });
  return 0;
}
